#pragma once

#include "XOV_Graphics/platform/RecordingContext.h"
#include "XOV_Graphics/platform/View.h"
#include "XOV_Graphics/views/image/XOVImageView.h"

#include <memory>
#include <vector>

namespace xov::testing {

inline GridFloats gridOf(std::vector<float> values) {
  return std::make_shared<const std::vector<float>>(std::move(values));
}

/// What was drawn, to be handed on.
class Recording {
public:
  template <typename Draw>
  explicit Recording(const Draw& draw) : context_(std::make_unique<RecordingContext>()) {
    const GraphicsContext::Pass pass(*context_);
    draw();
  }

  const std::vector<RecordedItem>& items() const { return context_->items(); }
  std::vector<RecordedItem> strokes() const { return context_->strokes(); }
  std::vector<RecordedItem> texts() const { return context_->texts(); }
  std::vector<RecordedItem> images() const { return context_->images(); }
  QStringList strings() const { return context_->strings(); }
  std::optional<RecordedItem> textReading(const QString& text) const { return context_->textReading(text); }

private:
  std::unique_ptr<RecordingContext> context_;
};

inline Recording recorded(View& view) {
  return Recording([&view] { view.drawRect(view.bounds()); });
}

/// What a single drawing step draws.
template <typename Step>
Recording recordedStep(const Step& step) {
  return Recording(step);
}

} // namespace xov::testing
