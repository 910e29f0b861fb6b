#pragma once

#include <QString>

#include <cstdint>

namespace xov::cli {

// What differs from one operating system to the next. Where one is not known, the program does without.

/// Qt wants a UTF-8 locale and says so on standard error when it starts in another one, as under cron: takes one.
void useUtf8();

/// Where the program was started without one of its standard streams, a file that it opens would take its number, and
/// what is printed would end in that file. Takes the number itself: what is then printed is lost, and known to be.
void holdStandardStreams();

enum class StandardStream : std::uint8_t { Input, Error };

/// Whether somebody sits at the stream.
bool isTerminal(StandardStream stream);

/// Whether the bytes of standard input come one after the other. A terminal is a pipe that somebody types into.
bool standardInputIsPipe();

/// The same of a named file; other devices have no end and are none.
bool isPipe(const QString& name);

} // namespace xov::cli
