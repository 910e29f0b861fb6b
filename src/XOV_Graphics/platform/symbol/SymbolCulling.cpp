#include "XOV_Graphics/platform/symbol/SymbolCulling.h"

#include "XOV_Graphics/platform/symbol/OpenCells.h"

#include <QSet>

#include <algorithm>
#include <cmath>
#include <limits>
#include <optional>

namespace xov {

namespace {

// Up to so many symbols a page gets every one that reaches into it.
constexpr std::size_t kEverySymbol = 4096;
constexpr std::size_t kMostSymbols = 250000;
constexpr std::size_t kMostPlainDiscs = 1000000;
// Of symbols centred in one cell of this size, in points, a page gets the last; the size doubles while more than
// the most are left.
constexpr double kSamePlace = 0.05;
// The grid in which hidden symbols are found: fine against a symbol, so that few hidden ones are missed, but no finer
// than a page shows, and bounded in all.
constexpr double kCellsPerRadius = 32;
constexpr double kFinestCell = 1.0 / 16; // points
constexpr double kMostCells = double(1 << 27);

double cellSize(const QRectF& area, double radius) {
  const double bounded = std::sqrt(area.width() * area.height() / kMostCells);
  return std::max({radius / kCellsPerRadius, kFinestCell, bounded});
}

// Where symbols have been put already, to kSamePlace.
class TakenPlaces {
public:
  TakenPlaces(QPointF origin, double cellSize) : origin_(origin), cellSize_(cellSize) {}
  /// False when an earlier call had a place in the same cell.
  bool take(QPointF place) {
    const quint64 column = cell(place.x() - origin_.x());
    const quint64 row = cell(place.y() - origin_.y());
    const qsizetype before = taken_.size();
    taken_.insert(column << 32 | row);
    return taken_.size() > before;
  }

private:
  quint64 cell(double distance) const {
    constexpr double kFarthest = 2147483647; // cells, a hundred million points
    return std::uint32_t(std::int64_t(std::floor(std::clamp(distance / cellSize_, -kFarthest, kFarthest))));
  }

  QPointF origin_;
  double cellSize_;
  QSet<quint64> taken_;
};

// The largest radius that cells have to be fine against: that of the smallest symbol.
double smallestRadius(const Symbols& symbols) {
  double smallest = symbols.looks == nullptr ? symbols.outerRadius() : std::numeric_limits<double>::infinity();
  for (std::int64_t i = symbols.first; symbols.looks != nullptr && i < symbols.last; ++i) {
    if (symbols.looks[i].hasSize()) smallest = std::min(smallest, symbols.looks[i].outerRadius());
  }
  return smallest;
}

bool reachesInto(const QRectF& area, QPointF center, double radius) {
  return center.x() + radius > area.left() && center.x() - radius < area.right() &&
         center.y() + radius > area.top() && center.y() - radius < area.bottom();
}

void closeUnder(OpenCells& cells, const CellDisc& disc) {
  const CellSpan rows = disc.touchedRows(cells.rows());
  for (int row = rows.first; row < rows.last; ++row)
    cells.close(row, disc.coveredIn(row, cells.columns()));
}

// From the last symbol to the first, since the later ones cover the earlier. Symbols that look alike may also stand
// for others at the same place; of these, none is given when more than `most` show.
std::optional<std::vector<std::int64_t>> lastToFirst(const Symbols& symbols, const QRectF& area, double samePlace,
                                                     std::size_t most) {
  const bool alike = symbols.looks == nullptr;
  const double cell = cellSize(area, smallestRadius(symbols));
  OpenCells open(int(std::ceil(area.width() / cell)), int(std::ceil(area.height() / cell)));
  TakenPlaces places(area.topLeft(), samePlace);
  std::vector<std::int64_t> kept;
  for (std::int64_t i = symbols.last; i-- > symbols.first && open.openCount() > 0;) {
    const auto center = symbols.center(i);
    const SymbolLook& look = symbols.look(i);
    if (!center || !reachesInto(area, *center, look.outerRadius())) continue;
    const QPointF inCells = (*center - area.topLeft()) / cell;
    CellDisc disc{inCells.x(), inCells.y(), look.outerRadius() / cell};
    if (!open.anyOpenUnder(disc) || (alike && !places.take(*center))) continue;
    disc.radius = look.coveringRadius() / cell;
    if (disc.radius > 0) closeUnder(open, disc);
    if (alike && kept.size() == most) return std::nullopt;
    kept.push_back(i);
  }
  return kept;
}

} // namespace

std::vector<std::int64_t> symbolsOnPaper(const Symbols& symbols, const QRectF& area) {
  std::vector<std::int64_t> kept;
  if (symbols.isEmpty() || !(area.width() > 0 && area.height() > 0)) return kept;
  for (std::int64_t i = symbols.first; i < symbols.last; ++i) {
    const auto center = symbols.center(i);
    if (center && reachesInto(area, *center, symbols.look(i).outerRadius())) kept.push_back(i);
  }
  if (kept.size() <= kEverySymbol || (symbols.looks == nullptr && !symbols.coversWhatIsUnder())) return kept;
  double samePlace = kSamePlace;
  const std::size_t most = symbols.colorOfPlainDiscs().isValid() ? kMostPlainDiscs : kMostSymbols;
  auto showing = lastToFirst(symbols, area, samePlace, most);
  while (!showing)
    showing = lastToFirst(symbols, area, samePlace *= 2, most);
  std::reverse(showing->begin(), showing->end());
  return *showing;
}

} // namespace xov
