#pragma once

#include "XOV_Graphics/base/Export.h"
#include "XOV_Graphics/views/timeline/RealTimeDisplayView.h"

namespace xov {

/// A real-time display that writes the month in full and the local time twelve-hourly: "11 March, 2011", "05:46:23
/// UTC", "02:46:23 PM".
class XOV_EXPORT realTimeDisplayView01 : public RealTimeDisplayView {
  Q_OBJECT

public:
  explicit realTimeDisplayView01(QWidget* parent = nullptr) : realTimeDisplayView01(QRectF(), parent) {}
  explicit realTimeDisplayView01(const QRectF& frame, QWidget* parent = nullptr);
  ~realTimeDisplayView01() override;

  /// As longReferenceTexts() writes refDate(), with the system's zone as the local one.
  ReferenceTexts referenceTexts() const override;
};

} // namespace xov
