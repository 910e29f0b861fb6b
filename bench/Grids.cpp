#include "bench/Grids.h"

#include "XOV_Graphics/colour/GridColors.h"
#include "XOV_Graphics/views/image/xovFKImageView.h"
#include "bench/Contest.h"

#include <QLoggingCategory>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <vector>

namespace xov::bench {

namespace {

constexpr int kRows = 2160;
constexpr int kColumns = 4320;
constexpr std::size_t kCells = std::size_t(kRows) * kColumns;
constexpr int kPowers = 401;
constexpr double kFrameMs = 1000.0 / 60;

// Every row of the topography, in waves of some hundred cells with noise of a few metres.
std::vector<float> elevations() {
  std::vector<float> cells(kCells);
  std::uint32_t random = 1;
  for (std::size_t i = 0; i < kCells; ++i) {
    random = random * 1664525 + 1013904223;
    const double x = double(i % kColumns);
    const double y = double(i / kColumns);
    cells[i] = float(std::round(-2000 + 7500 * std::sin(x / 90) * std::cos(y / 70) + double(random >> 26)));
  }
  return cells;
}

GridFloats powers() {
  std::vector<float> cells;
  for (int row = 0; row < kPowers; ++row) {
    for (int column = 0; column < kPowers; ++column)
      cells.push_back(float(0.5 + 0.5 * std::cos((row - 150) / 40.0) * std::cos((column - 260) / 50.0)));
  }
  return std::make_shared<const std::vector<float>>(std::move(cells));
}

QString coloringTable(int rounds) {
  const std::vector<float> cells = elevations();
  std::vector<std::int16_t> integers(kCells);
  std::transform(cells.begin(), cells.end(), integers.begin(), [](float cell) { return std::int16_t(cell); });
  std::vector<std::uint32_t> pixels(kCells);
  std::vector<std::uint32_t> copy(kCells);
  std::vector<std::uint8_t> bytes(4 * kCells);
  GridColoring topo;
  topo.meaning = CellMeaning::Elevation;
  const auto plane = [&](std::size_t index) { return std::span(bytes).subspan(index * kCells, kCells); };
  const ColorPlanes planes{plane(0), plane(1), plane(2), plane(3)};
  std::vector<Contest> contests = {
      {"copying the pixels", [&] { std::memcpy(copy.data(), pixels.data(), 4 * kCells); }},
      {"elevations to pixels", [&] { colorGridPixels(cells, topo, pixels); }},
      {"16-bit elevations to pixels", [&] { colorGridPixels(integers, topo, pixels); }},
      {"elevations to planes", [&] { colorGridPlanes(cells, topo, planes); }},
  };
  runInTurn(contests, rounds);
  const double copying = median(contests.front().milliseconds);
  QString table = QStringLiteral("| 2160 × 4320 cells | ms | of copying |\n|---|---:|---:|\n");
  for (const Contest& contest : contests) {
    const double milliseconds = median(contest.milliseconds);
    table += QStringLiteral("| %1 | %2 | %3 |\n")
                 .arg(QLatin1String(contest.name))
                 .arg(milliseconds, 0, 'f', 2)
                 .arg(milliseconds / copying, 0, 'f', 2);
  }
  return table;
}

QString redrawTable(int rounds) {
  QLoggingCategory::setFilterRules(QStringLiteral("xov.cells=false"));
  xovFKImageView view({0, 0, 608, 600});
  view.setXLimitsMinMax(-0.5F, 0.5F);
  view.setYLimitsMinMax(-0.5F, 0.5F);
  view.setPalette(3);
  const GridFloats grid = powers();
  QImage drawn;
  std::vector<Contest> contests = {
      {"redraw", [&] { drawn = view.pictureOfRect(view.bounds()); }},
      {"new grid and redraw",
       [&] {
         view.setupImageDataNROWSNCOLS(grid, kPowers, kPowers);
         drawn = view.pictureOfRect(view.bounds());
       }},
  };
  view.setupImageDataNROWSNCOLS(grid, kPowers, kPowers);
  runInTurn(contests, rounds);
  QString table = QStringLiteral("| 401 × 401 beam powers, 608 × 600 points | ms | of 1/60 s |\n|---|---:|---:|\n");
  for (const Contest& contest : contests) {
    const double milliseconds = median(contest.milliseconds);
    table += QStringLiteral("| %1 | %2 | %3 |\n")
                 .arg(QLatin1String(contest.name))
                 .arg(milliseconds, 0, 'f', 2)
                 .arg(milliseconds / kFrameMs, 0, 'f', 2);
  }
  return table;
}

} // namespace

QString gridTable(int rounds) { return coloringTable(rounds) + QLatin1Char('\n') + redrawTable(rounds); }

} // namespace xov::bench
