#include "apps/desk/window/FileActions.h"

#include "apps/desk/desktop/FileDialogs.h"
#include "apps/desk/settings/DeskSettings.h"
#include "apps/desk/window/MainWindow.h"

#include <QFileInfo>
#include <QMenu>
#include <QUrl>

#include <XOV_Graphics/platform/Pasteboard.h>

namespace xov::desk {

namespace {

constexpr char kUriList[] = "text/uri-list";
constexpr char kText[] = "text/plain";
constexpr char kMenu[] = "file";

QString pathOf(const QString& line) {
  const QUrl address(line);
  const QString path = address.isLocalFile() ? address.toLocalFile() : line;
  return QFileInfo::exists(path) ? QFileInfo(path).absoluteFilePath() : QString();
}

} // namespace

FileActions::FileActions(MainWindow& window) : QObject(&window), window_(window), recentMenu_(nullptr) {
  const QString file = QLatin1String(kMenu);
  window.addAction(file, QStringLiteral("openFiles"), tr("&Open…"), QKeySequence::Open,
                   [this] { askForFiles(&window_, [this](const QStringList& paths) { window_.openFiles(paths); }); });
  window.addAction(file, QStringLiteral("openFolder"), tr("Open &Folder…"), Qt::CTRL | Qt::SHIFT | Qt::Key_O, [this] {
    askForFolder(&window_, tr("Open Folder"), [this](const QStringList& paths) { window_.openFiles(paths); });
  });
  recentMenu_ = window.menu(file)->addMenu(tr("Open &Recent"));
  recentMenu_->setObjectName(QStringLiteral("recentMenu"));
  connect(recentMenu_, &QMenu::aboutToShow, this, &FileActions::fillRecentMenu);
  window.menu(file)->addSeparator();
  window.addAction(QStringLiteral("edit"), QStringLiteral("paste"), tr("&Paste Files"), QKeySequence::Paste,
                   [this] { paste(); });
}

void FileActions::setRecent(const QStringList& paths) { recent_ = paths; }

void FileActions::addRecent(const QStringList& paths) {
  DeskSettings list;
  list.recent = recent_;
  for (const QString& path : paths)
    list.addRecent(QFileInfo(path).absoluteFilePath());
  recent_ = list.recent;
}

void FileActions::fillRecentMenu() {
  recentMenu_->clear();
  for (const QString& path : std::as_const(recent_)) {
    QString text = path;
    QAction* const action = recentMenu_->addAction(text.replace(QLatin1Char('&'), QStringLiteral("&&")));
    connect(action, &QAction::triggered, this, [this, path] { window_.openFiles({path}); });
  }
  if (recent_.isEmpty()) recentMenu_->addAction(tr("None yet"))->setEnabled(false);
}

QStringList FileActions::pathsIn(const QByteArray& addresses, const QByteArray& text) {
  QStringList paths;
  const QString lines = QString::fromUtf8(addresses.isEmpty() ? text : addresses);
  for (const QString& line : lines.split(QLatin1Char('\n'), Qt::SkipEmptyParts)) {
    const QString path = pathOf(line.trimmed());
    if (!path.isEmpty()) paths.append(path);
  }
  return paths;
}

void FileActions::paste() {
  const Pasteboard clipboard = Pasteboard::generalPasteboard();
  window_.openFiles(pathsIn(clipboard.data(QLatin1String(kUriList)), clipboard.data(QLatin1String(kText))));
}

} // namespace xov::desk
