#pragma once

#include "apps/xov/commands/Command.h"
#include "apps/xov/inputs/ComponentChoice.h"
#include "apps/xov/inputs/PickOptions.h"
#include "apps/xov/inputs/RecordPlot.h"
#include "apps/xov/inputs/Records.h"
#include "apps/xov/inputs/TimeAxisOption.h"
#include "apps/xov/inputs/TraceStyle.h"
#include "apps/xov/options/Options.h"
#include "apps/xov/output/Output.h"
#include "apps/xov/output/PageOption.h"
#include "apps/xov/prepare/Preparation.h"

namespace xov::cli {

/// `xov three`: the three components of a station under each other.
class ThreeCommand : public Command {
public:
  void addOptions(const Options& options) override;
  ExitCode run() override;

private:
  RecordInputs inputs_;
  PageOption pages_{nullptr};
  PickOptions picks_;
  Preparation preparation_;
  RecordPlot plot_;
  TimeAxisOption timeAxis_;
  LineWidthOption lineWidth_;
  Output output_{"three", {900, 600}};
  ComponentChoice components_;
  bool selfScaled_ = false;
  bool peaks_ = false;
};

} // namespace xov::cli
