#pragma once

#include "XOV_Graphics/platform/RecordingContext.h"
#include "XOV_Graphics/platform/View.h"

#include <QPainterPath>

#include <limits>
#include <memory>

namespace xov::testing {

inline constexpr float kNan = std::numeric_limits<float>::quiet_NaN();
inline constexpr float kInfinity = std::numeric_limits<float>::infinity();

/// Draws one step of a view and keeps what it drew.
template <typename Step>
std::unique_ptr<RecordingContext> recordedStep(Step step) {
  auto recording = std::make_unique<RecordingContext>();
  const GraphicsContext::Pass pass(*recording);
  step();
  return recording;
}

/// Draws the whole view and keeps what it drew.
inline std::unique_ptr<RecordingContext> recorded(View& view) {
  auto recording = std::make_unique<RecordingContext>();
  view.drawInto(*recording);
  return recording;
}

/// Draws the view onto pixels and onto a page, too; true when both came out.
inline bool drawsEverywhere(View& view) {
  recorded(view);
  return !view.pictureOfRect(view.bounds()).isNull() && !view.dataWithPDFInsideRect(view.bounds()).isEmpty();
}

/// The rectangle that an item strokes or fills.
inline QRectF boxOf(const RecordedItem& item) { return item.path.shape().boundingRect(); }

/// The sets of symbols of a recording.
inline std::vector<Symbols> symbolsOf(const RecordingContext& recording) {
  std::vector<Symbols> found;
  for (const RecordedItem& item : recording.items()) {
    if (item.kind == RecordedItem::Kind::Symbols) found.push_back(item.symbols);
  }
  return found;
}

/// The strokes that gathered axes: every stroke 0.75 points wide.
inline std::vector<RecordedItem> axisStrokes(const RecordingContext& recording) {
  std::vector<RecordedItem> found;
  for (const RecordedItem& item : recording.strokes()) {
    if (item.path.lineWidth() == 0.75) found.push_back(item);
  }
  return found;
}

} // namespace xov::testing
