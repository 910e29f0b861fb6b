#pragma once

#include "XOV_Graphics/platform/trace/SnippetClusters.h"
#include "XOV_Graphics/platform/trace/TraceClip.h"
#include "XOV_Graphics/platform/trace/TraceProjection.h"

#include <QPointF>
#include <QRectF>

#include <cmath>
#include <cstdint>
#include <vector>

namespace xov {

inline constexpr double kFarAway = 1e100; // points; keeps slopes finite

/// What the points of a trace are wanted for.
enum class Wanted : std::uint8_t { Stroke, Enclosed, Lobes };

/// Where the columns of a page lie, in view points: each `columnWidth` wide, counted from `origin`; `box` is what may
/// show.
struct PageColumns {
  double columnWidth = 1;
  double origin = 0;
  QRectF box;
};

/// Points of polylines, broken at gaps.
class PointList {
public:
  void add(double x, double y);
  void endLine();
  void passOn(TraceClip& clip) const;

private:
  std::vector<QPointF> points_;
};

/// Finds the points that stand for a trace on a page, column by column. Columns know nothing of each other, so that
/// several of these can find a trace's parts at the same time.
class TraceColumns {
public:
  /// What is given must outlive this.
  TraceColumns(const Trace& trace, const TraceProjection& projection, const PageColumns& page, Wanted wanted);

  /// Borders of parts of about so many columns, from the first sample that counts to behind the last one; just these
  /// where columns do not grow with the index.
  std::vector<std::int64_t> parts(int columns) const;

  /// The points of a part.
  PointList pointsOf(std::int64_t begin, std::int64_t end);

private:
  SampleRange shown() const;
  void addGrowing(std::int64_t begin, std::int64_t last);
  void addAny();
  std::int64_t addDenseColumns(std::int64_t begin, std::int64_t last);
  int cutColumns(std::int64_t begin, std::int64_t last, double firstBorder, std::int32_t* cuts) const;
  void addColumn(std::int64_t begin, std::int64_t end);
  void addBlock(std::int64_t begin, std::int64_t end);
  bool standsAlone(std::int64_t i, std::int64_t begin, std::int64_t end, double range) const;
  void addCurve(std::int64_t from, std::int64_t to);
  void addExtremes(std::int64_t begin, std::int64_t end, float low, float high);
  void addBroken(std::int64_t begin, std::int64_t end);
  std::int64_t addSnippets(std::int64_t begin, std::int64_t end);
  void addCluster(const SnippetClusters::Cluster& cluster);
  void addPoint(std::int64_t i);
  void addStartOfPiece(std::int64_t inside);
  void addEndOfPiece(std::int64_t beyond);
  std::int64_t nextBorder(std::int64_t begin, std::int64_t guess, std::int64_t end, double border) const;
  bool breaksOnceHeld(std::int64_t i) const {
    const HeldSamples held = trace_.held(i, i + 1);
    return breaks(i);
  }
  double columnOf(std::int64_t i) const {
    return std::floor((projection_.column(i) - page_.origin) / page_.columnWidth);
  }
  /// Sample i, which must be held.
  bool breaks(std::int64_t i) const {
    if (numbersAreThere_ && !projection_.isOverruled(i)) return !std::isfinite(trace_.samples[i]);
    return !projection_.isFinite(i) || !std::isfinite(projection_.column(i));
  }

  const Trace& trace_;
  const TraceProjection& projection_;
  PageColumns page_;
  Wanted wanted_;
  bool numbersAreThere_; // every sample that is a number has a place
  SnippetClusters snippets_;
  PointList points_;
};

} // namespace xov
