#pragma once

#include <cstdint>
#include <cstdio>
#include <string>
#include <vector>

namespace xov::bench {

/// What every way of drawing is given: rows of samples, spread evenly over the width, the row r about the height
/// (r + 0.5) / rows from below, a sample of 1 that much above it.
struct RivalWork {
  std::vector<float> samples;
  int rows = 1;
  std::int64_t samplesPerRow = 0;
  double width = 0; ///< points
  double height = 0;
  double ratio = 1;     ///< pixels a point
  double deviation = 1; ///< points that a sample of 1 rises

  double x(std::int64_t i) const { return width * double(i) / double(samplesPerRow); }
  /// Downwards from the upper edge, in points.
  double yDown(int row, std::int64_t i) const {
    const double value = double(samples[std::size_t(row * samplesPerRow + i)]);
    return height - (height * (row + 0.5) / rows + deviation * value);
  }
  int pixelWidth() const { return int(width * ratio + 0.5); }
  int pixelHeight() const { return int(height * ratio + 0.5); }
};

/// A library that draws the same lines: black, one point wide, on white.
class Rival {
public:
  Rival() = default;
  Rival(const Rival&) = delete;
  Rival& operator=(const Rival&) = delete;
  virtual ~Rival() = default;

  /// Brings the samples into the form that the library wants; timed apart from the drawing.
  virtual void prepare(const RivalWork& work) = 0;
  virtual void draw() = 0;
  /// Writes what was drawn; false when the library has no way to.
  virtual bool save(const std::string& path) = 0;
  /// Writes a page of the same; false when the library has no way to.
  virtual bool writePdf(const std::string&) { return false; }
};

/// The program around a rival. Arguments: SAMPLES-FILE ROWS SAMPLES-PER-ROW WIDTH HEIGHT RATIO DEVIATION. It says
/// "ready MILLISECONDS" when the samples are prepared, then answers each line of its input: "draw" and "pdf PATH"
/// with the milliseconds they took, "save PATH" with "saved"; "no" when it has no way to.
int serve(Rival& rival, int argc, char** argv);

} // namespace xov::bench
