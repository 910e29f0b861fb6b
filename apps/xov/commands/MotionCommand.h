#pragma once

#include "apps/xov/commands/Command.h"
#include "apps/xov/inputs/ComponentChoice.h"
#include "apps/xov/inputs/Records.h"
#include "apps/xov/options/Options.h"
#include "apps/xov/output/Output.h"
#include "apps/xov/prepare/Preparation.h"

namespace xov::cli {

/// `xov motion`: the path of the ground at a station in three panels, and its polarisation.
class MotionCommand : public Command {
public:
  void addOptions(const Options& options) override;
  ExitCode run() override;

private:
  RecordInputs inputs_;
  Preparation preparation_;
  Output output_{"motion", {900, 400}};
  ComponentChoice components_;
  bool noPolarization_ = false;
};

} // namespace xov::cli
