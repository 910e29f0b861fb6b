#pragma once

#include "apps/xov/commands/Command.h"
#include "apps/xov/inputs/ColumnInputs.h"
#include "apps/xov/inputs/LogAxisOptions.h"
#include "apps/xov/options/Options.h"
#include "apps/xov/output/Output.h"

namespace xov::cli {

/// `xov scatter`: two columns of numbers as circles.
class ScatterCommand : public Command {
public:
  void addOptions(const Options& options) override;
  ExitCode run() override;

private:
  ColumnInputs inputs_{{"1", "2"}, "X Y"};
  LogAxisOptions logAxes_;
  Output output_{"scatter", {600, 500}};
  double diameter_ = 12;
};

} // namespace xov::cli
