#include "bench/Contest.h"

#include <QElapsedTimer>

#include <algorithm>

namespace xov::bench {

void runInTurn(std::vector<Contest>& contests, int rounds) {
  for (int round = 0; round <= rounds; ++round) {
    for (Contest& contest : contests) {
      QElapsedTimer timer;
      timer.start();
      contest.run();
      if (round > 0) contest.milliseconds.push_back(double(timer.nsecsElapsed()) / 1e6);
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
    const double ours = median(contests[i].milliseconds), rival = median(contests[i + 1].milliseconds);
    text += QStringLiteral("| %1 | %2 | %3 | %4 |\n")
                .arg(QString::fromUtf8(contests[i].name))
                .arg(ours, 0, 'f', 2)
                .arg(rival, 0, 'f', 2)
                .arg(ours / rival, 0, 'f', 2);
  }
  return text;
}

} // namespace xov::bench
