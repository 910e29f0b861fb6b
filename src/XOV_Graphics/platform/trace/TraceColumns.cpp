#include "XOV_Graphics/platform/trace/TraceColumns.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace xov {

namespace {

constexpr double kAlone = 0.75;                 // of a column's range that a spike is away from its neighbours
constexpr std::int64_t kLooks = 8;              // at a curve, to see whether it only rises or falls
constexpr double kLeap = 0.5;                   // of the way, between two looks
constexpr double kBend = 0.02;                  // points that a curve may be away from its chord
constexpr std::int64_t kFew = 4;                // samples of a column that are all kept
constexpr std::int64_t kNear = 8;               // samples that are looked at one by one before the search jumps
constexpr std::int64_t kLongestBlock = 1 << 20; // samples scanned together; their indices fit 32 bits
constexpr int kBatch = 256;                     // columns scanned together
constexpr double kTie = 1e-6;                   // samples; closer to a border than this, the sample itself is asked
constexpr std::int64_t kManyLines = 4;          // between gaps of a column, before they are united
constexpr double kTouching = 0.02;              // points between lines that are drawn as one
constexpr double kDash = 0.05;                  // points that an upright segment rises at least
constexpr int kMostParts = 1 << 12;             // of a trace
constexpr double kStraight = 0.125;             // columns; how far times may lie from a straight piece

} // namespace

// A gap is a point without an x.
void PointList::add(double x, double y) { points_.emplace_back(x, y); }

void PointList::endLine() {
  if (points_.empty() || !std::isnan(points_.back().x()))
    points_.emplace_back(std::numeric_limits<double>::quiet_NaN(), 0);
}

void PointList::passOn(TraceClip& clip) const {
  for (const QPointF& point : points_) {
    if (std::isnan(point.x()))
      clip.endLine();
    else
      clip.add(point.x(), point.y());
  }
}

TraceColumns::TraceColumns(const Trace& trace, const TraceProjection& projection, const PageColumns& page,
                           Wanted wanted)
    : trace_(trace),
      projection_(projection),
      page_(page),
      wanted_(wanted),
      numbersAreThere_(!projection.pieces().empty() && std::isfinite(trace.clampLow.value_or(0)) &&
                       std::isfinite(trace.clampHigh.value_or(0))) {}

PointList TraceColumns::pointsOf(std::int64_t begin, std::int64_t end) {
  if (projection_.grows())
    addGrowing(begin, end);
  else
    addAny();
  return std::move(points_);
}

void TraceColumns::addPoint(std::int64_t i) {
  const double y = std::clamp(trace_.yOf(*trace_.valueAt(i)), -kFarAway, kFarAway);
  points_.add(projection_.column(i), y);
}

/// The first sample at or right of a border, begin < i <= end, looked for around a guess first.
std::int64_t TraceColumns::nextBorder(std::int64_t begin, std::int64_t guess, std::int64_t end, double border) const {
  std::int64_t i = std::clamp(guess, begin + 1, end);
  std::int64_t looks = 0;
  for (; i > begin + 1 && projection_.column(i - 1) >= border; --i) {
    if (++looks > kNear) return std::clamp(projection_.firstAtOrAfter(border), begin + 1, end);
  }
  for (; i < end && projection_.column(i) < border; ++i) {
    if (++looks > kNear) return std::clamp(projection_.firstAtOrAfter(border), begin + 1, end);
  }
  return i;
}

SampleRange TraceColumns::shown() const {
  if (!projection_.grows()) return {projection_.first(), projection_.last()};
  // One sample more on either side: the segments that lead into the box and out of it.
  return {std::max(projection_.firstAtOrAfter(page_.box.left()) - 1, projection_.first()),
          std::min(projection_.firstAtOrAfter(page_.box.right()) + 1, projection_.last())};
}

std::vector<std::int64_t> TraceColumns::parts(int columns) const {
  const SampleRange range = shown();
  std::vector<std::int64_t> borders{range.begin};
  if (range.size() > 0 && projection_.grows()) {
    const double left = std::max(projection_.column(range.begin), page_.box.left());
    const double right = std::min(projection_.column(range.end - 1), page_.box.right());
    const double width = columns * page_.columnWidth;
    const double count = std::min((right - left) / width, double(kMostParts));
    const double first = std::ceil((left - page_.origin) / width);
    for (int part = 0; part < count; ++part) {
      // As the border of a column is found, to the last bit.
      const double column = (first + part) * columns;
      const std::int64_t border = projection_.firstAtOrAfter(page_.origin + column * page_.columnWidth);
      if (border > borders.back() && border < range.end) borders.push_back(border);
    }
  }
  borders.push_back(std::max(range.end, range.begin));
  return borders;
}

void TraceColumns::addGrowing(std::int64_t begin, std::int64_t last) {
  const bool isPolygon = wanted_ == Wanted::Enclosed;
  if (isPolygon && begin == shown().begin) addStartOfPiece(begin);
  std::int64_t size = 1;
  while (begin < last) {
    if (const std::int64_t next = addDenseColumns(begin, last); next > begin) {
      begin = next;
      continue;
    }
    const double column = columnOf(begin);
    const std::int64_t end = nextBorder(begin, begin + size, last, page_.origin + (column + 1) * page_.columnWidth);
    size = end - begin;
    addColumn(begin, end);
    begin = end;
  }
  if (isPolygon && last >= shown().end) addEndOfPiece(last);
}

/// Cuts from `begin` on at each column's right border, the first of which is `firstBorder`, as long as the samples
/// lie on one straight piece. Returns how many columns there are.
int TraceColumns::cutColumns(std::int64_t begin, std::int64_t last, double firstBorder, std::int32_t* cuts) const {
  const TimePiece& piece = projection_.pieces()[projection_.pieceAt(begin)];
  const double spacing = piece.step * projection_.columnsPerTime();
  const double samples = page_.columnWidth / spacing; // a column
  if (!(samples > double(kFew) && samples < double(kLongestBlock))) return 0;
  const std::int64_t end = std::min({last, piece.first + piece.count, begin + kLongestBlock});
  if (!projection_.isStraight(begin, end - 1, kStraight * page_.columnWidth)) return 0;
  const double start = (firstBorder - projection_.columnOfTime(piece.start)) / spacing - double(begin - piece.first);
  int count = 0;
  cuts[0] = 0;
  for (; count < kBatch; ++count) {
    const double position = start + count * samples;
    double cut = std::ceil(position - kTie);
    const bool mayTie = cut > 0 && cut < position + kTie && cut < double(end - begin);
    if (mayTie &&
        projection_.column(begin + static_cast<std::int64_t>(cut)) < firstBorder + count * page_.columnWidth)
      ++cut;
    if (!(cut > cuts[count] && cut < double(end - begin))) break;
    cuts[count + 1] = static_cast<std::int32_t>(cut);
  }
  return count;
}

/// Columns from `begin` on that hold many samples a constant step apart. Returns where the samples after them begin,
/// which is `begin` where there are no such columns.
std::int64_t TraceColumns::addDenseColumns(std::int64_t begin, std::int64_t last) {
  if (projection_.pieces().empty() || projection_.isOverruled(begin)) return begin;
  std::int32_t cuts[kBatch + 1];
  const int columns = cutColumns(begin, last, page_.origin + (columnOf(begin) + 1) * page_.columnWidth, cuts);
  if (columns == 0) return begin;
  float low[kBatch], high[kBatch];
  const bool unbroken =
      projection_.isFinite(begin) && projection_.indexed().findBlockExtremes(begin, cuts, columns, low, high);
  for (int k = 0; k < columns; ++k) {
    if (unbroken)
      addExtremes(begin + cuts[k], begin + cuts[k + 1], low[k], high[k]);
    else
      addColumn(begin + cuts[k], begin + cuts[k + 1]);
  }
  return begin + cuts[columns];
}

// The piece that reaches into the box from the left begins at its first sample: a straight way from there to the box
// winds about nothing inside. Only a polygon needs it, since its last side leads back there.
void TraceColumns::addStartOfPiece(std::int64_t inside) {
  std::int64_t start = inside;
  while (start > projection_.first() && !breaksOnceHeld(start - 1))
    --start;
  if (start < inside) addPoint(start);
}

// The same on the right.
void TraceColumns::addEndOfPiece(std::int64_t beyond) {
  std::int64_t end = beyond;
  while (end < projection_.last() && !breaksOnceHeld(end))
    ++end;
  if (end > beyond) addPoint(end - 1);
}

/// Times in any order: samples that follow each other in the same column go together.
void TraceColumns::addAny() {
  std::int64_t begin = projection_.first();
  const auto shownColumnOf = [this](std::int64_t i) {
    return std::floor((std::clamp(projection_.column(i), page_.box.left(), page_.box.right()) - page_.origin) /
                      page_.columnWidth);
  };
  while (begin < projection_.last()) {
    std::int64_t end = begin + 1;
    if (std::isfinite(projection_.column(begin))) {
      const bool outside =
          projection_.column(begin) < page_.box.left() || projection_.column(begin) > page_.box.right();
      const double column = shownColumnOf(begin);
      while (!outside && end < projection_.last() && shownColumnOf(end) == column)
        ++end;
    }
    addColumn(begin, end);
    begin = end;
  }
}

void TraceColumns::addColumn(std::int64_t begin, std::int64_t end) {
  if (end - begin <= kFew) return addBroken(begin, end);
  for (; begin < end; begin += kLongestBlock)
    addBlock(begin, std::min(end, begin + kLongestBlock));
}

/// Samples of one column, of which few may break the line.
void TraceColumns::addBlock(std::int64_t begin, std::int64_t end) {
  if (projection_.isOverruled(begin)) {
    addPoint(begin);
    ++begin;
  }
  if (begin == end) return;
  if (!projection_.isFinite(begin)) return addBroken(begin, end); // also where a clamp leaves no number
  const std::int32_t cuts[] = {0, static_cast<std::int32_t>(end - begin)};
  float low = 0, high = 0;
  if (!projection_.indexed().findBlockExtremes(begin, cuts, 1, &low, &high)) return addBroken(begin, end);
  addExtremes(begin, end, low, high);
}

/// Samples of one column, none of which breaks the line.
void TraceColumns::addExtremes(std::int64_t begin, std::int64_t end, float low, float high) {
  if (end - begin <= kFew) {
    for (; begin < end; ++begin)
      addPoint(begin);
    return;
  }
  std::int64_t lowest = projection_.indexed().findExtreme(low, begin, end);
  std::int64_t highest = projection_.indexed().findExtreme(high, begin, end);
  if (lowest > highest) std::swap(lowest, highest);
  addPoint(begin);
  // Between a column's lowest and highest sample a stroke covers the fill, wherever its side runs.
  if (wanted_ != Wanted::Stroke) {
    if (end == projection_.last() || breaksOnceHeld(end)) addPoint(end - 1);
    return;
  }
  std::int64_t done = begin;
  const auto keep = [&](std::int64_t i) {
    if (i <= done) return;
    addCurve(done, i);
    addPoint(i);
    done = i;
  };
  for (const std::int64_t extreme : {lowest, highest}) {
    const bool isSpike = standsAlone(extreme, begin, end, double(high) - double(low));
    if (isSpike) keep(extreme - 1);
    keep(extreme);
    if (isSpike) keep(std::min(extreme + 1, end - 1));
  }
  keep(end - 1);
}

/// True for an extreme of a column that its neighbours are far from: without them a spike would be as wide as the
/// column.
bool TraceColumns::standsAlone(std::int64_t i, std::int64_t begin, std::int64_t end, double range) const {
  if (range * std::abs(trace_.yScale) < page_.columnWidth) return false;
  const HeldSamples held = trace_.held(std::max(i - 1, begin), std::min(i + 2, end));
  const auto value = [&](std::int64_t k) { return double(trace_.samples[k]); };
  const auto isFar = [&](std::int64_t neighbour) {
    return neighbour < begin || neighbour >= end || std::abs(value(neighbour) - value(i)) > kAlone * range;
  };
  return isFar(i - 1) && isFar(i + 1);
}

/// Points between two that are kept, where the curve between them only rises or falls, in no great leaps, and bends
/// on its way.
void TraceColumns::addCurve(std::int64_t from, std::int64_t to) {
  const std::int64_t count = to - from;
  if (count < kLooks) return;
  const auto value = [&](std::int64_t i) {
    const HeldSamples held = trace_.held(i, i + 1);
    return double(trace_.samples[i]);
  };
  const double rise = value(to) - value(from);
  const auto isLeap = [rise](double step) { return step * rise < 0 || std::abs(step) > kLeap * std::abs(rise); };
  for (std::int64_t look = 0; look < kLooks; ++look) {
    if (isLeap(value(from + count * (look + 1) / kLooks) - value(from + count * look / kLooks))) return;
  }
  const std::int64_t middle = from + count / 2;
  const double chord = value(from) + rise * double(middle - from) / double(count);
  if (!(std::abs(value(middle) - chord) * std::abs(trace_.yScale) > kBend)) return;
  constexpr std::int64_t kParts = 4;
  for (std::int64_t part = 1; part < kParts; ++part)
    addPoint(from + count * part / kParts);
}

/// Few samples, or samples between gaps.
void TraceColumns::addBroken(std::int64_t begin, std::int64_t end) {
  const HeldSamples held = trace_.held(begin, end);
  while (begin < end) {
    if (breaks(begin)) {
      points_.endLine();
      begin = addSnippets(begin + 1, end);
      continue;
    }
    std::int64_t stop = begin + 1;
    while (stop < end && !breaks(stop))
      ++stop;
    if (stop - begin > kFew)
      addBlock(begin, stop);
    else
      for (; begin < stop; ++begin)
        addPoint(begin);
    begin = stop;
  }
}

/// Takes lines that follow a gap, as long as they end in the column, and returns the first sample behind them. Where
/// there are many, those that overlap are drawn as one.
std::int64_t TraceColumns::addSnippets(std::int64_t begin, std::int64_t end) {
  if (wanted_ != Wanted::Stroke || !numbersAreThere_) return begin;
  const auto gap = static_cast<float>(kTouching / std::max(std::abs(trace_.yScale), kTouching / kFarAway));
  snippets_.reset(projection_.samples(), gap);
  const float* const samples = projection_.samples();
  std::int64_t next = begin;
  while (next < end) {
    std::int64_t stop = next;
    while (stop < end && !breaks(stop))
      ++stop;
    if (stop == end) break; // goes on in the next column
    const bool isDash = stop - next == 2 &&
                        std::abs(double(samples[next]) - double(samples[next + 1])) * std::abs(trace_.yScale) < kDash;
    if (isDash) break;
    if (stop - next > 1) snippets_.add(next, stop);
    next = stop + 1;
  }
  if (snippets_.lines() <= kManyLines) return begin;
  for (const SnippetClusters::Cluster& cluster : snippets_.unite())
    addCluster(cluster);
  return next;
}

void TraceColumns::addCluster(const SnippetClusters::Cluster& cluster) {
  addPoint(cluster.lowest);
  if (cluster.innerLowest != SnippetClusters::kNone) {
    addPoint(cluster.innerHighest);
    addPoint(cluster.innerLowest);
  }
  addPoint(cluster.highest);
  points_.endLine();
}

} // namespace xov
