#include "SeisDrawing.h"

#include "XOV_Graphics/graphics/AGraphics.h"

#include <gtest/gtest.h>

#include <cmath>

namespace xov::testing {

Records recordsOf(std::vector<std::shared_ptr<FakeRecord>> records) {
  return std::make_shared<SeismogramArray>(records.begin(), records.end());
}

std::shared_ptr<FakeRecord> fakeRecord(std::vector<float> samples, float interval, float begin) {
  return std::make_shared<FakeRecord>(std::move(samples), interval, begin);
}

std::vector<RecordedItem> traceStrokes(const RecordingContext& recording) {
  std::vector<RecordedItem> found;
  for (const RecordedItem& item : recording.strokes()) {
    if (!item.path.traces().empty()) found.push_back(item);
  }
  return found;
}

std::vector<RecordedItem> lineStrokes(const RecordingContext& recording) {
  std::vector<RecordedItem> found;
  for (const RecordedItem& item : recording.strokes()) {
    if (item.path.traces().empty()) found.push_back(item);
  }
  return found;
}

std::vector<RecordedItem> singleLines(const RecordingContext& recording, const QColor& color) {
  std::vector<RecordedItem> found;
  for (const RecordedItem& item : lineStrokes(recording)) {
    if (item.color == color && item.segments().size() == 1) found.push_back(item);
  }
  return found;
}

QStringList steps(const RecordingContext& recording) {
  QStringList steps;
  for (const RecordedItem& item : recording.items()) {
    const QString color = item.color.name();
    if (item.kind == RecordedItem::Kind::Stroke) {
      steps << (item.path.traces().empty() ? QStringLiteral("line ") : QStringLiteral("trace ")) + color;
    } else if (item.kind == RecordedItem::Kind::Fill) {
      steps << QStringLiteral("fill ") + color;
    } else if (item.kind == RecordedItem::Kind::Text) {
      steps << QStringLiteral("text ") + color + QLatin1Char(' ') + item.text;
    } else {
      steps << item.toText();
    }
  }
  return steps;
}

QString axesText(const QRectF& frame, const TextAttributes& attributes, const QColor& color,
                 const std::function<void()>& draw) {
  RecordingContext recording;
  const GraphicsContext::Pass pass(recording);
  const auto path = std::make_shared<Path>();
  const auto shared = std::make_shared<TextAttributes>(attributes);
  AInitGraphLib();
  ASetPath(path);
  ASetTickLabelAttributes(shared);
  ASetAxisRect(float(frame.x()), float(frame.x() + frame.width()), float(frame.y() + frame.height()),
               float(frame.y()));
  ASetLineWidth(0.75f);
  draw();
  recording.setColor(color);
  recording.strokePath(*path);
  return recording.toText();
}

QString timeAxisText(double left, double right, double bottom, const TextAttributes& attributes, const QColor& color,
                     float xmin, float xmax) {
  return axesText({left, bottom, right - left, 0}, attributes, color, [=] {
    char label[64] = "Time (s)";
    ADrawAxis(label, 1, 3, 2, xmin, xmax, 0);
  });
}

QPointF placed(const QString& text, const TextAttributes& attributes, QPointF at, int hjust, int vjust) {
  const QSizeF size = attributes.size(text);
  if (hjust == 2) at.rx() -= size.width() / 2;
  if (hjust == 3) at.rx() -= size.width();
  if (vjust == 2) at.ry() -= size.height() / 2;
  if (vjust == 3) at.ry() -= size.height();
  return at;
}

void expectNear(QPointF actual, QPointF expected, double tolerance) {
  EXPECT_NEAR(actual.x(), expected.x(), tolerance);
  EXPECT_NEAR(actual.y(), expected.y(), tolerance);
}

void expectNear(const QLineF& actual, const QLineF& expected, double tolerance) {
  expectNear(actual.p1(), expected.p1(), tolerance);
  expectNear(actual.p2(), expected.p2(), tolerance);
}

void expectPoints(const Trace& trace, const std::vector<QPointF>& expected, double tolerance) {
  const std::vector<QPointF> points = trace.points();
  ASSERT_EQ(points.size(), expected.size());
  for (std::size_t i = 0; i < points.size(); ++i) {
    SCOPED_TRACE(::testing::Message() << "point " << i);
    const bool breaks = !std::isfinite(expected[i].x()) || !std::isfinite(expected[i].y());
    ASSERT_EQ(!std::isfinite(points[i].x()), breaks);
    if (!breaks) expectNear(points[i], expected[i], tolerance);
  }
}

void expectText(const RecordingContext& recording, const QString& text, QPointF at, double size,
                const QColor& color) {
  ASSERT_EQ(recording.strings().count(text), 1) << text.toStdString() << " in " << recording.toText().toStdString();
  const RecordedItem item = *recording.textReading(text);
  expectNear(item.position, at);
  EXPECT_EQ(item.attributes.family(), QStringLiteral("Helvetica"));
  EXPECT_EQ(item.attributes.pointSize(), size);
  EXPECT_EQ(item.color, color);
}

float uniform(std::mt19937& random, float low, float high) {
  return std::uniform_real_distribution<float>(low, high)(random);
}

int uniformInt(std::mt19937& random, int low, int high) {
  return std::uniform_int_distribution<int>(low, high)(random);
}

std::vector<float> noise(std::mt19937& random, int count, float amplitude) {
  std::vector<float> values(static_cast<std::size_t>(count));
  for (float& value : values)
    value = uniform(random, -amplitude, amplitude);
  return values;
}

} // namespace xov::testing
