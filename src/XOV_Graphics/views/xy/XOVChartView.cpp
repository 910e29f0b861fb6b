#include "XOV_Graphics/views/xy/XOVChartView.h"

#include "XOV_Graphics/views/base/SpokenRanges.h"

namespace xov {

XOVChartView::XOVChartView(QWidget* parent)
    : View(parent),
      xmax_(1),
      ymax_(1),
      dataArray_(std::make_shared<ChartItems>()) {}

XOVChartView::XOVChartView(const QRectF& frame, QWidget* parent) : View(frame, parent) {}

XOVChartView::~XOVChartView() = default;

QString XOVChartView::spokenDescription() const {
  return spokenRanges({xmin_, xmax_, ymin_, ymax_}, QStringLiteral("x"), QStringLiteral("y"));
}

} // namespace xov
