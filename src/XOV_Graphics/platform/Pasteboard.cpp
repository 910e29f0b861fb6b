#include "XOV_Graphics/platform/Pasteboard.h"

#include <QClipboard>
#include <QGuiApplication>

namespace xov {

Pasteboard::Pasteboard() : content_(std::make_unique<QMimeData>()) {}

Pasteboard::~Pasteboard() = default;

Pasteboard::Pasteboard(Pasteboard&&) noexcept = default;

Pasteboard& Pasteboard::operator=(Pasteboard&&) noexcept = default;

Pasteboard Pasteboard::generalPasteboard() {
  Pasteboard pasteboard;
  pasteboard.general_ = true;
  return pasteboard;
}

void Pasteboard::declareTypes(const QStringList& types) {
  types_ = types;
  content_->clear();
}

bool Pasteboard::setData(const QByteArray& data, const QString& type) {
  if (!types_.contains(type)) return false;
  content_->setData(type, data);
  if (general_) QGuiApplication::clipboard()->setMimeData(mimeData().release());
  return true;
}

QByteArray Pasteboard::data(const QString& type) const {
  if (!general_ || content_->hasFormat(type)) return content_->data(type);
  const QMimeData* clipboard = QGuiApplication::clipboard()->mimeData();
  return clipboard != nullptr ? clipboard->data(type) : QByteArray();
}

std::unique_ptr<QMimeData> Pasteboard::mimeData() const {
  auto copy = std::make_unique<QMimeData>();
  for (const QString& format : content_->formats())
    copy->setData(format, content_->data(format));
  return copy;
}

} // namespace xov
