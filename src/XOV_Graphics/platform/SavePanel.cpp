#include "XOV_Graphics/platform/SavePanel.h"

#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QPointer>

namespace xov {

namespace {

SavePanel::Factory& factory() {
  static SavePanel::Factory current;
  return current;
}

QString& lastFolder() {
  static QString folder;
  return folder;
}

// The folder saved to last may have gone since.
QString startFolder() {
  return !lastFolder().isEmpty() && QDir(lastFolder()).exists() ? lastFolder() : QDir::currentPath();
}

// The number of "fig.1" and "fig_v2.5" is no extension.
QString withExtension(const QString& path, const QString& extension) {
  const QString ending = QLatin1Char('.') + extension;
  return extension.isEmpty() || path.endsWith(ending, Qt::CaseInsensitive) ? path : path + ending;
}

class FileDialogPanel final : public SavePanel, public std::enable_shared_from_this<FileDialogPanel> {
public:
  ~FileDialogPanel() override { delete dialog_; }

  void setRequiredFileType(const QString& extension) override { extension_ = extension; }

  void beginSheet(const QString& directory, const QString& file, QWidget* window, Completion completion) override {
    const QDir folder(directory.isEmpty() ? startFolder() : directory);
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
      if (!self->take(result == QDialog::Accepted)) return;
      self->dialog_->deleteLater();
      self->dialog_ = nullptr;
      completion(result == QDialog::Accepted ? kAccepted : kCancelled);
    });
    dialog_->open();
  }

  QString filename() const override { return filename_; }

private:
  // Takes the user's answer. False when the dialog asks again: it has not yet asked whether to replace the file whose
  // name only the extension makes.
  bool take(bool accepted) {
    const QStringList chosen = dialog_->selectedFiles();
    if (!accepted || chosen.isEmpty()) {
      filename_.clear();
      return true;
    }
    filename_ = withExtension(chosen.first(), extension_);
    if (filename_ != chosen.first() && QFileInfo::exists(filename_)) {
      dialog_->selectFile(filename_);
      dialog_->open();
      return false;
    }
    lastFolder() = QFileInfo(filename_).absolutePath();
    return true;
  }

  QString extension_;
  QString filename_;
  QPointer<QFileDialog> dialog_;
};

} // namespace

SavePanel::~SavePanel() = default;

std::shared_ptr<SavePanel> SavePanel::savePanel() {
  const Factory made = factory(); // it may set another one
  return made ? made() : std::make_shared<FileDialogPanel>();
}

void SavePanel::setFactory(Factory newFactory) { factory() = std::move(newFactory); }

} // namespace xov
