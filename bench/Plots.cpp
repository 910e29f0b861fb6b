#include "bench/Plots.h"

#include "XOV_Graphics/views/xy/XOVHistogramView.h"
#include "XOV_Graphics/views/xy/xyPlotView.h"
#include "bench/Contest.h"

#include <QPainter>

#include <algorithm>
#include <cmath>
#include <limits>
#include <memory>
#include <random>
#include <vector>

namespace xov::bench {

namespace {

constexpr QSize kSize(900, 600);
constexpr int kBins = 1000;
constexpr std::size_t kPoints = 1000000;
constexpr std::size_t kValues = 10000000;

QImage whitePaper() {
  QImage paper(kSize, QImage::Format_ARGB32_Premultiplied);
  paper.fill(Qt::white);
  return paper;
}

// A histogram whose counts have no order, so that every bar stands apart from its neighbours.
std::unique_ptr<XOVHistogramView> noisyHistogram() {
  auto view = std::make_unique<XOVHistogramView>(QRectF(QPointF(0, 0), QSizeF(kSize)));
  std::mt19937 random(2009);
  std::vector<float> values;
  view->setNBinsMinMax(kBins, 0, float(kBins + 1));
  for (int bin = 0; bin < kBins; ++bin)
    values.insert(values.end(), random() % 200, float(bin) + 0.5F);
  view->setValuesNPts(values.data(), std::int32_t(values.size()));
  view->binValues();
  return view;
}

void paintBars(const XOVHistogramView& view) {
  QImage paper = whitePaper();
  QPainter painter(&paper);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(QPen(Qt::black, 0.25));
  painter.setBrush(Qt::lightGray);
  const double width = kSize.width() / double(kBins);
  for (std::size_t bin = 0; bin < view.counts()->size(); ++bin) {
    const double height = kSize.height() * (*view.counts())[bin] / double(view.maxCount());
    painter.drawRect(QRectF(double(bin) * width, kSize.height() - height, width, height));
  }
}

// A line of noise over x values.
struct XYData {
  std::vector<float> x, y;

  XYData() {
    std::mt19937 random(2009);
    for (std::size_t i = 0; i < kPoints; ++i) {
      x.push_back(float(i));
      y.push_back(float(random() % 1000));
    }
  }
};

XYData stepsBackOnce() {
  XYData data;
  for (std::size_t i = kPoints / 2; i < kPoints; ++i)
    data.x[i] -= kPoints / 4;
  return data;
}

XYData fromRightToLeft() {
  XYData data;
  for (float& x : data.x)
    x = float(kPoints) - x;
  return data;
}

XYData oneTimeMissing() {
  XYData data;
  data.x[kPoints / 2] = std::numeric_limits<float>::quiet_NaN();
  return data;
}

XYData tangled() {
  XYData data;
  std::mt19937 random(7);
  for (float& x : data.x)
    x = float(random() % kPoints);
  return data;
}

// Steps of about half a pixel in any direction.
XYData walk() {
  XYData data;
  std::mt19937 random(7);
  const auto step = [&random] { return float(random() % 2001) / 1000 - 1; };
  float x = float(kPoints) / 2, y = 500;
  for (std::size_t i = 0; i < kPoints; ++i) {
    data.x[i] = x = std::clamp(x + step() * kPoints / kSize.width(), 0.F, float(kPoints));
    data.y[i] = y = std::clamp(y + step() * 1000 / kSize.height(), 0.F, 1000.F);
  }
  return data;
}

// Two oscillations, one along each axis.
XYData figure() {
  XYData data;
  for (std::size_t i = 0; i < kPoints; ++i) {
    const double turn = 6.2831853 * double(i) / kPoints;
    data.x[i] = float(kPoints * (0.5 + 0.48 * std::sin(37 * turn)));
    data.y[i] = float(500 + 480 * std::sin(29 * turn + 0.3));
  }
  return data;
}

// Rings of a thousand points with ragged edges.
XYData islands() {
  XYData data;
  std::mt19937 random(9);
  for (std::size_t i = 0; i < kPoints; ++i) {
    const std::size_t ring = i / 1000;
    const double turn = 6.2831853 * double(i % 1000) / 999;
    const double radius = 0.02 * (1 + 0.3 * std::sin(5 * turn + double(ring)) + double(random() % 100) / 5000);
    data.x[i] = float(kPoints * (0.03 + 0.94 * double(ring % 32) / 31 + radius * std::cos(turn)));
    data.y[i] = float(1000 * (0.03 + 0.94 * double(ring / 32) / 31 + radius * std::sin(turn)));
  }
  return data;
}

std::unique_ptr<xyPlotView> plotOf(const XYData& data) {
  auto view = std::make_unique<xyPlotView>(QRectF(QPointF(0, 0), QSizeF(kSize)));
  view->setDataPointersXY(data.x, data.y);
  view->setNpts(kPoints);
  view->computePlotLimits();
  return view;
}

void paintHairline(const XYData& data) {
  QImage paper = whitePaper();
  QPainter painter(&paper);
  painter.setRenderHint(QPainter::Antialiasing);
  QPen pen(Qt::black, 1);
  pen.setCosmetic(true);
  painter.setPen(pen);
  QPolygonF line;
  for (std::size_t i = 0; i < kPoints; ++i) {
    if (std::isfinite(data.x[i]))
      line << QPointF(double(data.x[i]) * kSize.width() / kPoints, double(data.y[i]) * kSize.height() / 1000);
  }
  painter.drawPolyline(line);
}

volatile float scanResult = 0;

void scanForExtremes(const std::vector<float>& values) {
  float low = values.front(), high = values.front();
  for (const float value : values) {
    low = value < low ? value : low;
    high = value > high ? value : high;
  }
  scanResult = low + high;
}

} // namespace

QString plotTable(int rounds) {
  const auto histogram = noisyHistogram();
  QImage drawn;
  const auto draw = [&drawn](XOVView& view) { drawn = view.pictureOfRect(view.bounds()); };

  XOVHistogramView binned;
  std::vector<float> values(kValues);
  std::mt19937 random(3);
  for (float& value : values)
    value = float(random() % 100000);
  binned.setValuesNPts(values.data(), kValues);
  binned.setNBinsMinMax(100, 0, 100000);

  std::vector<Contest> contests = {
      {"histogram of 1,000 noisy bins", [&] { draw(*histogram); }},
      {"its bars by QPainter", [&] { paintBars(*histogram); }},
      {"binning of 10 million values", [&] { binned.binValues(); }},
      {"a scan of them", [&] { scanForExtremes(values); }},
  };
  const std::pair<const char*, XYData> lines[] = {{"line of a million points", XYData()},
                                                  {"the same, x steps back once", stepsBackOnce()},
                                                  {"the same, from right to left", fromRightToLeft()},
                                                  {"the same, one x missing", oneTimeMissing()},
                                                  {"the same, x at random", tangled()},
                                                  {"walk of a million steps", walk()},
                                                  {"figure of two oscillations", figure()},
                                                  {"coasts of a thousand islands", islands()}};
  std::vector<std::unique_ptr<xyPlotView>> views;
  for (const auto& [name, data] : lines) {
    xyPlotView& view = *views.emplace_back(plotOf(data));
    contests.push_back({name, [&draw, &view] { draw(view); }});
    contests.push_back({"", [&line = data] { paintHairline(line); }});
  }
  runInTurn(contests, rounds);
  return QStringLiteral("| 900 × 600 points | CPU ms | QPainter, scan: CPU ms | ratio | ms | its ms |\n"
                        "|---|---:|---:|---:|---:|---:|\n") +
         pairedRows(contests);
}

} // namespace xov::bench
