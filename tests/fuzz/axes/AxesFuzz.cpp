// Whatever limits, lengths and intervals are, an axis has a bounded number of ticks and labels, all at places that
// are numbers.

#include "XOV_Graphics/graphics/LinearAxis.h"
#include "XOV_Graphics/graphics/LogAxis.h"
#include "XOV_Graphics/graphics/UtcAxis.h"
#include "tests/fuzz/Claims.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <span>

using namespace xov;
using fuzz::require;

namespace {

// Minor ticks included, at both edges.
constexpr std::size_t kMostSegments = std::size_t(kMostMajorTicks) * 21;

class Choices {
public:
  explicit Choices(std::span<const std::uint8_t> bytes) : bytes_(bytes) {}

  template <typename Number>
  Number take() {
    Number number = {};
    const std::size_t count = std::min(sizeof number, bytes_.size());
    std::memcpy(&number, bytes_.data(), count);
    bytes_ = bytes_.subspan(count);
    return number;
  }

private:
  std::span<const std::uint8_t> bytes_;
};

AxisFrame takeFrame(Choices& choices) {
  return axisFrame(choices.take<float>(), choices.take<float>(), choices.take<float>(), choices.take<float>());
}

void requireFinite(const std::vector<AxisSegment>& segments) {
  require(segments.size() <= kMostSegments, "there is a bounded number of ticks", QString::number(segments.size()));
  for (const AxisSegment& segment : segments) {
    require(std::isfinite(segment.x1) && std::isfinite(segment.y1) && std::isfinite(segment.x2) &&
                std::isfinite(segment.y2),
            "ticks have places");
  }
}

void layOutLinear(Choices& choices) {
  LinearAxisRequest request;
  const auto flags = choices.take<std::uint8_t>();
  request.direction = (flags & 1) != 0 ? AxisDirection::X : AxisDirection::Y;
  request.line = (flags & 2) != 0 ? AxisLine::AtEnd : AxisLine::AtStart;
  request.mayScaleLabels = (flags & 4) != 0;
  request.minorTicks = (flags & 8) == 0;
  request.invertSigns = (flags & 16) != 0;
  request.fontSize = (flags & 32) != 0 ? choices.take<int>() : 18;
  request.lower = choices.take<float>();
  request.upper = choices.take<float>();
  request.interval = (flags & 64) != 0 ? choices.take<float>() : 0;
  request.frame = takeFrame(choices);
  const LinearAxis axis = layoutLinearAxis(request);
  requireFinite(axis.frame);
  requireFinite(axis.ticks);
  require(axis.labels.size() <= std::size_t(kMostTickLabels), "there is a bounded number of labels");
  for (const AxisLabel& label : axis.labels)
    require(!label.text.empty() && label.text.size() < 100, "a label has a short text");
}

void layOutLog(Choices& choices) {
  LogAxisRequest request;
  const auto flags = choices.take<std::uint8_t>();
  request.direction = (flags & 1) != 0 ? AxisDirection::X : AxisDirection::Y;
  request.line = (flags & 2) != 0 ? AxisLine::AtEnd : AxisLine::AtStart;
  request.lower = choices.take<double>();
  request.upper = choices.take<double>();
  request.frame = takeFrame(choices);
  request.textWidth = [](const LogTick& tick) { return double(tick.text.size() + tick.exponent.size()) * 6; };
  const LogAxis axis = layoutLogAxis(request);
  requireFinite(axis.ticks);
  require(axis.labels.size() <= std::size_t(kMostTickLabels), "there is a bounded number of labels");
}

void layOutUtc(Choices& choices) {
  UtcAxisRequest request;
  request.reference = QDateTime::fromMSecsSinceEpoch(choices.take<qint64>(), Qt::UTC);
  request.lower = choices.take<double>();
  request.upper = choices.take<double>();
  request.frame = takeFrame(choices);
  request.textWidth = [](const QString& text) { return double(text.size()) * 6; };
  const UtcAxis axis = layoutUtcAxis(request);
  requireFinite(axis.ticks);
  require(axis.texts.size() <= std::size_t(kMostTickLabels), "there is a bounded number of texts");
}

constexpr void (*kLayouts[])(Choices&) = {layOutLinear, layOutLog, layOutUtc};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  Choices choices({data, size});
  kLayouts[choices.take<std::uint8_t>() % std::size(kLayouts)](choices);
  return 0;
}
