#pragma once

#include "XOV_Graphics/base/Export.h"
#include "XOV_Graphics/views/timeline/RealTimeDisplayView.h"

namespace xov {

/// A real-time display that abbreviates the month and names the local zone: "11 Mar, 2011", "05:46:23 UTC", "14:46:23
/// JST".
class XOV_EXPORT XOVRealTimeDisplayView02 : public RealTimeDisplayView {
  Q_OBJECT

public:
  explicit XOVRealTimeDisplayView02(QWidget* parent = nullptr) : XOVRealTimeDisplayView02(QRectF(), parent) {}
  explicit XOVRealTimeDisplayView02(const QRectF& frame, QWidget* parent = nullptr);
  ~XOVRealTimeDisplayView02() override;

  /// As shortReferenceTexts() writes refDate(), with the system's zone as the local one.
  ReferenceTexts referenceTexts() const override;
};

} // namespace xov
