#pragma once

#include <QString>

#include <cstdint>
#include <functional>

namespace xov::cli {

/// What the command returns to the shell. The numbers are part of its interface: scripts test them.
enum class ExitCode : std::uint8_t {
  Ok = 0,
  Failed = 1, ///< an input could not be read or an output not written
  Usage = 2,  ///< the command line does not make sense; nothing was read or written
};

/// The text with control characters replaced by '?': names and codes from files must neither break a message into
/// lines nor talk to the terminal.
QString printable(const QString& text);

/// Writes "xov: text" as one line to standard error, unless this thread has a Listener.
void complain(const QString& text);

/// The same for what does not make the command fail, such as what was left out or taken; nothing where the user wants
/// none of it.
void note(const QString& text);

/// note() to whoever hears it in this thread now, for what has something to say later on: a listener must be there as
/// long.
std::function<void(const QString&)> noteToListener();

/// The same at the end of the command, and only where that succeeds: of a full disk, what was to be written tells.
/// Notes of one cause, such as the system's reason, are one line. A Listener hears them at once.
void noteInTheEnd(const QString& text, const QString& cause);
void sayNotesOfTheEnd();

/// From now on note() says nothing, and no progress is shown.
void setQuiet();
bool isQuiet();

/// Writes text to standard output as it is, in UTF-8.
void print(const QString& text);

/// Flushes standard output. Failed, with a message, when anything written to it got lost.
ExitCode finishStandardOutput();

} // namespace xov::cli
