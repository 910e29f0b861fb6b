#pragma once

#include "XOV_Graphics/platform/trace/RoundPen.h"
#include "XOV_Graphics/platform/trace/TraceExtremes.h"
#include "XOV_Graphics/platform/trace/TraceFineness.h"
#include "XOV_Graphics/platform/trace/TraceLayers.h"
#include "XOV_Graphics/platform/trace/TraceProjection.h"
#include "XOV_Graphics/platform/trace/TraceSnippets.h"
#include "XOV_Graphics/platform/trace/TraceStrip.h"

#include <cstdint>
#include <vector>

namespace xov {

/// Finds the ink of traces in a strip, line by line.
///
/// Sparse lines are taken segment by segment. Elsewhere the curve's extremes in every sub-column are widened by the
/// pen's disc. The first and last segment of an unbroken line end in a butt, so they always are segments of their
/// own.
class TraceEnvelope {
public:
  explicit TraceEnvelope(const TraceStrip& strip);

  /// Moves on to another strip of the same or of a smaller width.
  void moveTo(const TraceStrip& strip);

  /// Adds a trace's ink in the strip to the layers. The ink of some traces is enough to judge the strip by.
  void addTrace(const TraceProjection& projection, TraceLayers& layers, bool judged);

  /// Of the judged ink that was added to the strip.
  const InkRoughness& roughness() const { return roughness_; }

private:
  struct Line {
    SampleRange samples;
    bool opens = false;  ///< begins at the first sample: that one has a butt
    bool closes = false; ///< ends at the last sample: that one has a butt
  };

  void addWindow(const TraceProjection& projection, TraceLayers& layers, SampleRange window);
  void addBrokenWindow(const TraceProjection& projection, TraceLayers& layers, SampleRange window);
  bool addLine(const TraceProjection& projection, TraceLayers& layers, const Line& line);
  void addSegments(const TraceProjection& projection, SampleRange curve, const InkRows& ink) const;
  void addButts(const TraceProjection& projection, const Line& line, const InkRows& ink) const;
  TracePoint point(const TraceProjection& projection, std::int64_t i) const;
  InkRoughness::Judged judgedAs(InkRoughness::Judged way) const { return judged_ ? way : InkRoughness::Judged::Not; }
  int reach() const { return smooth_.reach(); }

  TraceStrip strip_;
  InkRoughness roughness_;
  bool judged_ = false;
  RoundPen smooth_, tips_;
  TraceExtremes extremes_;
  TraceSnippets snippets_;
  std::vector<float> rows_; // of the points of a sparse line
};

} // namespace xov
