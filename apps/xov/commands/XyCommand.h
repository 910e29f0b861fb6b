#pragma once

#include "apps/xov/commands/Command.h"
#include "apps/xov/inputs/ColumnInputs.h"
#include "apps/xov/inputs/LogAxisOptions.h"
#include "apps/xov/inputs/TraceStyle.h"
#include "apps/xov/options/Options.h"
#include "apps/xov/output/Output.h"

namespace xov::cli {

/// `xov xy`: two columns of numbers as a line.
class XyCommand : public Command {
public:
  void addOptions(const Options& options) override;
  ExitCode run() override;

private:
  ColumnInputs inputs_{{"1", "2"}, "X Y"};
  LogAxisOptions logAxes_;
  LineWidthOption lineWidth_;
  Output output_{"xy", {600, 500}};
};

} // namespace xov::cli
