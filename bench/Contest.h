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
  std::vector<double> processorMilliseconds = {};
};

/// All in turn, so that a change of the machine's mood meets all of them; once more than `rounds` without the clock,
/// which touches the memory.
void runInTurn(std::vector<Contest>& contests, int rounds);

double median(std::vector<double> values);

/// Rows of a table: each contest beside the one behind it in the list, which it is measured against, by the
/// processor's time and by the clock's.
QString pairedRows(const std::vector<Contest>& contests);

} // namespace xov::bench
