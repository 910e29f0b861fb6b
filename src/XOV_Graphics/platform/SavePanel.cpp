#include "XOV_Graphics/platform/SavePanel.h"

#include <QDir>
#include <QFileDialog>
#include <QPointer>

namespace xov {

namespace {

SavePanel::Factory& factory() {
  static SavePanel::Factory current;
  return current;
}

class FileDialogPanel final : public SavePanel, public std::enable_shared_from_this<FileDialogPanel> {
public:
  ~FileDialogPanel() override { delete dialog_; }

  void setRequiredFileType(const QString& extension) override { extension_ = extension; }

  void beginSheet(const QString& directory, const QString& file, QWidget* window, Completion completion) override {
    const QDir folder(directory.isEmpty() ? QDir::currentPath() : directory);
    filename_ = folder.filePath(file);
    dialog_ = new QFileDialog(window, QString(), folder.path());
    dialog_->setAcceptMode(QFileDialog::AcceptSave);
    dialog_->setFileMode(QFileDialog::AnyFile);
    dialog_->setDefaultSuffix(extension_);
    dialog_->setNameFilters({QStringLiteral("*.%1").arg(extension_), QStringLiteral("*")});
    dialog_->selectFile(file);
    dialog_->setWindowModality(Qt::WindowModal);
    // The dialog holds the panel until it has finished; the panel then lets the dialog go.
    QObject::connect(dialog_, &QFileDialog::finished, dialog_, [self = shared_from_this(), completion](int result) {
      const QStringList chosen = self->dialog_->selectedFiles();
      if (!chosen.isEmpty()) self->filename_ = chosen.first();
      self->dialog_->deleteLater();
      self->dialog_ = nullptr;
      completion(result == QDialog::Accepted ? kAccepted : kCancelled);
    });
    dialog_->open();
  }

  QString filename() const override { return filename_; }

private:
  QString extension_;
  QString filename_;
  QPointer<QFileDialog> dialog_;
};

} // namespace

SavePanel::~SavePanel() = default;

std::shared_ptr<SavePanel> SavePanel::savePanel() {
  return factory() ? factory()() : std::make_shared<FileDialogPanel>();
}

void SavePanel::setFactory(Factory newFactory) { factory() = std::move(newFactory); }

} // namespace xov
