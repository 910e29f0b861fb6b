// QCustomPlot: a graph for each row, adaptive sampling on.
#include "bench/rivals/Rival.h"

#include <QApplication>
#include <qcustomplot.h>

namespace {

using namespace xov::bench;

class QCustomPlotRival : public Rival {
public:
  void prepare(const RivalWork& work) override {
    work_ = &work;
    plot_.setBufferDevicePixelRatio(work.ratio);
    plot_.resize(int(work.width), int(work.height));
    plot_.axisRect()->setAutoMargins(QCP::msNone);
    plot_.axisRect()->setMargins({});
    plot_.xAxis->setRange(0, work.width);
    plot_.yAxis->setRange(0, work.height);
    for (QCPAxis* axis : {plot_.xAxis, plot_.yAxis}) {
      axis->setVisible(false);
      axis->grid()->setVisible(false);
    }
    for (int row = 0; row < work.rows; ++row) {
      QCPGraph* graph = plot_.addGraph();
      graph->setAdaptiveSampling(true);
      graph->setAntialiased(true);
      graph->setPen(QPen(Qt::black, 1));
      QVector<QCPGraphData> points(work.samplesPerRow);
      for (std::int64_t i = 0; i < work.samplesPerRow; ++i)
        points[i] = QCPGraphData(work.x(i), work.height - work.yDown(row, i));
      graph->data()->set(points, true);
    }
  }
  void draw() override { plot_.replot(QCustomPlot::rpImmediateRefresh); }
  bool save(const std::string& path) override {
    return plot_.savePng(QString::fromStdString(path), 0, 0, work_->ratio);
  }
  bool writePdf(const std::string& path) override {
    return plot_.savePdf(QString::fromStdString(path), int(work_->width), int(work_->height));
  }

private:
  const RivalWork* work_ = nullptr;
  QCustomPlot plot_;
};

} // namespace

int main(int argc, char** argv) {
  if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  QApplication app(argc, argv);
  QCustomPlotRival rival;
  return serve(rival, argc, argv);
}
