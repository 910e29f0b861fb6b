#pragma once

#include "XOV_Graphics/base/Export.h"
#include "XOV_Graphics/base/SampleSource.h"

#include <QPointF>

#include <cstdint>
#include <functional>
#include <optional>
#include <vector>

namespace xov {

/// How the time of a sample follows from its index, in the trace's own unit (seconds, as a rule). Times are single
/// precision under every rule but Even.
struct XOV_EXPORT TraceTime {
  /// How times follow from indices.
  enum class Rule : std::uint8_t {
    Uniform,     ///< t(i) = start + step · i, the product and the sum each rounded to single precision
    Accumulated, ///< t(first) = start, t(i + 1) = t(i) + step, rounded to single precision at every sample
    Explicit,    ///< t(i) = values[i]
    Even,        ///< t(i) = start + step · (i - origin) in double precision
  };
  Rule rule = Rule::Uniform;     ///< which of these
  float start = 0;               ///< time of the first sample, or of `origin`
  float step = 1;                ///< time between two samples
  const float* values = nullptr; ///< borrowed; only for Rule::Explicit, indexed like the samples
  std::int64_t origin = 0;       ///< only for Rule::Even: the sample that lies at `start`

  /// Times that are computed from the index each.
  static TraceTime uniform(float start, float step) { return {Rule::Uniform, start, step, nullptr, 0}; }
  /// Times that are added up from sample to sample.
  static TraceTime accumulated(float start, float step) { return {Rule::Accumulated, start, step, nullptr, 0}; }
  /// Times that are given, indexed like the samples.
  static TraceTime explicitValues(const float* values) { return {Rule::Explicit, 0, 0, values, 0}; }
  /// Times a step apart in double precision, `start` at the sample `origin`.
  static TraceTime even(float start, float step, std::int64_t origin = 0) {
    return {Rule::Even, start, step, nullptr, origin};
  }
};

/// What fills cover of a trace. Lobes wind the same way on both sides of their levels: those of a path are united by
/// the non-zero rule, wherever they overlap.
enum class TraceArea : std::uint8_t {
  Enclosed,   ///< each unbroken line, closed straight from its last sample to its first
  AboveLevel, ///< what lies between the line and the level, where the line runs at larger values
  BelowLevel, ///< the same where it runs at smaller ones
};

/// A polyline through evenly or unevenly sampled data, described instead of spelled out: a Path that holds a Trace
/// costs the same for ten samples and for ten million.
///
/// Sample i, first <= i < last, lies at
///     x = (t(i) - tOrigin) · xScale + xOffset
///     y = (v(i) - vOrigin) · yScale + yOffset
/// in view points; both differences are taken in single precision (that of even times in double), the rest in double.
/// v(i) is samples[i] held inside [clampLow, clampHigh] where those are set; a value that is not finite breaks the
/// line, and so does a time that is not finite. `firstValue`, where set, stands for v(first) and is not clamped.
///
/// The samples are borrowed: they must stay alive and unchanged until the path has been stroked.
struct XOV_EXPORT Trace {
  /// Borrowed; null draws nothing.
  const float* samples = nullptr;
  std::int64_t first = 0; ///< the first sample that is drawn
  std::int64_t last = 0;  ///< one past the last sample; last <= first is an empty trace

  TraceTime time;     ///< when each sample is
  float tOrigin = 0;  ///< time that lies at xOffset
  double xScale = 1;  ///< view points for each unit of time
  double xOffset = 0; ///< view points

  float vOrigin = 0;               ///< value that lies at yOffset
  double yScale = 1;               ///< view points for each unit of the samples
  double yOffset = 0;              ///< view points
  std::optional<float> clampLow;   ///< smaller values are drawn as this one
  std::optional<float> clampHigh;  ///< larger values are drawn as this one
  std::optional<float> firstValue; ///< in place of that of the first sample

  /// What fills cover; strokes do not ask.
  TraceArea area = TraceArea::Enclosed;
  /// The value that lobes are cut at, exactly between two samples. It is not clamped.
  float level = 0;

  /// The index of the samples' extremes, borrowed like them; null where there is none. One that does not cover them
  /// is not used. Drawings are the same with it, and those of long records take a fraction of the time.
  const SampleIndex* index = nullptr;
  /// Holds those samples in memory that are read, where not all of them are there; null where they are.
  SampleSource* source = nullptr;

  /// Takes samples with what there is to know of them; `first` and `last` stay.
  void borrow(const BorrowedSamples& borrowed) {
    samples = borrowed.samples;
    index = borrowed.index;
    source = borrowed.source;
  }
  /// Samples from <= i < to, in memory while what is given back lives.
  HeldSamples held(std::int64_t from, std::int64_t to) const { return {source, samples + from, samples + to}; }

  /// Whether it has no sample.
  bool isEmpty() const { return samples == nullptr || last <= first; }
  /// How many samples there are to draw.
  std::int64_t size() const { return isEmpty() ? 0 : last - first; }

  /// Gives a record's samples their times: added up in single precision from `firstTime` at sample `first` on, as
  /// long as each of these lies within half a view point of the even ones in double precision, and else `even`
  /// itself. time.rule tells which. Reads `first`, `last` and `xScale`, which must have been set before.
  ///
  /// A sum of rounded steps drifts: at 86,400 s single precision is 1/128 s fine, so that steps of 1/100 s become
  /// 1/128 s, and a record of 328 s ends 72 s early. Sums are right for most records and cost no multiplication;
  /// where they would part a trace from its axis, picks and events, the product holds.
  void settleTimes(float firstTime, const TraceTime& even);

  /// The value of sample i after clamping, first <= i < last; nothing where the sample breaks the line.
  std::optional<float> valueAt(std::int64_t i) const;

  /// The view x of a time and the view y of a clamped value.
  double xOf(float time) const;
  /// The view y of a value, clamped.
  double yOf(float value) const;

  /// Calls `visit` with the position of every sample from first to last, in order. A sample that breaks the line is
  /// passed with a NaN coordinate.
  void forEachPoint(const std::function<void(QPointF)>& visit) const;

  /// The positions of all samples; 16 bytes a sample.
  std::vector<QPointF> points() const;
};

} // namespace xov
