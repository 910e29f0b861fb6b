#include "apps/desk/desktop/Dragging.h"

#include <QTemporaryDir>
#include <QUrl>

#include <XOV_Graphics/base/WholeFile.h>
#include <XOV_Graphics/platform/View.h>

namespace xov::desk {

namespace {

const QString kPdfMime = QStringLiteral("application/pdf");
constexpr int kKeptPdfFiles = 16; // a receiver may read one after the drop

// An empty path where it cannot be written.
QString temporaryPdf(const QByteArray& pdf) {
  static const QTemporaryDir folder;
  static int count = 0;
  if (!folder.isValid() || pdf.isEmpty()) return {};
  const QString path =
      folder.filePath(QStringLiteral("plot_%1.pdf").arg(count++ % kKeptPdfFiles, 2, 10, QLatin1Char('0')));
  QString error;
  return writeFileAtomically(path, pdf, &error) ? path : QString();
}

} // namespace

std::unique_ptr<QMimeData> mimeDataWithPdf(const PictureDrag& drag) {
  std::unique_ptr<QMimeData> data = drag.pasteboard->mimeData();
  auto* const view = qobject_cast<View*>(drag.source);
  if (view == nullptr) return data;
  const QByteArray pdf = view->dataWithPDFInsideRect(view->bounds());
  data->setData(kPdfMime, pdf);
  const QString file = temporaryPdf(pdf);
  if (!file.isEmpty()) data->setUrls(data->urls() + QList<QUrl>{QUrl::fromLocalFile(file)});
  return data;
}

void dragPlotsAsPdf() {
  setDragHandler([](const PictureDrag& request) { startDrag(request, mimeDataWithPdf(request)); });
}

} // namespace xov::desk
