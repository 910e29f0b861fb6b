#pragma once

#include "apps/xov/commands/Command.h"
#include "apps/xov/inputs/PickOptions.h"
#include "apps/xov/inputs/RecordPlot.h"
#include "apps/xov/inputs/Records.h"
#include "apps/xov/inputs/SectionStyle.h"
#include "apps/xov/inputs/TimeAxisOption.h"
#include "apps/xov/inputs/TraceStyle.h"
#include "apps/xov/options/Options.h"
#include "apps/xov/output/Output.h"
#include "apps/xov/output/PageOption.h"
#include "apps/xov/prepare/Preparation.h"

#include <string>

namespace xov::cli {

/// `xov section`: seismograms as a record section, the first one at the bottom.
class SectionCommand : public Command {
public:
  void addOptions(const Options& options) override;
  ExitCode run() override;

private:
  RecordInputs inputs_;
  PageOption pages_{"records"};
  PickOptions picks_;
  Preparation preparation_;
  AxisAlignment alignment_;
  RecordPlot plot_;
  SectionStyle style_;
  TimeAxisOption timeAxis_;
  TraceStyle traces_;
  Output output_{"section", {900, 600}};
  double gain_ = 1;
  bool zeroLines_ = false;
  bool scaleBar_ = false;
  std::string order_;
};

} // namespace xov::cli
