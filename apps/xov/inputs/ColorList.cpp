#include "apps/xov/inputs/ColorList.h"

namespace xov::cli {

namespace {

// An invisible line is no line: the name "transparent" is left out.
bool isColor(const std::string& text) {
  const QColor color(QString::fromStdString(text));
  return color.isValid() && color.alpha() > 0;
}

} // namespace

Option addColorList(const Options& options, const char* name, std::vector<std::string>& colors, const char* what) {
  const auto check = [](const std::string& text) -> std::string {
    if (isColor(text)) return {};
    return "found '" + text + "', expected a colour as red or #336699";
  };
  return options.add(name, colors, what).typeName("COLOR[,...]").listBetweenCommas().check(Check{check, {}});
}

std::vector<QColor> colorsNamed(const std::vector<std::string>& names) {
  std::vector<QColor> colors;
  colors.reserve(names.size());
  for (const std::string& name : names)
    colors.emplace_back(QString::fromStdString(name));
  return colors;
}

} // namespace xov::cli
