#include "XOV_Graphics/grid/XyzGrid.h"

#include "XOV_Graphics/base/Guarded.h"
#include "XOV_Graphics/base/InputFile.h"
#include "XOV_Graphics/base/Numbers.h"
#include "XOV_Graphics/base/TextLines.h"

#include <algorithm>
#include <cmath>
#include <optional>

namespace xov {

namespace {

constexpr qint64 kMostBytes = qint64(1) << 31;
// Coordinates are written with few digits: a place may be this share of a step beside its own.
constexpr double kUnevenness = 0.1;

struct Cell {
  double x;
  double y;
  float value;
};

bool isSeparator(char c) { return c == ' ' || c == '\t' || c == ',' || c == ';' || c == '\r'; }

std::optional<double> takeCoordinate(QByteArrayView& line) {
  line = QByteArrayView(std::find_if_not(line.begin(), line.end(), isSeparator), line.end());
  const auto value = takeNumber<double>(line);
  return line.isEmpty() || isSeparator(line.front()) ? value : std::nullopt;
}

std::optional<Cell> cellIn(QByteArrayView line) {
  const auto x = takeCoordinate(line);
  const auto y = x ? takeCoordinate(line) : std::nullopt;
  const auto value = y ? takeCoordinate(line) : std::nullopt;
  if (!value || !std::isfinite(*x) || !std::isfinite(*y)) return {};
  return Cell{*x, *y, toSinglePrecision(*value)};
}

/// The evenly spaced places of columns or rows.
struct Places {
  double min = 0;
  double max = 0;
  std::size_t count = 0;

  std::size_t indexOf(double place) const {
    return count == 1 ? 0 : std::size_t(std::lround((place - min) / (max - min) * double(count - 1)));
  }
};

// Nothing when they are not evenly spaced.
std::optional<Places> placesOf(std::vector<double> all) {
  all.erase(std::unique(all.begin(), all.end()), all.end());
  std::sort(all.begin(), all.end());
  all.erase(std::unique(all.begin(), all.end()), all.end());
  const Places places{all.front(), all.back(), all.size()};
  if (!std::isfinite(places.max - places.min)) return {};
  const double step = places.count == 1 ? 0 : (places.max - places.min) / double(places.count - 1);
  for (std::size_t i = 0; i < all.size(); ++i) {
    if (std::abs(all[i] - (places.min + double(i) * step)) > kUnevenness * step) return {};
  }
  return places;
}

Result<std::vector<Cell>> cellsIn(QByteArrayView text, const QString& name) {
  std::vector<Cell> cells;
  TextLines lines(withoutMark(text));
  while (const auto line = lines.next()) {
    const auto start = std::find_if_not(line->begin(), line->end(), isSeparator);
    if (start == line->end() || *start == '#') continue;
    const auto cell = cellIn(*line);
    if (!cell)
      return Error{
          QStringLiteral("%1: line %2: expected three numbers, x, y and value").arg(name).arg(lines.number())};
    cells.push_back(*cell);
  }
  if (cells.empty()) return Error{name + QStringLiteral(": holds no grid")};
  return cells;
}

Result<Grid> parse(QByteArrayView text, const QString& name) {
  const Result<std::vector<Cell>> cells = cellsIn(text, name);
  if (!cells) return Error{cells.error()};
  const auto placesAlong = [&](double Cell::*coordinate) {
    std::vector<double> all(cells->size());
    std::transform(cells->begin(), cells->end(), all.begin(), [&](const Cell& cell) { return cell.*coordinate; });
    return placesOf(std::move(all));
  };
  const auto x = placesAlong(&Cell::x);
  const auto y = placesAlong(&Cell::y);
  for (const auto& [places, axis] : {std::pair(&x, "x"), {&y, "y"}}) {
    if (!*places)
      return Error{QStringLiteral("%1: the values of %2 are not evenly spaced").arg(name, QLatin1String(axis))};
  }
  // The product of two counts, each not above the number of cells, may not fit: compare by division.
  if (cells->size() % x->count != 0 || cells->size() / x->count != y->count)
    return Error{QStringLiteral("%1: %2 lines, expected one for each of %3 values of x and %4 of y")
                     .arg(name)
                     .arg(cells->size())
                     .arg(x->count)
                     .arg(y->count)};

  Grid grid;
  grid.columns = std::int32_t(x->count);
  grid.rows = std::int32_t(y->count);
  grid.xmin = x->min;
  grid.xmax = x->max;
  grid.ymin = y->min;
  grid.ymax = y->max;
  grid.values.resize(cells->size());
  std::vector<bool> filled(cells->size());
  for (const Cell& cell : *cells) {
    const std::size_t index = (y->count - 1 - y->indexOf(cell.y)) * x->count + x->indexOf(cell.x);
    if (filled[index])
      return Error{QStringLiteral("%1: more than one line for x %2, y %3").arg(name).arg(cell.x).arg(cell.y)};
    filled[index] = true;
    grid.values[index] = cell.value;
  }
  return grid;
}

} // namespace

Result<Grid> parseXyzGrid(QByteArrayView text, const QString& name) noexcept {
  return guarded(name, [&] { return parse(text, name); });
}

Result<Grid> readXyzGrid(const QString& path) noexcept {
  return guarded(path, [&]() -> Result<Grid> {
    const Result<QByteArray> text = readWholeFile(path, kMostBytes);
    if (!text) return Error{text.error()};
    return parse(*text, path);
  });
}

} // namespace xov
