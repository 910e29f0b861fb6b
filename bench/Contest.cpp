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

} // namespace xov::bench
