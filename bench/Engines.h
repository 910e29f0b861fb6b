#pragma once

#include "bench/Works.h"

#include <QByteArray>
#include <QImage>

#include <functional>
#include <string>
#include <vector>

namespace xov::bench {

/// What drawing gave: pixels, or the bytes of a file.
struct Drawn {
  QImage image;
  QByteArray file;
};

/// One way of drawing a work. `draw` includes all that a redraw costs; for the scan it is one pass over the samples
/// that finds their extremes in blocks, which no way of drawing can do without.
struct Engine {
  std::string name;
  std::string description;
  bool slow = false;   ///< drawn once, under a time limit, in a process of its own
  bool onPages = true; ///< draws pages, too
  std::function<Drawn(const Work&)> draw;
};

const std::vector<Engine>& engines();

/// The engine of that name, or nullptr.
const Engine* engineNamed(const std::string& name);

} // namespace xov::bench
