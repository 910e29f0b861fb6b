#include "apps/xov/terminal/Messages.h"

#include "apps/xov/terminal/Listener.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <vector>

namespace xov::cli {

namespace {

bool quiet = false;

struct NoteOfTheEnd {
  QString text;
  QString cause;
  int others = 0;
};
std::vector<NoteOfTheEnd> notesOfTheEnd;

int printFault = 0; // why something could not be printed

// Marks, embeddings, overrides and isolates of directions of writing: they would show a name as another one.
bool isDirection(QChar c) {
  const char16_t unit = c.unicode();
  return unit == 0x061C || unit == 0x200E || unit == 0x200F || (unit >= 0x202A && unit <= 0x202E) ||
         (unit >= 0x2066 && unit <= 0x2069);
}

} // namespace

QString printable(const QString& text) {
  QString clean = text;
  for (QChar& c : clean) {
    if (c.category() == QChar::Other_Control || isDirection(c) || c == QChar::LineSeparator ||
        c == QChar::ParagraphSeparator)
      c = QLatin1Char('?');
  }
  return clean;
}

void complain(const QString& text) {
  if (Listener* const listener = currentListener()) return listener->said(printable(text));
  const QByteArray line = "xov: " + printable(text).toUtf8() + '\n';
  std::fwrite(line.constData(), 1, std::size_t(line.size()), stderr);
}

void note(const QString& text) {
  if (!quiet) complain(text);
}

std::function<void(const QString&)> noteToListener() {
  return [listener = currentListener()](const QString& text) {
    const ListenerScope listening(listener);
    note(text);
  };
}

void noteInTheEnd(const QString& text, const QString& cause) {
  if (currentListener() != nullptr) return note(text);
  const auto known = std::ranges::find(notesOfTheEnd, cause, &NoteOfTheEnd::cause);
  if (known != notesOfTheEnd.end()) {
    ++known->others;
  } else {
    notesOfTheEnd.push_back({text, cause});
  }
}

void sayNotesOfTheEnd() {
  for (const NoteOfTheEnd& said : notesOfTheEnd)
    note(said.others == 0 ? said.text : QStringLiteral("%1; the same of %2 more").arg(said.text).arg(said.others));
  notesOfTheEnd.clear();
}

void setQuiet() { quiet = true; }

bool isQuiet() { return quiet; }

void print(const QString& text) {
  const QByteArray bytes = text.toUtf8();
  errno = 0;
  const std::size_t printed = std::fwrite(bytes.constData(), 1, std::size_t(bytes.size()), stdout);
  if (printed < std::size_t(bytes.size()) && printFault == 0) printFault = errno;
}

ExitCode finishStandardOutput() {
  errno = 0;
  if (std::fflush(stdout) == 0 && std::ferror(stdout) == 0) return ExitCode::Ok;
  const int fault = printFault != 0 ? printFault : errno;
  const QString reason = fault != 0 ? QString::fromLocal8Bit(std::strerror(fault)) : QStringLiteral("write error");
  complain(QStringLiteral("standard output: ") + reason);
  return ExitCode::Failed;
}

} // namespace xov::cli
