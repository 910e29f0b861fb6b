#pragma once

#include "apps/xov/options/Options.h"

#include <QColor>

#include <string>
#include <vector>

namespace xov::cli {

/// Adds an option that takes colours with commas between them: names as CSS and SVG have them, or "#336699".
Option addColorList(const Options& options, const char* name, std::vector<std::string>& colors, const char* what);

/// The colours of those names, which addColorList() has looked at.
std::vector<QColor> colorsNamed(const std::vector<std::string>& names);

} // namespace xov::cli
