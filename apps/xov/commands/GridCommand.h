#pragma once

#include "apps/xov/commands/Command.h"
#include "apps/xov/options/Options.h"
#include "apps/xov/output/ImageOptions.h"
#include "apps/xov/output/Output.h"

#include <XOV_Graphics/base/Result.h>
#include <XOV_Graphics/grid/Grid.h>
#include <optional>
#include <string>
#include <vector>

namespace xov::cli {

/// `xov grid`: a regular grid of values as a coloured picture.
class GridCommand : public Command {
public:
  void addOptions(const Options& options) override;
  ExitCode run() override;

private:
  void checkOptions() const;
  Result<Grid> read() const;
  std::unique_ptr<XOVView> makeView(const QRectF& frame, const Grid& grid, const GridFloats& values) const;

  std::string file_;
  int rows_ = 0;
  int columns_ = 0;
  std::string cell_ = "int16";
  std::string order_ = "little";
  std::vector<double> extent_;
  std::optional<double> min_;
  std::optional<double> max_;
  bool topo_ = false;
  bool peak_ = false;
  std::string xLabel_;
  std::string yLabel_;
  ImageOptions image_{0};
  Output output_{"grid", {720, 540}};
};

/// A size for a plot of that many square cells, within bounds.
QSizeF sizeForCells(int rows, int columns);

} // namespace xov::cli
