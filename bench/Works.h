#pragma once

#include "platform/Trace.h"

#include <QSize>

#include <string>
#include <vector>

namespace xov::bench {

/// Something to draw: traces over seeded white noise, in black lines of one point.
struct Work {
  std::string name;        ///< "W1"
  std::string description; ///< "drum: 24 rows of 360,000 samples"
  QSize size;              ///< view points
  double ratio = 1;        ///< device pixels a point
  std::vector<float> samples;
  std::vector<Trace> traces; ///< refer to `samples`

  Work() = default;
  Work(Work&&) = default;
  Work& operator=(Work&&) = default;
};

/// Names of the works that makeWork() knows, in the order of the report: "W1", "W2", "W3", each also with "@1.5" and
/// "@2" for other pixel ratios.
std::vector<std::string> workNames();

/// Makes a work with its samples. An unknown name gives a work without traces.
Work makeWork(const std::string& name);

} // namespace xov::bench
