#include "bench/Contest.h"

#include "bench/ProcessCost.h"

#include <QElapsedTimer>

#include <algorithm>

namespace xov::bench {

namespace {

constexpr double kSlowMilliseconds = 2000;

} // namespace

void runInTurn(std::vector<Contest>& contests, int rounds) {
  for (int round = 0; round <= rounds; ++round) {
    for (Contest& contest : contests) {
      if (!contest.milliseconds.empty() && contest.milliseconds.front() > kSlowMilliseconds) continue;
      QElapsedTimer timer;
      timer.start();
      const double start = ownProcessorMs();
      contest.run();
      const double milliseconds = double(timer.nsecsElapsed()) / 1e6;
      if (round == 0 && rounds > 0 && milliseconds <= kSlowMilliseconds) continue;
      contest.milliseconds.push_back(milliseconds);
      contest.processorMilliseconds.push_back(ownProcessorMs() - start);
    }
  }
}

double median(std::vector<double> values) {
  std::sort(values.begin(), values.end());
  return values[values.size() / 2];
}

QString pairedRows(const std::vector<Contest>& contests) {
  QString text;
  for (std::size_t i = 0; i + 1 < contests.size(); i += 2) {
    const double ours = median(contests[i].processorMilliseconds);
    const double rival = median(contests[i + 1].processorMilliseconds);
    text += QStringLiteral("| %1 | %2 | %3 | %4 | %5 | %6 |\n")
                .arg(QString::fromUtf8(contests[i].name))
                .arg(ours, 0, 'f', 2)
                .arg(rival, 0, 'f', 2)
                .arg(ours / rival, 0, 'f', 2)
                .arg(median(contests[i].milliseconds), 0, 'f', 2)
                .arg(median(contests[i + 1].milliseconds), 0, 'f', 2);
  }
  return text;
}

} // namespace xov::bench
