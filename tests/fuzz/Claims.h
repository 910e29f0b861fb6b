#pragma once

#include <QString>

#include <cstdio>
#include <cstdlib>

namespace xov::fuzz {

/// Ends the program when a claim about the input does not hold.
inline void require(bool holds, const char* claim, const QString& detail = {}) {
  if (holds) return;
  std::fprintf(stderr, "does not hold: %s (%s)\n", claim, qPrintable(detail));
  std::abort();
}

/// Errors and notes are lines that begin with the file's name, here "in".
inline void requireOneLine(const QString& text) {
  require(text.startsWith(QStringLiteral("in: ")), "a message names the file", text);
  require(!text.contains(QLatin1Char('\n')), "a message is one line", text);
  require(text.size() < 600, "a message is short", text);
}

} // namespace xov::fuzz
