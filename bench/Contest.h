#pragma once

#include <QString>

#include <functional>
#include <vector>

namespace xov::bench {

/// Something that is timed beside others.
struct Contest {
  const char* name;
  std::function<void()> run;
  std::vector<double> milliseconds = {};
};

/// All in turn, so that a change of the machine's mood meets all of them; once more than `rounds` without the clock,
/// which touches the memory.
void runInTurn(std::vector<Contest>& contests, int rounds);

double median(std::vector<double> values);

/// A row a pair of contests: the medians of one, of the rival behind it, and their ratio.
QString pairedRows(const std::vector<Contest>& contests);

} // namespace xov::bench
