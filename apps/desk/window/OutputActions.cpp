#include "apps/desk/window/OutputActions.h"

#include "apps/desk/desktop/FileDialogs.h"
#include "apps/desk/desktop/Printing.h"
#include "apps/desk/window/MainWindow.h"

#include <QBuffer>
#include <QDir>
#include <QFileInfo>
#include <QMenu>
#include <QStatusBar>

#include <XOV_Graphics/platform/Pasteboard.h>
#include <XOV_Graphics/platform/PdfDocument.h>

namespace xov::desk {

namespace {

constexpr char kPngType[] = "image/png";
constexpr char kTextType[] = "text/plain";
constexpr int kToldMs = 10000;

struct Writer {
  const char* suffix;
  bool (XOVView::*write)(const QString& path, QString* error);
};

constexpr Writer kWriters[] = {
    {"png", &XOVView::writePNGToFile}, {"pdf", &XOVView::writePDFToFile}, {"svg", &XOVView::writeSVGToFile},
    {"tif", &XOVView::writeTIFToFile}, {"jpg", &XOVView::writeJPGToFile},
};

// "drum_1.png", or the next number of which there is no file.
QString unusedPath(const QString& folder, const QString& stem, const QString& suffix) {
  for (int number = 1;; ++number) {
    const QString path = QDir(folder).filePath(QStringLiteral("%1_%2.%3").arg(stem).arg(number).arg(suffix));
    if (!QFileInfo::exists(path) && !QFileInfo(path).isSymLink()) return path;
  }
}

} // namespace

OutputActions::OutputActions(MainWindow& window) : QObject(&window), window_(window) {
  const QString file = QStringLiteral("file");
  const QString edit = QStringLiteral("edit");
  window.addAction(file, QStringLiteral("exportPages"), tr("Export All as One &PDF…"), Qt::CTRL | Qt::Key_E, [this] {
    askForNewFile(&window_, tr("Export All"), tr("desk.pdf"), {QStringLiteral("pdf")},
                  [this](const QStringList& paths) { tell(writePages(paths.value(0)), paths.value(0)); });
  });
  QMenu* const files = window.menu(file)->addMenu(tr("Export All as &Files"));
  for (const Writer& writer : kWriters) {
    const QString suffix = QLatin1String(writer.suffix);
    QAction* const action = files->addAction(suffix.toUpper());
    action->setObjectName(QStringLiteral("exportFiles_") + suffix);
    connect(action, &QAction::triggered, this, [this, suffix] {
      askForFolder(&window_, tr("Export All to a Folder"), [this, suffix](const QStringList& paths) {
        tell(writeFiles(paths.value(0), suffix), paths.value(0));
      });
    });
  }
  const auto wanted = [this] { return views(); };
  window.addAction(file, QStringLiteral("print"), tr("P&rint…"), QKeySequence::Print,
                   [this, wanted] { desk::print(&window_, wanted); });
  window.addAction(file, QStringLiteral("printPreview"), tr("Print Pre&view…"), Qt::CTRL | Qt::SHIFT | Qt::Key_P,
                   [this, wanted] { showPrintPreview(&window_, wanted); });
  window.menu(file)->addSeparator();
  window.menu(edit)->addSeparator();
  window.addAction(edit, QStringLiteral("copyPdf"), tr("Copy as &PDF"), QKeySequence::Copy, [this] {
    if (const Pane* const pane = window_.currentPane(); pane != nullptr && pane->view() != nullptr)
      pane->view()->copy();
  });
  window.addAction(edit, QStringLiteral("copyPicture"), tr("Copy as P&icture"), Qt::CTRL | Qt::SHIFT | Qt::Key_C,
                   [this] { copyPicture(); });
  window.addAction(edit, QStringLiteral("copyCommand"), tr("Copy the Co&mmand"), Qt::CTRL | Qt::ALT | Qt::Key_C,
                   [this] {
                     const QString line = command();
                     if (!line.isEmpty()) copy(line.toUtf8(), QLatin1String(kTextType));
                   });
}

std::vector<View*> OutputActions::views() const {
  std::vector<View*> views;
  for (const Pane* const pane : window_.panes()) {
    if (pane->view() != nullptr) views.push_back(pane->view());
  }
  return views;
}

Status OutputActions::writePages(const QString& path) const {
  const std::vector<View*> pages = views();
  QString error;
  return writePDFPages(path, pages, &error) ? Status() : Status(Error{error});
}

Status OutputActions::writeFiles(const QString& folder, const QString& suffix) const {
  for (const Writer& writer : kWriters) {
    if (suffix != QLatin1String(writer.suffix)) continue;
    for (const Pane* const pane : window_.panes()) {
      QString error;
      XOVView* const view = pane->view();
      if (view != nullptr && !(view->*writer.write)(unusedPath(folder, pane->request().kind, suffix), &error))
        return Error{error};
    }
  }
  return {};
}

QString OutputActions::command() const {
  Pane* const pane = window_.currentPane();
  if (pane == nullptr || pane->view() == nullptr) return {};
  return pane->requestAsShown().commandLine(pane->view()->size());
}

void OutputActions::copy(const QByteArray& data, const QString& type) const {
  Pasteboard clipboard = Pasteboard::generalPasteboard();
  clipboard.declareTypes({type});
  clipboard.setData(data, type);
}

void OutputActions::copyPicture() const {
  const Pane* const pane = window_.currentPane();
  if (pane == nullptr || pane->view() == nullptr) return;
  QBuffer png;
  if (pane->view()->snapshot().save(&png, "PNG")) copy(png.data(), QLatin1String(kPngType));
}

void OutputActions::tell(const Status& status, const QString& done) const {
  window_.statusBar()->showMessage(status ? tr("Wrote %1").arg(done) : status.error(), kToldMs);
}

} // namespace xov::desk
