#include "bench/ProcessCost.h"

#include "bench/RivalProcess.h"

#include <QElapsedTimer>

#include <algorithm>
#include <ctime>
#include <vector>

#ifdef __unix__
#include <spawn.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>
#endif

namespace xov::bench {

namespace {

#ifdef __unix__
double milliseconds(const timeval& time) { return 1e3 * double(time.tv_sec) + 1e-3 * double(time.tv_usec); }
#endif

} // namespace

#ifdef __unix__
double ownProcessorMs() { return 1e3 * double(std::clock()) / CLOCKS_PER_SEC; }

ProcessCost costOf(const QStringList& command) {
  std::vector<QByteArray> words;
  for (const QString& word : command)
    words.push_back(word.toLocal8Bit());
  std::vector<char*> arguments;
  for (QByteArray& word : words)
    arguments.push_back(word.data());
  arguments.push_back(nullptr);
  QElapsedTimer timer;
  timer.start();
  pid_t child = 0;
  int status = 0;
  rusage usage = {};
  if (posix_spawn(&child, arguments[0], nullptr, nullptr, arguments.data(), environ) != 0) return {};
  // The peak that the system tells in the end counts what this process had when it began the other.
  double peak = 0;
  while (wait4(child, &status, WNOHANG, &usage) == 0) {
    peak = std::max(peak, peakMegabytesOf(child));
    usleep(500);
  }
  if (status != 0) return {};
  return {milliseconds(usage.ru_utime) + milliseconds(usage.ru_stime), double(timer.nsecsElapsed()) / 1e6, peak};
}
#else
ProcessCost costOf(const QStringList&) { return {}; }
#endif

ProcessCost lesser(const ProcessCost& a, const ProcessCost& b) {
  if (!(a.clockMs > 0)) return b;
  if (!(b.clockMs > 0)) return a;
  return {std::min(a.processorMs, b.processorMs), std::min(a.clockMs, b.clockMs),
          std::min(a.peakMegabytes, b.peakMegabytes)};
}

ProcessCost leastCost(const QStringList& command, int rounds) {
  ProcessCost least = costOf(command);
  for (int round = 1; round < rounds; ++round)
    least = lesser(least, costOf(command));
  return least;
}

} // namespace xov::bench
