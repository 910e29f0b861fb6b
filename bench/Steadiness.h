#pragma once

#include <QString>

#include <span>
#include <vector>

namespace xov::bench {

/// What this process holds at a moment of a long run.
struct Moment {
  double done = 0; ///< of the run: hours of a recording, figures
  double megabytes = 0;
  qsizetype handles = 0;       ///< open files, sockets and the like
  double workMilliseconds = 0; ///< of the processor: of a redraw, of a figure
};

/// `done` and `workMilliseconds` as they are told, the rest as it is now.
Moment momentNow(double done, double workMilliseconds);

/// Whether a long run stays as it is, once caches and buffers are full.
struct Steadiness {
  std::size_t moments = 0;
  double megabytesWhenWarm = 0;
  double megabytesAtEnd = 0;
  double growth = 0; ///< megabytes for each `per` that is done: the straight line that fits best
  qsizetype handlesWhenWarm = 0;
  qsizetype handlesAtEnd = 0;
  double workOfFirstQuarter = 0; ///< medians, in milliseconds
  double workOfLastQuarter = 0;
};

/// Of the moments from `warm` on.
Steadiness steadiness(std::span<const Moment> moments, double warm, double per);

/// The columns of a table that tell of it, and their values: "| 12.0 | …", without a bar at the end. `per` and `work`
/// are what `growth` and `workMilliseconds` are of.
QString steadinessHeading(const char* per, const char* work);
QString steadinessRow(const Steadiness& steadiness);

} // namespace xov::bench
