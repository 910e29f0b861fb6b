#include "XOV_Graphics/platform/surface/PaperTraces.h"

#include "XOV_Graphics/base/TaskPool.h"
#include "XOV_Graphics/platform/trace/TraceReduction.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstring>
#include <utility>

namespace xov {

namespace {

// Lines are written in whole steps of the grid that they are reduced to.
constexpr double kStepsPerPoint = 1 / kPaperTraceGrid;
// Readers may hold coordinates in single precision or 32 bits.
constexpr double kLargestCoordinate = 1e7;
constexpr double kLargestEntry = 1e9; // of a transform
constexpr int kOpaque = 255;
constexpr qsizetype kLongestNumber = 12; // characters of a coordinate and the space behind it
constexpr std::size_t kSegmentsOfStroke = 256;
constexpr std::size_t kStrokesTogether = 8; // written by one thread

// Markers are triangles far to the left of every page, one below the other. No drawing has these corners by chance.
constexpr int kMarkerX = -314159265;

std::array<QPoint, 3> markerCorners(qsizetype index) {
  const int y = -int(index) - 1;
  return {QPoint(kMarkerX, y), QPoint(kMarkerX, y - 1), QPoint(kMarkerX + 1, y - 1)};
}

QPainterPath markerShape(qsizetype index) {
  const auto [a, b, c] = markerCorners(index);
  QPainterPath shape(a);
  shape.lineTo(b);
  shape.lineTo(c);
  shape.closeSubpath();
  shape.setFillRule(Qt::WindingFill); // which is what markerText() says
  return shape;
}

QByteArray point(QPoint at, const char* op) {
  return QByteArray::number(at.x()) + ' ' + QByteArray::number(at.y()) + ' ' + op + '\n';
}

/// A marker as the painter writes it.
QByteArray markerText(qsizetype index) {
  const auto [a, b, c] = markerCorners(index);
  return point(a, "m") + point(b, "l") + point(c, "l") + point(a, "l") + "h\nf\n";
}

/// Operands take no exponents.
QByteArray decimal(double value) {
  constexpr int kDecimals = 12;
  QByteArray text = QByteArray::number(value, 'f', kDecimals);
  while (text.endsWith('0'))
    text.chop(1);
  if (text.endsWith('.')) text.chop(1);
  return text + ' ';
}

/// The state in which a unit of coordinates is a step, and some colour holds for an operator that sets it.
QByteArray traceState(const QTransform& toPage, const QColor& color, const char* setColor) {
  const double step = kPaperTraceGrid;
  return "q\n" + decimal(toPage.m11() * step) + decimal(toPage.m12() * step) + decimal(toPage.m21() * step) +
         decimal(toPage.m22() * step) + decimal(toPage.dx()) + decimal(toPage.dy()) + "cm\n" + decimal(color.redF()) +
         decimal(color.greenF()) + decimal(color.blueF()) + setColor + '\n';
}

// A point of the grid that lines are written on.
struct Step {
  qint64 x = 0;
  qint64 y = 0;
};

Step stepOf(QPointF point) { return {qRound64(point.x() * kStepsPerPoint), qRound64(point.y() * kStepsPerPoint)}; }

void addPoints(QByteArray& operators, std::span<const QPointF> points, Step origin) {
  const qsizetype begin = operators.size();
  operators.resize(begin + qsizetype(points.size()) * (2 * kLongestNumber + 2));
  char* out = operators.data() + begin;
  const auto write = [&out](qint64 number) {
    out = std::to_chars(out, out + kLongestNumber, number).ptr;
    *out++ = ' ';
  };
  char op = 'm';
  for (const QPointF& point : points) {
    const Step at = stepOf(point);
    write(at.x - origin.x);
    write(at.y - origin.y);
    *out++ = op;
    *out++ = '\n';
    op = 'l';
  }
  operators.truncate(out - operators.constData());
}

// About its own start and height, which makes the numbers short.
void addStroke(QByteArray& operators, std::span<const QPointF> points) {
  const auto [low, high] = std::minmax_element(points.begin(), points.end(),
                                               [](const QPointF& a, const QPointF& b) { return a.y() < b.y(); });
  const Step origin = stepOf({points.front().x(), (low->y() + high->y()) / 2});
  operators += "q\n1 0 0 1 " + QByteArray::number(origin.x) + ' ' + QByteArray::number(origin.y) + " cm\n";
  addPoints(operators, points, origin);
  operators += "S\nQ\n";
}

/// Written on several threads.
void addStrokes(QByteArray& operators, const std::vector<QPolygonF>& lines) {
  std::vector<std::span<const QPointF>> strokes;
  for (const QPolygonF& line : lines)
    forEachStroke(line, [&strokes](std::span<const QPointF> stroke) { strokes.push_back(stroke); });
  std::vector<QByteArray> parts((strokes.size() + kStrokesTogether - 1) / kStrokesTogether);
  runParts(std::int64_t(strokes.size()), kStrokesTogether, [&](std::int64_t from, std::int64_t to) {
    for (std::int64_t k = from; k < to; ++k)
      addStroke(parts[std::size_t(from) / kStrokesTogether], strokes[std::size_t(k)]);
  });
  for (const QByteArray& part : parts)
    operators += part;
}

/// The operators of each trace, found on several threads.
template <class Write>
std::vector<QByteArray> piecesOf(const std::vector<Trace>& traces, const Write& write) {
  std::vector<QByteArray> pieces(traces.size());
  runTasks(int(traces.size()), TaskStart::FirstAlone,
           [&](int k) { write(traces[std::size_t(k)], pieces[std::size_t(k)]); });
  return pieces;
}

} // namespace

void forEachStroke(const QPolygonF& line, const std::function<void(std::span<const QPointF>)>& draw) {
  for (std::span<const QPointF> rest(line); rest.size() > 1;) {
    const std::span<const QPointF> stroke = rest.first(std::min(kSegmentsOfStroke + 2, rest.size()));
    draw(stroke);
    if (stroke.size() == rest.size()) break;
    rest = rest.subspan(kSegmentsOfStroke);
  }
}

bool PaperTraces::canHold(const QRectF& visible, const QTransform& toPage) {
  const auto within = [](double value, double largest) { return std::abs(value) <= largest; }; // false for NaN
  const double largest = kLargestCoordinate / kStepsPerPoint;
  return within(visible.left(), largest) && within(visible.right(), largest) && within(visible.top(), largest) &&
         within(visible.bottom(), largest) && within(toPage.m11(), kLargestEntry) &&
         within(toPage.m12(), kLargestEntry) && within(toPage.m21(), kLargestEntry) &&
         within(toPage.m22(), kLargestEntry) && within(toPage.dx(), kLargestEntry) &&
         within(toPage.dy(), kLargestEntry) && toPage.isAffine();
}

// The ink of translucent traces must not double where it overlaps, so they stay one path.
QPainterPath PaperTraces::stroke(const std::vector<Trace>& traces, const QRectF& visible, const QTransform& toPage,
                                 double lineWidth, const QColor& color) {
  const bool isOpaque = color.alpha() == kOpaque;
  const qsizetype begin = operators_.size();
  operators_ += traceState(toPage, color, "RG") + decimal(lineWidth * kStepsPerPoint) + "w 0 J 1 j [] 0 d\n";
  const bool shows = append(piecesOf(traces, [&](const Trace& trace, QByteArray& piece) {
    const std::vector<QPolygonF> lines = reduceTrace(trace, kPaperTraceColumn, visible, 0);
    if (isOpaque) return addStrokes(piece, lines);
    for (const QPolygonF& line : lines)
      addPoints(piece, line, {});
  }));
  return finish(begin, shows, isOpaque ? "Q\n" : "S\nQ\n");
}

QPainterPath PaperTraces::fill(const std::vector<Trace>& traces, const QRectF& visible, const QTransform& toPage,
                               bool evenOdd, const QColor& color) {
  const qsizetype begin = operators_.size();
  operators_ += traceState(toPage, color, "rg");
  const bool shows = append(piecesOf(traces, [&](const Trace& trace, QByteArray& piece) {
    for (const QPolygonF& area : traceAreas(trace, kPaperTraceColumn, visible))
      addPoints(piece, area, {});
  }));
  return finish(begin, shows, evenOdd ? "f*\nQ\n" : "f\nQ\n");
}

/// Adds the operators of traces; false where there are none.
bool PaperTraces::append(std::vector<QByteArray> pieces) {
  const qsizetype begin = operators_.size();
  for (QByteArray& piece : pieces)
    operators_ += std::exchange(piece, {}); // memory that the next ones may take
  return operators_.size() > begin;
}

/// Ends what began with a trace's state, or takes it back where nothing shows.
QPainterPath PaperTraces::finish(qsizetype begin, bool shows, const char* operators) {
  if (!shows) {
    operators_.truncate(begin);
    return {};
  }
  operators_ += operators;
  ends_.push_back(operators_.size());
  return markerShape(qsizetype(ends_.size()) - 1);
}

std::optional<QByteArray> PaperTraces::insertInto(const QByteArray& content) {
  // The stretches of the content before, between and behind the markers.
  std::vector<QByteArrayView> rest;
  const QByteArray start = QByteArray::number(kMarkerX) + ' ';
  const QByteArrayView whole(content);
  qsizetype done = 0;
  for (qsizetype at = whole.indexOf(start); at >= 0; at = whole.indexOf(start, done)) {
    const QByteArray marker = markerText(qsizetype(rest.size()));
    if (rest.size() == ends_.size() || !whole.sliced(at).startsWith(marker)) return std::nullopt;
    rest.push_back(whole.sliced(done, at - done));
    done = at + marker.size();
  }
  if (rest.size() != ends_.size()) return std::nullopt;
  rest.push_back(whole.sliced(done));
  // In place, from the end: the operators may fill a good part of the memory.
  QByteArray result = std::exchange(operators_, {});
  qsizetype from = result.size();
  qsizetype to = from;
  for (const QByteArrayView& stretch : rest)
    to += stretch.size();
  result.resize(to);
  char* const bytes = result.data();
  for (std::size_t k = rest.size(); k-- > 0;) {
    to -= rest[k].size();
    std::copy(rest[k].begin(), rest[k].end(), bytes + to);
    if (k == 0) break;
    const qsizetype begin = k > 1 ? ends_[k - 2] : 0;
    to -= from - begin;
    std::memmove(bytes + to, bytes + begin, std::size_t(from - begin));
    from = begin;
  }
  ends_.clear();
  return result;
}

} // namespace xov
