#pragma once

#include "XOV_Graphics/base/Export.h"
#include "XOV_Graphics/platform/View.h"
#include "XOV_Graphics/views/xy/ChartItems.h"

#include <QRectF>

namespace xov {

/// A plain view that keeps limits, a list of data and a plotting rectangle for a subclass to draw; it draws nothing
/// by itself.
class XOV_EXPORT XOVChartView : public View {
  Q_OBJECT
  Q_CLASSINFO("shows", "chart")

public:
  /// No frame, limits 0 to 1 in both directions, an empty list and an empty pRect().
  explicit XOVChartView(QWidget* parent = nullptr);
  /// All limits 0, no list, an empty pRect().
  explicit XOVChartView(const QRectF& frame, QWidget* parent = nullptr);
  ~XOVChartView() override;

  /// The limits of both directions, those that differ.
  QString spokenDescription() const override;

  /// The value at the left end of the x axis.
  float xmin() const { return xmin_; }
  /// The value at the right end of the x axis.
  float xmax() const { return xmax_; }
  /// The value at the lower end of the y axis.
  float ymin() const { return ymin_; }
  /// The value at the upper end of the y axis.
  float ymax() const { return ymax_; }
  /// The list itself, which the host may change; null where there is none.
  const ChartItemList& dataArray() const { return dataArray_; }
  /// The plotting rectangle in view points.
  QRectF pRect() const { return pRect_; }

protected:
  float xmin_ = 0;
  float xmax_ = 0;
  float ymin_ = 0;
  float ymax_ = 0;
  ChartItemList dataArray_;
  QRectF pRect_;
};

} // namespace xov
