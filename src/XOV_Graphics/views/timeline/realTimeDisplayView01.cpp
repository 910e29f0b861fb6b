#include "XOV_Graphics/views/timeline/realTimeDisplayView01.h"

namespace xov {

realTimeDisplayView01::realTimeDisplayView01(const QRectF& frame, QWidget* parent)
    : RealTimeDisplayView(frame, parent) {}

realTimeDisplayView01::~realTimeDisplayView01() = default;

ReferenceTexts realTimeDisplayView01::referenceTexts() const { return longReferenceTexts(refDate_); }

} // namespace xov
