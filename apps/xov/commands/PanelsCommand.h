#pragma once

#include "apps/xov/commands/Command.h"
#include "apps/xov/inputs/PickOptions.h"
#include "apps/xov/inputs/Records.h"
#include "apps/xov/inputs/TimeAxisOption.h"
#include "apps/xov/inputs/TraceStyle.h"
#include "apps/xov/options/Options.h"
#include "apps/xov/output/Output.h"
#include "apps/xov/output/PageOption.h"
#include "apps/xov/prepare/Preparation.h"

namespace xov::cli {

/// `xov panels`: pairs of seismograms in small panels, the first of a pair black, the second red over it.
class PanelsCommand : public Command {
public:
  void addOptions(const Options& options) override;
  ExitCode run() override;

private:
  RecordInputs inputs_;
  PageOption pages_{"panels", 2};
  PickOptions picks_;
  TimeAxisOption timeAxis_;
  TraceStyle traces_;
  Preparation preparation_;
  Output output_{"panels", {}};
  double gain_ = 1;
};

/// A view of this size holds that many panels in columns of about equal length, with their time axes, and no room
/// that is empty.
QSizeF sizeOfPanels(std::size_t panels);

/// The times at the left and right edge of all panels. Traces start at the left edge whatever their begin time is:
/// that is the time there when all records agree on it to half a sample, else 0. The longest record fills a panel.
struct PanelTimes {
  float min = 0;
  float max = 1;
  bool begins = false; ///< the time at the left edge is that of all records
};
PanelTimes panelTimes(const SeismogramArray& records);

} // namespace xov::cli
