#pragma once

#include "bench/Works.h"

#include <QImage>

#include <functional>
#include <string>
#include <vector>

namespace xov::bench {

/// What drawing gave: pixels, or the size of a file.
struct Drawn {
  QImage image;
  qsizetype fileBytes = 0;
};

/// One way of drawing a work. `draw` includes all that a redraw costs; for the scan it is one pass over the samples
/// that finds their extremes in blocks, which no way of drawing can do without.
struct Engine {
  std::string name;
  std::string description;
  bool slow = false; ///< drawn once, under a time limit, in a process of its own
  std::function<Drawn(const Work&)> draw;
};

const std::vector<Engine>& engines();

/// The engine of that name, or nullptr.
const Engine* engineNamed(const std::string& name);

} // namespace xov::bench
