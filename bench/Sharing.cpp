#include "bench/Sharing.h"

#include "XOV_Graphics/base/Threads.h"
#include "bench/Contest.h"
#include "bench/Engines.h"
#include "bench/LiveDisplay.h"

#include <algorithm>
#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace xov::bench {

namespace {

constexpr const char* kWorks[] = {"W1", "W2", "W3", "W5", "W8"};
constexpr int kShortRounds = 60; // of works of a few milliseconds, whose least times take longer to be met

double least(const std::vector<double>& times) { return *std::min_element(times.begin(), times.end()); }

QString row(const char* name, const Contest& one, const Contest& two) {
  const double alone = least(one.milliseconds), shared = least(two.milliseconds);
  return QStringLiteral("| %1 | %2 | %3 | %4 | %5 | %6 |\n")
      .arg(QString::fromUtf8(name))
      .arg(alone, 0, 'f', 2)
      .arg(shared, 0, 'f', 2)
      .arg(alone / shared, 0, 'f', 2)
      .arg(least(one.processorMilliseconds), 0, 'f', 2)
      .arg(least(two.processorMilliseconds), 0, 'f', 2);
}

QString measured(const char* name, const std::function<void()>& work, int rounds) {
  const auto with = [&work](int threads) {
    return [&work, threads] {
      setThreadCount(threads);
      work();
    };
  };
  std::vector<Contest> contests = {{name, with(1)}, {name, with(2)}};
  runInTurn(contests, rounds);
  return row(name, contests[0], contests[1]);
}

} // namespace

QString sharingTable(int rounds) {
  const int before = threadCount();
  QString text = QStringLiteral("| work | 1 thread: ms | 2 threads: ms | times as fast | CPU ms | CPU ms with 2 |\n"
                                "|---|---:|---:|---:|---:|---:|\n");
  for (const char* name : kWorks) {
    const Work work = makeWork(name);
    const Engine& xov = *engineNamed("xov");
    Drawn drawn;
    text += measured(
        name, [&] { drawn = xov.draw(work); }, std::max(rounds, kShortRounds));
  }
  for (const std::string& name : liveDisplayNames())
    text += measured(name.c_str(), liveRedraws(name), std::max(rounds, kShortRounds));
  setThreadCount(before);
  return text;
}

} // namespace xov::bench
