#include "platform/SymbolCulling.h"

#include "platform/OpenCells.h"

#include <algorithm>
#include <cmath>
#include <optional>
#include <unordered_set>

namespace xov {

namespace {

// Up to so many symbols a page gets every one that reaches into it.
constexpr std::size_t kEverySymbol = 4096;
constexpr std::size_t kMostSymbols = 250000;
// Of symbols centred in one cell of this size, in points, a page gets the last; the size doubles while more than
// kMostSymbols are left.
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
    const std::uint64_t column = cell(place.x() - origin_.x());
    const std::uint64_t row = cell(place.y() - origin_.y());
    return taken_.insert(column << 32 | row).second;
  }

private:
  std::uint64_t cell(double distance) const {
    constexpr double kFarthest = 2147483647; // cells, a hundred million points
    return std::uint32_t(std::int64_t(std::floor(std::clamp(distance / cellSize_, -kFarthest, kFarthest))));
  }

  QPointF origin_;
  double cellSize_;
  std::unordered_set<std::uint64_t> taken_;
};

bool reachesInto(const QRectF& area, QPointF center, double radius) {
  return center.x() + radius > area.left() && center.x() - radius < area.right() &&
         center.y() + radius > area.top() && center.y() - radius < area.bottom();
}

void closeUnder(OpenCells& cells, const CellDisc& disc) {
  const CellSpan rows = disc.touchedRows(cells.rows());
  for (int row = rows.first; row < rows.last; ++row)
    cells.close(row, disc.coveredIn(row, cells.columns()));
}

// From the last symbol to the first, since the later ones cover the earlier; none when more than kMostSymbols show.
std::optional<std::vector<std::int64_t>> lastToFirst(const Symbols& symbols, const QRectF& area, double samePlace) {
  const double radius = symbols.outerRadius();
  const double cell = cellSize(area, radius);
  OpenCells open(int(std::ceil(area.width() / cell)), int(std::ceil(area.height() / cell)));
  TakenPlaces places(area.topLeft(), samePlace);
  std::vector<std::int64_t> kept;
  for (std::int64_t i = symbols.last; i-- > symbols.first && open.openCount() > 0;) {
    const auto center = symbols.center(i);
    if (!center || !reachesInto(area, *center, radius)) continue;
    const QPointF inCells = (*center - area.topLeft()) / cell;
    const CellDisc disc{inCells.x(), inCells.y(), radius / cell};
    if (!open.anyOpenUnder(disc) || !places.take(*center)) continue;
    closeUnder(open, disc);
    if (kept.size() == kMostSymbols) return std::nullopt;
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
    if (center && reachesInto(area, *center, symbols.outerRadius())) kept.push_back(i);
  }
  if (kept.size() <= kEverySymbol || !symbols.coversWhatIsUnder()) return kept;
  double samePlace = kSamePlace;
  auto showing = lastToFirst(symbols, area, samePlace);
  while (!showing)
    showing = lastToFirst(symbols, area, samePlace *= 2);
  std::reverse(showing->begin(), showing->end());
  return *showing;
}

} // namespace xov
