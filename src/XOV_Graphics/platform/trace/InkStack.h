#pragma once

#include "XOV_Graphics/platform/trace/TraceCoverage.h"
#include "XOV_Graphics/platform/trace/TraceInk.h"
#include "XOV_Graphics/platform/trace/TraceRaster.h"
#include "XOV_Graphics/platform/trace/TraceStrip.h"

#include <array>
#include <cstdint>
#include <vector>

namespace xov {

/// The ink of narrow strokes side by side, which is kept until it can be laid over its pixels together. Where strokes
/// overlap, a column has the ink of each in a plane of its own, and planes are laid in their order: pixels are those
/// of the strokes laid one after the other.
///
///     plane 2           33                columns of strokes 0, 1, 2, ...
///     plane 1     11  2222  3344
///     plane 0   0000111 22233334444
class InkStack {
public:
  /// For pictures of so many rows, of which row 0 is the target's row `top`.
  InkStack(const PixelTarget& target, int top, int rows);
  InkStack(const InkStack&) = delete;
  InkStack& operator=(const InkStack&) = delete;
  /// Leaves its memory to the next one of the thread. What has not been laid is lost.
  ~InkStack();

  /// The most columns that a stroke may have ink in.
  static constexpr int kMostColumns = kInkColumns / 2;

  /// Takes the ink of a strip's used columns. Only pixels of columns begin <= column < end of the picture may be
  /// touched, among which those of the strip are.
  void add(TraceCoverage& coverage, const TraceStrip& strip, const TraceInk& ink, int begin, int end);

  /// Lays what has been taken.
  void lay();

private:
  struct Plane {
    std::vector<std::int32_t> changes; // see TraceUnion.h; all 0 but where ink waits
    ColumnInks inks;
    RowRange rows;
    InkedColumns columns;
  };

  static std::vector<Plane>& keptPlanes();
  bool holds(const TraceStrip& strip, const TraceInk& ink, int begin, int end) const;
  Plane& planeOver(int column);

  PixelTarget target_;
  int top_ = 0;
  int rows_ = 0;
  int left_ = 0;  // column of the picture that planes begin with
  int begin_ = 0; // those that may be touched
  int end_ = 0;
  std::uint32_t alpha_ = 0;
  std::size_t used_ = 0; // planes with ink
  std::array<std::size_t, kInkColumns> heights_{};
  std::vector<Plane> planes_;
};

} // namespace xov
