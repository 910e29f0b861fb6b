#pragma once

#include "XOV_Graphics/platform/Trace.h"

#include <QSize>

#include <string>
#include <vector>

namespace xov::bench {

/// Something to draw: traces of seeded white noise, of sines or of what looks like a recording, in black lines of one
/// point, or symbols at seeded places.
struct Work {
  std::string name;        ///< "W1"
  std::string description; ///< "drum: 24 rows of 360,000 samples"
  QSize size;              ///< view points
  double ratio = 1;        ///< device pixels a point
  bool isPage = false;     ///< drawn onto a page of PDF instead of pixels
  std::vector<float> samples;
  std::vector<Trace> traces; ///< refer to `samples`
  std::vector<float> xs;     ///< places of symbols, in view points
  std::vector<float> ys;
  float diameter = 0; ///< of the symbols

  Work() = default;
  Work(Work&&) = default;
  Work& operator=(Work&&) = default;
};

/// Names of the works that makeWork() knows, in the order of the report: "W1", "W2", "W3", the sections "W8" to
/// "W10", panels with gaps "W11" and "W12", a recording "W14", sines "W15" and the scatter plot "S1"; the pages "W5"
/// of W3, "W6" of W1, "S2" of S1 and "W13" of W12; and W1, W2, W3 and S1 with
/// "@1.5" and "@2" for other pixel ratios.
std::vector<std::string> workNames();

/// Makes a work with its samples. An unknown name gives a work without a name.
Work makeWork(const std::string& name);

} // namespace xov::bench
