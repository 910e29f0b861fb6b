#include "XOV_Graphics/platform/trace/StrokeRaster.h"

#include "XOV_Graphics/platform/trace/StripRuns.h"
#include "XOV_Graphics/platform/trace/TraceEnvelope.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <memory>

namespace xov {

namespace {

constexpr double kLargestRadius = 64; // pixels; the work for a sub-column grows with the radius
constexpr double kBeyondPen = 2;      // pixels that the ink of a sub-column may lie further away
constexpr double kScaleTolerance = 1e-6;
constexpr std::size_t kJudged = 16; // traces, by and large, whose ink decides about the fineness of a strip

/// The scale of a transform that keeps x rightwards, may mirror y and scales both alike.
std::optional<double> uniformScale(const QTransform& transform) {
  const double scale = transform.m11();
  if (!transform.isAffine() || !(scale > 0) || !std::isfinite(scale)) return std::nullopt;
  const double tolerance = kScaleTolerance * scale;
  const bool turned = std::abs(transform.m12()) > tolerance || std::abs(transform.m21()) > tolerance;
  if (turned || !(std::abs(std::abs(transform.m22()) - scale) <= tolerance)) return std::nullopt;
  return scale;
}

/// Envelopes of one pen by their fineness. Those of a thread's last stroke are kept for its next one, which is mostly
/// of the same pen.
class Envelopes {
public:
  TraceEnvelope& of(const TraceStrip& strip) {
    if (strip.radius != radius_ || strip.columns > columns_) {
      byFineness_.clear();
      radius_ = strip.radius;
      columns_ = strip.columns;
    }
    TraceStrip widest = strip;
    widest.columns = columns_;
    TraceEnvelope& envelope = byFineness_.try_emplace(strip.perColumn, widest).first->second;
    envelope.moveTo(strip);
    return envelope;
  }

private:
  double radius_ = 0;
  int columns_ = 0;
  std::map<int, TraceEnvelope> byFineness_;
};

} // namespace

StrokeRaster::StrokeRaster(const PixelTarget& target, const QTransform& viewToDevice, const QRect& clip,
                           double lineWidth)
    : target_(target),
      viewToDevice_(viewToDevice),
      visible_(clip & QRect(0, 0, target.width, target.height)),
      stack_(target, visible_.top(), visible_.height()) {
  const std::optional<double> scale = uniformScale(viewToDevice);
  radius_ = scale ? lineWidth * *scale / 2 : 0;
  fits_ = scale && !(radius_ > kLargestRadius);
}

int StrokeRaster::widestStrip() const { return std::min(stripColumns(1, 1, radius_), visible_.width()); }

bool StrokeRaster::take(std::span<const Trace> traces, const QColor& color) {
  columns_ = 0;
  if (!fits_ || !projectTraces(traces, viewToDevice_, visible_, projections_)) return false;
  ink_.emplace(color);
  const bool isNothing = visible_.isEmpty() || projections_.empty() || !(radius_ > 0) || ink_->isInvisible();
  if (target_.bits == nullptr || isNothing) return true;

  fineness_.emplace(radius_, projections_.size(), samplesPerPixel(projections_));
  first_ = {visible_.left(), 0, 0, visible_.height(), radius_};
  first_.columns = std::min(stripColumns(fineness_->subColumns(), projections_.size(), radius_), visible_.width());
  extent_ = InkExtent(projections_, radius_ + kBeyondPen);
  columns_ = extent_.beginAt(visible_, first_);
  return true;
}

StrokeRaster::Strips StrokeRaster::strips() const {
  if (columns_ < 1) return {};
  return {first_.left, first_.columns, (columns_ + first_.columns - 1) / first_.columns};
}

void StrokeRaster::draw() {
  const int count = strips().count;
  if (count <= kFewStrips) return drawFew(0, count, {visible_.left(), visible_.right() + 1});
  finish();
  drawStrips(first_, columns_, *fineness_, [&] {
    return [&, room = std::make_shared<Room>(first_.rows)](TraceStrip& strip, TraceFineness& fineness) {
      findInk(*room, strip, fineness);
      takeInk(*room, strip);
      layStrip(room->coverage, strip, *ink_, target_, visible_.top());
    };
  });
}

TraceStrip StrokeRaster::strip(int number) const {
  TraceStrip strip = first_;
  strip.left += number * first_.columns;
  strip.columns = std::min(first_.columns, first_.left + columns_ - strip.left);
  return strip;
}

void StrokeRaster::drawStrip(int number) {
  const TraceStrip drawn = strip(number);
  drawFew(number, number + 1, {drawn.left, drawn.left + drawn.columns});
}

/// Works out strips from the first one on, and draws those from <= k < to.
void StrokeRaster::drawFew(int from, int to, const Columns& touched) {
  if (!room_) room_.emplace(visible_.height());
  for (int k = 0; k < to; ++k) {
    TraceStrip at = strip(k);
    findInk(*room_, at, *fineness_);
    if (k < from) continue;
    takeInk(*room_, at);
    if (at.lastUsed - at.firstUsed <= InkStack::kMostColumns) {
      stack_.add(room_->coverage, at, *ink_, touched.first, touched.last);
    } else {
      finish();
      layStrip(room_->coverage, at, *ink_, target_, visible_.top());
    }
  }
}

void StrokeRaster::findInk(Room& room, TraceStrip& strip, TraceFineness& fineness) const {
  static thread_local Envelopes envelopes;
  const std::size_t judgedEvery = projections_.size() / kJudged + 1;
  TraceEnvelope* envelope = nullptr;
  extent_.markUsed(strip);
  do {
    strip.perColumn = fineness.subColumns();
    envelope = &envelopes.of(strip);
    room.layers.reset(strip);
    for (std::size_t i = 0; i < projections_.size(); ++i)
      envelope->addTrace(projections_[i], room.layers, i % judgedEvery == 0);
  } while (fineness.refine(envelope->roughness(), double(strip.subColumns()) * strip.rows));
}

void StrokeRaster::takeInk(Room& room, TraceStrip& strip) {
  room.layers.narrowUsed(strip);
  room.coverage.take(room.layers);
}

} // namespace xov
