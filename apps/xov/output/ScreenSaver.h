#pragma once

namespace xov::cli {

/// Keeps the screen saver away until the program ends, where the desktop of the session offers that
/// (org.freedesktop.ScreenSaver on its bus); does nothing elsewhere. Does not wait for an answer. Needs Qt's
/// application object.
void keepScreenSaverAway();

} // namespace xov::cli
