#pragma once

#include "apps/xov/commands/Command.h"
#include "apps/xov/inputs/RecordPlot.h"
#include "apps/xov/inputs/Records.h"
#include "apps/xov/inputs/TimeAxisOption.h"
#include "apps/xov/inputs/TraceStyle.h"
#include "apps/xov/options/Options.h"
#include "apps/xov/output/Output.h"
#include "apps/xov/output/PageOption.h"
#include "apps/xov/prepare/Preparation.h"

#include <string>
#include <vector>

namespace xov {
class StackedSeisView;
}

namespace xov::cli {

/// `xov stack`: seismograms over each other or in a band each, on one time and one amplitude scale.
class StackCommand : public Command {
public:
  void addOptions(const Options& options) override;
  ExitCode run() override;

private:
  void checkOptions() const;
  std::unique_ptr<StackedSeisView> makeView(const QRectF& frame) const;

  RecordInputs inputs_;
  Preparation preparation_;
  PageOption pages_{"records"};
  AxisAlignment alignment_;
  RecordPlot plot_;
  TimeAxisOption timeAxis_;
  TraceStyle traces_;
  Output output_{"stack", {900, 600}};
  std::string style_;
  bool fill_ = false;
  bool scaleBar_ = false;
  std::vector<double> fixedX_; // both ends, or not given
  std::vector<double> fixedY_;
};

} // namespace xov::cli
