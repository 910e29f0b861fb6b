// What a careless host does before main(): static objects are made before any QApplication.
#include "tests/hosts/EarlyViews.h"

#include "XOV_Graphics/graphics/AGraphics.h"
#include "XOV_Graphics/platform/RecordingContext.h"
#include "XOV_Graphics/views/base/XOVView.h"

#include <cstdlib>

namespace xov {
namespace {

const bool kDone = [] {
  const QByteArray wanted = qgetenv(testing::kEarlyVariable);
  if (wanted == testing::kViewWithoutApplication) {
    XOVView view;
    std::_Exit(0); // not reached
  }
  if (wanted == testing::kDrawsWithoutApplication) {
    AInitGraphLib();
    RecordingContext recording;
    const GraphicsContext::Pass pass(recording);
    recording.fillRect({0, 0, 1, 1});
    std::_Exit(recording.items().size() == 1 ? 0 : 1);
  }
  return true;
}();

} // namespace
} // namespace xov
