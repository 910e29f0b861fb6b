#include "XOV_Graphics/views/timeline/XOVRealTimeDisplayView02.h"

namespace xov {

XOVRealTimeDisplayView02::XOVRealTimeDisplayView02(const QRectF& frame, QWidget* parent)
    : RealTimeDisplayView(frame, parent) {}

XOVRealTimeDisplayView02::~XOVRealTimeDisplayView02() = default;

ReferenceTexts XOVRealTimeDisplayView02::referenceTexts() const { return shortReferenceTexts(refDate_); }

} // namespace xov
