#include "XOV_Graphics/map/BoundaryText.h"

#include "XOV_Graphics/base/Log.h"
#include "XOV_Graphics/base/Numbers.h"

#include <algorithm>
#include <new>
#include <optional>

namespace xov {

namespace {

constexpr qsizetype kLongestLine = 127;
constexpr float kFullCircleDeg = 360;

/// Takes white space and a number off the front of a line; false when there is none.
bool takeFloat(QByteArrayView& line, float& value) {
  skipSpace(line);
  const auto number = takeNumber<float>(line);
  value = number.value_or(value);
  return number.has_value();
}

/// Walks through the lines of a text, or pieces of 127 bytes of longer ones, each with its line end.
class BoundaryLines {
public:
  explicit BoundaryLines(const QByteArray& text) : text_(text), rest_(text_) {
    if (text_.contains('\r')) rest_ = text_.replace("\r\n", "\n");
  }

  std::optional<QByteArrayView> next() {
    if (rest_.isEmpty()) return {};
    const QByteArrayView most = rest_.first(std::min(rest_.size(), kLongestLine));
    const qsizetype end = most.indexOf('\n');
    const QByteArrayView line = end < 0 ? most : most.first(end + 1);
    rest_ = rest_.sliced(line.size());
    return line;
  }

private:
  QByteArray text_;
  QByteArrayView rest_;
};

} // namespace

SegmentCollector::SegmentCollector(std::size_t mostPoints, Bounds bounds, XOVPolygonArray& boundaries)
    : mostPoints_(std::min(mostPoints, xp_.size())),
      bounds_(bounds),
      boundaries_(boundaries) {
  restart();
}

void SegmentCollector::restart() {
  count_ = 0;
  title_ = XOVPolygon().title();
}

void SegmentCollector::setTitle(QByteArrayView line) {
  const qsizetype end = line.indexOf('\0');
  title_ = QString::fromLatin1(end < 0 ? line : line.first(end));
}

void SegmentCollector::addPoint(QByteArrayView line) {
  if (count_ == mostPoints_) {
    qCWarning(log, "plate boundary \"%s\": more than %zu points; closed there, the rest becomes a line of its own",
              qUtf8Printable(title_.trimmed()), count_);
    addPolygon();
    // The last point is in both lines, so that no gap is drawn between them.
    xp_[0] = xp_[count_ - 1];
    yp_[0] = yp_[count_ - 1];
    count_ = 1;
  }
  float& longitude = xp_[count_];
  if (takeFloat(line, longitude)) takeFloat(line, yp_[count_]);
  if (longitude < 0) longitude += kFullCircleDeg;
  ++count_;
}

void SegmentCollector::close() {
  addPolygon();
  restart();
}

void SegmentCollector::addPolygon() {
  auto polygon = std::make_shared<XOVPolygon>();
  polygon->setTitle(title_);
  const auto count = std::ptrdiff_t(count_);
  try {
    std::vector<float> xp(xp_.begin(), xp_.begin() + count);
    std::vector<float> yp(yp_.begin(), yp_.begin() + count);
    polygon->setXp(std::move(xp));
    polygon->setYp(std::move(yp));
  } catch (const std::bad_alloc&) {
    qCWarning(log, "Couldn't allocate floating point arrays for polygon\n");
  }
  polygon->setNpts(int(count_));
  if (bounds_ == Bounds::Computed) polygon->computeBoundingRect();
  boundaries_.push_back(std::move(polygon));
}

void readBirdBoundaries(const QByteArray& text, SegmentCollector& segments) {
  BoundaryLines lines(text);
  segments.restart();
  bool expectsTitle = true;
  while (const auto line = lines.next()) {
    if (line->startsWith("***")) {
      segments.close();
      expectsTitle = true;
    } else if (expectsTitle) {
      segments.setTitle(*line);
      expectsTitle = false;
    } else {
      segments.addPoint(*line);
    }
  }
}

void readTypedBoundaries(const QByteArray& text, SegmentCollector& segments) {
  BoundaryLines lines(text);
  segments.restart();
  // The first line is a title whatever it is, and the second one still counts as the header of a segment.
  if (const auto first = lines.next()) segments.setTitle(*first);
  bool hasHeader = false;
  while (const auto line = lines.next()) {
    if (line->startsWith('>')) {
      segments.close();
      hasHeader = false;
    } else if (!hasHeader) {
      segments.setTitle(*line);
      hasHeader = true;
    } else {
      segments.addPoint(*line);
    }
  }
}

} // namespace xov
