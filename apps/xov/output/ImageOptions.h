#pragma once

#include "apps/xov/options/Options.h"

#include <XOV_Graphics/views/image/XOVImageView.h>
#include <optional>
#include <string>

namespace xov::cli {

/// How the values of a grid are coloured, with the options that commands for grids share: --palette, --shades,
/// --inverted and --color-bar.
class ImageOptions {
public:
  explicit ImageOptions(int palette) : palette_(std::to_string(palette)) {}
  /// `palette` is one of the words that --palette takes.
  ImageOptions(const char* palette, int shades) : palette_(palette), shades_(shades) {}

  void addOptions(const Options& options);
  /// Those of the colours alone, for views that have a bar of their own.
  void addColorOptions(const Options& options);
  /// --xyz, for the grid as text.
  void addTextOption(const Options& options);

  /// Hands palette, shades, inversion and colour bar to a view, before it gets its grid.
  void apply(XOVImageView& view) const;
  void applyColors(XOVImageView& view) const;
  /// Writes the text of the view's grid where the user wants it. False, which has been said, when that fails.
  bool writeText(XOVImageView& view) const;

private:
  std::string palette_; // a number or a name
  int shades_ = 64;
  bool inverted_ = false;
  std::optional<std::string> colorBar_; // its title
  std::string textFile_;
};

} // namespace xov::cli
