// A plain view whose list, limits and rectangle a class of the host's own draws: bars of a day.
//   XOVChartView           opens a window
//   XOVChartView PICTURE   writes a picture
#include <QApplication>

#include <XOV_Graphics/platform/GraphicsContext.h>
#include <XOV_Graphics/platform/Path.h>
#include <XOV_Graphics/views/xy/XOVChartView.h>
#include <vector>

/// Bars of whole numbers side by side.
class BarsView : public xov::XOVChartView {
public:
  explicit BarsView(const std::vector<int>& heights) : XOVChartView(QRectF(0, 0, 480, 260)) {
    dataArray_ = std::make_shared<xov::ChartItems>(heights.begin(), heights.end());
    xmax_ = float(heights.size());
    ymax_ = 10;
  }

  void drawRect(const QRectF&) override {
    xov::GraphicsContext& context = xov::GraphicsContext::current();
    context.setColor(Qt::white);
    context.fillRect(bounds());
    pRect_ = bounds().adjusted(20, 20, -20, -20);
    const double width = pRect_.width() / double(xmax());
    context.setColor(QColor(0x6f, 0x9c, 0xc8));
    for (std::size_t i = 0; i < dataArray()->size(); ++i) {
      const double height = pRect_.height() * (*dataArray())[i].toInt() / double(ymax());
      context.fillRect({pRect_.x() + width * (double(i) + 0.1), pRect_.y(), width * 0.8, height});
    }
    context.setColor(Qt::black);
    context.strokeRect(pRect_);
  }
};

int main(int argc, char** argv) {
  QApplication app(argc, argv);
  BarsView view({2, 0, 1, 4, 7, 3, 2, 5, 9, 4, 3, 1});
  if (argc > 1) return view.pictureOfRect(view.bounds()).save(QString::fromLocal8Bit(argv[1])) ? 0 : 1;
  view.show();
  return QApplication::exec();
}
