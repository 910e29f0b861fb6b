#include "XOV_Graphics/views/xy/XOVChartView.h"

namespace xov {

XOVChartView::XOVChartView(QWidget* parent)
    : View(parent),
      xmax_(1),
      ymax_(1),
      dataArray_(std::make_shared<ChartItems>()) {}

XOVChartView::XOVChartView(const QRectF& frame, QWidget* parent) : View(frame, parent) {}

XOVChartView::~XOVChartView() = default;

} // namespace xov
