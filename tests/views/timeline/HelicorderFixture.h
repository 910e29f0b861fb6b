#pragma once

#include "TimelineDrawing.h"
#include "XOV_Graphics/views/timeline/helicorderView.h"

#include <gtest/gtest.h>

namespace xov::testing {

inline const TextAttributes kHelvetica12 = TextAttributes::helvetica(12);
inline const TextAttributes kHelvetica18 = TextAttributes::helvetica(18);
inline const QDateTime kMidnight = utc(2009, 2, 19);

/// Draws a drum into a recording.
class Helicorder : public ::testing::Test {
protected:
  void draw() {
    recording_.clear();
    view_.drawInto(recording_);
  }
  void draw(const Records& pieces, const Events& events = {}) {
    view_.setWvfrmArray(pieces);
    view_.setTheHypoArray(events);
    draw();
  }

  // 600 × 436 points: a rectangle of 492 × 336 and, with 24 rows, rows of 12 points; the top is at 372.
  helicorderView view_{QRectF(0, 0, 600, 436)};
  RecordingContext recording_;
};

} // namespace xov::testing
