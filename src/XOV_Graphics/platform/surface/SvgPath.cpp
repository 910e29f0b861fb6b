#include "XOV_Graphics/platform/surface/SvgPath.h"

#include <algorithm>
#include <cmath>

namespace xov {

namespace {

// Beyond this renderers have no pixels; so many steps fit 64 bits.
constexpr double kFar = 1e9;

qint64 toSteps(double value, qint64 perUnit) {
  return qRound64(std::clamp(value, -kFar, kFar) * double(perUnit)); // NaN has been left out by the path
}

qint64 power10(int exponent) {
  qint64 power = 1;
  while (exponent-- > 0)
    power *= 10;
  return power;
}

QByteArray stepsText(qint64 steps, int decimals) {
  const qint64 perUnit = power10(decimals);
  const qint64 size = std::abs(steps);
  QByteArray text = QByteArray::number(size / perUnit);
  if (size % perUnit != 0) {
    text += '.' + QByteArray::number(size % perUnit).rightJustified(decimals, '0');
    while (text.endsWith('0'))
      text.chop(1);
  }
  return steps < 0 ? '-' + text : text;
}

/// A path's points as steps from the one before, which makes the numbers short, and adds no error to them.
class PathWriter {
public:
  explicit PathWriter(int decimals) : decimals_(decimals), perUnit_(power10(decimals)) {}

  void moveTo(QPointF point) {
    at_ = {0, 0};
    add('M', point);
    start_ = at_;
  }

  void lineTo(QPointF point) { add('l', point); }

  void curveTo(QPointF control1, QPointF control2, QPointF point) {
    const Step from = at_;
    add('c', control1);
    at_ = from;
    add(' ', control2);
    at_ = from;
    add(' ', point);
  }

  void close() {
    data_ += 'z';
    at_ = start_;
  }

  const QByteArray& data() const { return data_; }

private:
  struct Step {
    qint64 x = 0;
    qint64 y = 0;
  };

  void add(char op, QPointF point) {
    const Step to{toSteps(point.x(), perUnit_), toSteps(point.y(), perUnit_)};
    data_ += op + stepsText(to.x - at_.x, decimals_) + ' ' + stepsText(to.y - at_.y, decimals_);
    at_ = to;
  }

  int decimals_;
  qint64 perUnit_;
  QByteArray data_;
  Step at_;
  Step start_;
};

} // namespace

QByteArray svgNumber(double value, int decimals) { return stepsText(toSteps(value, power10(decimals)), decimals); }

QByteArray svgPathData(const QPainterPath& path, const QTransform& transform, int decimals) {
  const QPainterPath shape = transform.map(path);
  PathWriter writer(decimals);
  const int count = shape.elementCount();
  QPointF start;
  int first = 0;
  for (int i = 0; i < count; ++i) {
    const QPainterPath::Element& element = shape.elementAt(i);
    const bool isLast = i + 1 == count || shape.elementAt(i + 1).isMoveTo();
    switch (element.type) {
    case QPainterPath::MoveToElement:
      start = element;
      first = i;
      writer.moveTo(element);
      break;
    case QPainterPath::LineToElement:
      if (isLast && QPointF(element) == start && i - first > 2) {
        writer.close();
      } else {
        writer.lineTo(element);
      }
      break;
    case QPainterPath::CurveToElement:
      writer.curveTo(element, shape.elementAt(i + 1), shape.elementAt(i + 2));
      i += 2;
      if ((i + 1 == count || shape.elementAt(i + 1).isMoveTo()) && QPointF(shape.elementAt(i)) == start)
        writer.close();
      break;
    case QPainterPath::CurveToDataElement:
      break;
    }
  }
  return writer.data();
}

QByteArray svgMatrix(const QTransform& t) {
  constexpr int kDecimals = 6;
  QByteArray text = "matrix(";
  for (const double entry : {t.m11(), t.m12(), t.m21(), t.m22(), t.dx(), t.dy()})
    text += svgNumber(entry, kDecimals) + ' ';
  text.back() = ')';
  return text;
}

} // namespace xov
