#include "XOV_Graphics/views/image/XyzText.h"

#include "XOV_Graphics/base/Numbers.h"

#include <QIODevice>

#include <limits>
#include <string>
#include <string_view>
#include <vector>

namespace xov {

namespace {

// Text goes to the device in pieces of about this many bytes.
constexpr std::size_t kPiece = 1 << 20;

std::string fixed(float value) {
  std::string text;
  appendFixed(text, value);
  return text;
}

std::string heading(const PlotLimits& limits, const GridRange& range, const GridNodes& nodes) {
  const auto axis = [](const char* name, float min, float max, float step) {
    return std::string("# ") + name + " = " + fixed(min) + ", " + fixed(max) + " " + fixed(step) + "\n";
  };
  return axis("xmin,xmax,dx", limits.xmin, limits.xmax, nodes.dx) +
         axis("ymin,ymax,dy", limits.ymin, limits.ymax, nodes.dy) + "# zmin,zmax = " + fixed(range.lowest) + ", " +
         fixed(range.highest) + "\n";
}

bool write(QIODevice& device, std::string& text) {
  const bool written = device.write(text.data(), qint64(text.size())) == qint64(text.size());
  text.clear();
  return written;
}

} // namespace

bool writeXyzText(QIODevice& device, const PlotLimits& limits, const GridRange& range, const GridNodes& nodes,
                  const GridValues& grid) {
  std::vector<std::string> xTexts(std::size_t(grid.columns));
  for (std::int32_t column = 0; column < grid.columns; ++column)
    xTexts[std::size_t(column)] = fixed(nodes.x(column)) + " ";
  std::string text = heading(limits, range, nodes);
  for (std::int32_t row = 0; row < grid.rows; ++row) {
    const std::string yText = fixed(nodes.y(row)) + " ";
    for (std::int32_t column = 0; column < grid.columns; ++column) {
      text += xTexts[std::size_t(column)];
      text += yText;
      appendFixed(text, nodes.value(grid, row, column).value_or(std::numeric_limits<float>::quiet_NaN()));
      text += '\n';
      if (text.size() >= kPiece && !write(device, text)) return false;
    }
  }
  return write(device, text);
}

} // namespace xov
