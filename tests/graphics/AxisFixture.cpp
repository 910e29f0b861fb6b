#include "AxisFixture.h"

namespace xov {

std::vector<AxisSegment> segmentsOf(const Path& path) {
  std::vector<AxisSegment> segments;
  for (const QPolygonF& line : path.polylines()) {
    for (qsizetype i = 1; i < line.size(); ++i) {
      segments.push_back({float(line[i - 1].x()), float(line[i - 1].y()), float(line[i].x()), float(line[i].y())});
    }
  }
  return segments;
}

AxisFixture::AxisFixture() {
  AInitGraphLib();
  gPosDown = 0;
  ASetPath(path_);
  ASetTickLabelAttributes(attributes_);
  ASetAxisRect(60, 460, 350, 50);
}

AxisFixture::~AxisFixture() {
  AInitGraphLib();
  gPosDown = 0;
}

void AxisFixture::drawAxis(int axis, int side, int mode, float lower, float upper, float interval) {
  path_->removeAllPoints();
  recording_.clear();
  label_[0] = '\0';
  const GraphicsContext::Pass pass(recording_);
  ADrawAxis(label_, axis, side, mode, lower, upper, interval);
}

std::vector<AxisSegment> AxisFixture::frameLines() const {
  const std::vector<AxisSegment> all = segments();
  return {all.begin(), all.begin() + std::min<std::ptrdiff_t>(2, std::ssize(all))};
}

std::vector<AxisSegment> AxisFixture::tickLines() const {
  const std::vector<AxisSegment> all = segments();
  return {all.begin() + std::min<std::ptrdiff_t>(2, std::ssize(all)), all.end()};
}

} // namespace xov
