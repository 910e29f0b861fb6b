#pragma once

#include "apps/xov/terminal/ProgramName.h"

#include <QApplication>

#include <XOV_Graphics/views/base/XOVView.h>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>

namespace xov::cli {

/// What a command wants of the desktop.
enum class DesktopUse : std::uint8_t {
  Files,  ///< draws into files only: works without a display, and does not talk to one
  Window, ///< opens a window where there is a display
};

/// How a window stands on the screen.
enum class WindowUse : std::uint8_t {
  Plain,
  Kiosk, ///< fills the screen, for a wall: no frame, no pointer, no screen saver as far as the desktop lets it
};

/// True when the environment names a display that windows could open on. An environment that asks for Qt's offscreen
/// platform has none.
bool displayPresent();

/// Qt's application object for the rest of the command; exists at most once, before any view.
class Desktop {
public:
  explicit Desktop(DesktopUse use);

  /// False when no window can be seen, because none was wanted or the display does not answer.
  bool hasWindows() const;

  /// Makes the view of a page, counted from 0.
  using MakePage = std::function<std::unique_ptr<XOVView>(std::size_t page)>;

  /// Shows the view of each page as a window and returns when it is closed, which Ctrl+Q and Ctrl+W do too. Page Down
  /// and Page Up go from one page to the next, of which one at a time is there; the title names the page where there
  /// are several. Escape leaves a kiosk, too. Mouse and keys move over the data as
  /// PlotNavigator says, but in a kiosk.
  void showUntilClosed(std::size_t pages, const MakePage& makePage, const QString& title,
                       WindowUse use = WindowUse::Plain);

private:
  ProgramName name_;
  std::optional<QApplication> application_; // unless the program has one
};

} // namespace xov::cli
