#include "apps/desk/desktop/FileDialogs.h"

#include <QFileDialog>

namespace xov::desk {

namespace {

QFileDialog* openDialog(QWidget* window, const QString& title, const PathsChosen& chosen) {
  auto* const dialog = new QFileDialog(window, title);
  dialog->setAttribute(Qt::WA_DeleteOnClose);
  QObject::connect(dialog, &QFileDialog::filesSelected, window, chosen);
  return dialog;
}

} // namespace

void askForFiles(QWidget* window, const PathsChosen& chosen) {
  QFileDialog* const dialog = openDialog(window, QFileDialog::tr("Open Files"), chosen);
  dialog->setFileMode(QFileDialog::ExistingFiles);
  dialog->open();
}

void askForFolder(QWidget* window, const QString& title, const PathsChosen& chosen) {
  QFileDialog* const dialog = openDialog(window, title, chosen);
  dialog->setFileMode(QFileDialog::Directory);
  dialog->setOption(QFileDialog::ShowDirsOnly);
  dialog->open();
}

void askForNewFile(QWidget* window, const QString& title, const QString& proposal, const QStringList& suffixes,
                   const PathsChosen& chosen) {
  QFileDialog* const dialog = openDialog(window, title, chosen);
  dialog->setAcceptMode(QFileDialog::AcceptSave);
  QStringList patterns;
  for (const QString& suffix : suffixes)
    patterns.append(QStringLiteral("*.") + suffix);
  dialog->setNameFilters({patterns.join(QLatin1Char(' '))});
  dialog->setDefaultSuffix(suffixes.value(0));
  dialog->selectFile(proposal);
  dialog->open();
}

} // namespace xov::desk
