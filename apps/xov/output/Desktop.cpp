#include "apps/xov/output/Desktop.h"

#include "apps/xov/output/HoverReadout.h"
#include "apps/xov/output/ScreenSaver.h"
#include "apps/xov/terminal/Messages.h"

#include <QFontDatabase>
#include <QLoggingCategory>
#include <QScreen>
#include <QShortcut>

#include <XOV_Graphics/views/navigation/PlotNavigator.h>
#include <algorithm>
#include <clocale>

namespace xov::cli {

namespace {

constexpr char kPlatformVariable[] = "QT_QPA_PLATFORM";
const QString kOffscreen = QStringLiteral("offscreen");

// Platforms that Qt tries one after the other. The one without windows always works: a display that does not answer
// ends in a picture and not in an abort, and files need no display to begin with.
QByteArray platformsFor(DesktopUse use) {
  QByteArrayList platforms;
  const QByteArray chosen = qgetenv(kPlatformVariable);
  if (!chosen.isEmpty()) {
    platforms.append(chosen);
  } else {
    if (qEnvironmentVariableIsSet("WAYLAND_DISPLAY")) platforms.append("wayland");
    if (qEnvironmentVariableIsSet("DISPLAY")) platforms.append("xcb");
  }
  const bool windows = use == DesktopUse::Window && displayPresent();
  platforms.insert(windows ? platforms.size() : 0, kOffscreen.toLatin1());
  return platforms.join(';');
}

QtMessageHandler defaultHandler = nullptr;

// Where nobody is logged in, as under cron, Qt says at every start that it makes do with another folder for what
// this program never needs. Where it has no memory for a picture, or to pack a page, the export says so.
void handleMessage(QtMsgType type, const QMessageLogContext& context, const QString& message) {
  constexpr const char* kNeedless[] = {"QStandardPaths: ", "QPdfStream::writeCompressed: ", "qCompress",
                                       "QImage: out of memory"};
  const bool isNeedless = std::ranges::any_of(
      kNeedless, [&message](const char* begin) { return message.startsWith(QLatin1String(begin)); });
  if (!isNeedless) defaultHandler(type, context, printable(message));
}

// Qt lists names that stand for fonts even where there are none.
bool hasFonts() {
  constexpr const char* kNoFonts[] = {"Monospace", "Sans Serif", "Serif"};
  return !std::ranges::all_of(QFontDatabase::families(), [&](const QString& family) {
    return std::ranges::any_of(kNoFonts, [&](const char* name) { return family == QLatin1String(name); });
  });
}

void preparePlatform(DesktopUse use) {
  defaultHandler = qInstallMessageHandler(handleMessage);
  // What the library says for its hosts is nothing for the user of a command. Of platforms that fail, the one that
  // works in their place is all that matters; of damaged pictures their reader tells.
  QLoggingCategory::setFilterRules(QStringLiteral(
      "xov.info=false\nxov.cells=false\nqt.qpa.plugin=false\nqt.qpa.xcb=false\nqt.gui.imageio.*=false"));
#if !defined(Q_OS_MACOS) && !defined(Q_OS_WIN)
  qputenv(kPlatformVariable, platformsFor(use));
#else
  Q_UNUSED(use)
#endif
}

} // namespace

bool displayPresent() {
#if defined(Q_OS_MACOS) || defined(Q_OS_WIN)
  return qEnvironmentVariable(kPlatformVariable) != kOffscreen;
#else
  if (qEnvironmentVariable(kPlatformVariable).startsWith(kOffscreen)) return false;
  return !qEnvironmentVariableIsEmpty("DISPLAY") || !qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY");
#endif
}

Desktop::Desktop(DesktopUse use) {
  if (QCoreApplication::instance() == nullptr) {
    preparePlatform(use);
    application_.emplace(name_.count, name_.words);
    if (!hasFonts()) note(QStringLiteral("no fonts are installed: letters are drawn as boxes"));
  }
  // Qt takes over the user's locale; numbers in plots keep their decimal point.
  std::setlocale(LC_NUMERIC, "C");
}

bool Desktop::hasWindows() const { return QGuiApplication::platformName() != kOffscreen; }

void Desktop::showUntilClosed(std::size_t pages, const MakePage& makePage, const QString& title, WindowUse use) {
  const bool isKiosk = use == WindowUse::Kiosk;
  if (isKiosk) {
    QApplication::setOverrideCursor(Qt::BlankCursor);
    keepScreenSaverAway();
  }
  std::unique_ptr<XOVView> view;
  std::size_t shown = 0;
  std::function<void(std::size_t)> show;
  const auto addKeys = [](XOVView& window, const QKeySequence& keys, const std::function<void()>& act) {
    QObject::connect(new QShortcut(keys, &window), &QShortcut::activated, &window, act);
  };
  show = [&](std::size_t page) {
    if (page >= pages) return; // which a page before the first is, too
    std::unique_ptr<XOVView> next = makePage(page);
    XOVView& window = *next;
    window.setWindowTitle(pages == 1 ? title
                                     : QStringLiteral("%1, page %2 of %3").arg(title).arg(page + 1).arg(pages));
    for (const char* keys : {"Ctrl+Q", "Ctrl+W"})
      addKeys(window, QKeySequence(QLatin1String(keys)), [&window] { window.close(); });
    if (isKiosk) {
      addKeys(window, QKeySequence(Qt::Key_Escape), [&window] { window.close(); });
    } else {
      new PlotNavigator(&window); // the window owns it
    }
    if (pages > 1) { // else the view has them to move by
      addKeys(window, QKeySequence(Qt::Key_PageDown), [&show, &shown] { show(shown + 1); });
      addKeys(window, QKeySequence(Qt::Key_PageUp), [&show, &shown] { show(shown - 1); });
    }
    if (!isKiosk) new HoverReadout(window);
    if (view) window.setGeometry(view->geometry());
    if (isKiosk) {
      window.setGeometry(window.screen()->geometry()); // for walls without a window manager
      window.showFullScreen();
    } else {
      window.show();
    }
    shown = page;
    std::swap(view, next);
    // The window that is left is at work on the key yet.
    if (next) next.release()->deleteLater();
  };
  show(0);
  QApplication::exec();
}

} // namespace xov::cli
