#include "XOV_Graphics/views/xy/spectrumView.h"

#include "XOV_Graphics/platform/Colors.h"
#include "XOV_Graphics/platform/GraphicsContext.h"

namespace xov {

spectrumView::spectrumView(QWidget* parent)
    : XOVView(QRectF(), parent),
      theSpectra_(std::make_shared<ChartItems>()),
      logX_(true),
      logY_(true) {}

spectrumView::spectrumView(const QRectF& frame, QWidget* parent) : XOVView(frame, parent) {}

spectrumView::~spectrumView() = default;

void spectrumView::addToTheSpectra(const QVariant& spectrum) {
  if (theSpectra() && spectrum.isValid()) theSpectra()->push_back(spectrum);
}

void spectrumView::removeFromTheSpectra(const QVariant& spectrum) {
  if (!theSpectra()) return;
  // The argument may be an item of the list, so the search holds a copy.
  std::erase_if(*theSpectra(), [wanted = spectrum](const QVariant& item) { return item == wanted; });
}

void spectrumView::drawRect(const QRectF&) {
  const SavedState saved(GraphicsContext::current());
  fillWithColorStrokeColor(colors::white, colors::gray);
}

} // namespace xov
