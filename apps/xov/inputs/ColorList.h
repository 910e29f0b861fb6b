#pragma once

#include <QColor>

#include <string>
#include <vector>

namespace CLI {
class App;
class Option;
} // namespace CLI

namespace xov::cli {

/// Adds an option that takes colours with commas between them: names as CSS and SVG have them, or "#336699".
CLI::Option* addColorList(CLI::App& options, const char* name, std::vector<std::string>& colors, const char* what);

/// The colours of those names, which addColorList() has looked at.
std::vector<QColor> colorsNamed(const std::vector<std::string>& names);

} // namespace xov::cli
