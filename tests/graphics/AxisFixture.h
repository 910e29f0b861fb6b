#pragma once

#include "AxisPrinting.h"
#include "XOV_Graphics/graphics/AGraphics.h"
#include "XOV_Graphics/graphics/LinearAxis.h"
#include "XOV_Graphics/platform/Path.h"
#include "XOV_Graphics/platform/RecordingContext.h"
#include "XOV_Graphics/platform/TextAttributes.h"

#include <gtest/gtest.h>

#include <memory>
#include <vector>

namespace xov {

/// The straight lines of a path in pen order.
std::vector<AxisSegment> segmentsOf(const Path& path);

/// The state as a view sets it up before it draws axes: an emptied path, Helvetica 14, a frame of 400 × 300 points
/// with its lower left corner at (60, 50), all flags in their initial state.
class AxisFixture : public ::testing::Test {
protected:
  AxisFixture();
  ~AxisFixture() override;

  /// ADrawAxis() with an empty label into a fresh recording and an emptied path.
  void drawAxis(int axis, int side, int mode, float lower, float upper, float interval = 0);
  QStringList strings() const { return recording_.strings(); }
  std::vector<AxisSegment> segments() const { return segmentsOf(*path_); }
  /// The first two lines of an axis.
  std::vector<AxisSegment> frameLines() const;
  /// All lines but the first two.
  std::vector<AxisSegment> tickLines() const;
  QSizeF sizeOf(const QString& text) const { return attributes_->size(text); }

  std::shared_ptr<Path> path_ = std::make_shared<Path>();
  std::shared_ptr<TextAttributes> attributes_ = std::make_shared<TextAttributes>(TextAttributes::helvetica(14));
  RecordingContext recording_;
  char label_[64] = "";
};

} // namespace xov
