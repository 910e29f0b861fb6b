#include "apps/xov/terminal/Progress.h"

#include "apps/xov/terminal/Listener.h"
#include "apps/xov/terminal/Messages.h"
#include "apps/xov/terminal/System.h"

#include <algorithm>
#include <cstdio>

namespace xov::cli {

namespace {

constexpr std::int64_t kFirstUpdateMs = 500;
constexpr std::int64_t kUpdateEveryMs = 100;
constexpr int kBarWidth = 30;
constexpr char kClearLine[] = "\r\033[K";

} // namespace

Progress::Progress(const QString& what, std::int64_t total)
    : what_(what),
      total_(total),
      terminal_(isTerminal(StandardStream::Error) && !isQuiet()),
      nextUpdateMs_(kFirstUpdateMs) {
  clock_.start();
}

Progress::~Progress() { clear(); }

void Progress::advanceTo(std::int64_t done) {
  if (Listener* const listener = currentListener()) return listener->advanced(what_, done, total_);
  if (!terminal_ || clock_.elapsed() < nextUpdateMs_) return;
  nextUpdateMs_ = clock_.elapsed() + kUpdateEveryMs;
  const QByteArray line = kClearLine + bar(what_, done, total_).toUtf8();
  std::fwrite(line.constData(), 1, std::size_t(line.size()), stderr);
  std::fflush(stderr);
  shown_ = true;
}

void Progress::clear() {
  if (!shown_) return;
  std::fputs(kClearLine, stderr);
  std::fflush(stderr);
  shown_ = false;
}

QString Progress::bar(const QString& what, std::int64_t done, std::int64_t total) {
  const double fraction = total > 0 ? std::clamp(double(done) / double(total), 0.0, 1.0) : 1.0;
  const int filled = int(fraction * kBarWidth);
  const QString marks = QString(filled, QLatin1Char('#')) + QString(kBarWidth - filled, QLatin1Char(' '));
  return QStringLiteral("%1 [%2] %3 %").arg(what, marks).arg(int(fraction * 100), 3);
}

} // namespace xov::cli
