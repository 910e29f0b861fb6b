#include "apps/xov/output/ImageOptions.h"

#include "apps/xov/inputs/Validators.h"
#include "apps/xov/terminal/Messages.h"

#include <XOV_Graphics/base/FileName.h>

namespace xov::cli {

namespace {

constexpr int kMostShades = 256;
constexpr char kViridis[] = "viridis";
constexpr char kCividis[] = "cividis";
constexpr char kDawn[] = "dawn";

// Of one of the words that --palette takes.
std::int32_t paletteNamed(const std::string& name) {
  if (name == kViridis) return XOVImageView::Viridis;
  if (name == kCividis) return XOVImageView::Cividis;
  if (name == kDawn) return XOVImageView::Dawn;
  return std::stoi(name);
}

} // namespace

void ImageOptions::addOptions(const Options& options) {
  addColorOptions(options);
  options.add("--color-bar", colorBar_, "Draw a bar of the colours and their values, with this title; '' for none")
      .typeName("TITLE");
}

void ImageOptions::addColorOptions(const Options& options) {
  options
      .add("--palette", palette_,
           "Colours: 0 grey, 1 red to blue through white, 2 rainbow from red, 3 rainbow from blue, 4 dark red "
           "to blue through white, viridis, cividis, dawn (default " +
               palette_ + ")")
      .typeName("PALETTE")
      .check(oneOf({"0", "1", "2", "3", "4", kViridis, kCividis, kDawn}));
  options.add("--shades", shades_, "Number of colour levels (default " + std::to_string(shades_) + ")")
      .typeName("N")
      .check(wholeNumberFromTo(1, kMostShades));
  options.addFlag("--inverted", inverted_, "Turn each colour into its complement");
}

void ImageOptions::addTextOption(const Options& options) {
  options.add("--xyz", textFile_, "Write the grid to this file as lines of x, y and value, too").typeName("FILE");
}

void ImageOptions::apply(XOVImageView& view) const {
  applyColors(view);
  view.setShowColorBar(colorBar_.has_value());
  view.setColorBarTitle(QString::fromStdString(colorBar_.value_or("")));
}

void ImageOptions::applyColors(XOVImageView& view) const {
  view.setPalette(paletteNamed(palette_));
  view.setNShades(shades_);
  view.setInverted(inverted_);
}

bool ImageOptions::writeText(XOVImageView& view) const {
  if (textFile_.empty()) return true;
  QString error;
  if (view.writeXYZToFile(fileNameFromBytes(textFile_), &error)) return true;
  complain(error);
  return false;
}

} // namespace xov::cli
