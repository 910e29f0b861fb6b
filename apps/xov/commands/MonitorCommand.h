#pragma once

#include "apps/xov/commands/Command.h"
#include "apps/xov/inputs/EventInputs.h"
#include "apps/xov/inputs/Records.h"
#include "apps/xov/inputs/TraceStyle.h"
#include "apps/xov/live/EventServiceOptions.h"
#include "apps/xov/live/LateOptions.h"
#include "apps/xov/live/Replay.h"
#include "apps/xov/live/SeedLinkOptions.h"
#include "apps/xov/options/Options.h"
#include "apps/xov/output/Output.h"
#include "apps/xov/prepare/Preparation.h"

#include <string>

namespace xov::cli {

/// `xov monitor`: a real-time display of what a SeedLink server sends, or of recorded seismograms, played as if they
/// arrived now.
class MonitorCommand : public Command {
public:
  void addOptions(const Options& options) override;
  ExitCode run() override;

private:
  void checkInputs() const;
  ExitCode runLive() const;
  ReplaySettings settings() const;
  QString outsideNote(const SeismogramArray& records) const;
  std::unique_ptr<RealTimeDisplayView> makeView(const QRectF& frame) const;

  RecordInputs inputs_;
  SeedLinkOptions seedLink_;
  Preparation preparation_;
  EventInputs events_;
  EventServiceOptions eventService_;
  LateOptions late_;
  LineWidthOption lineWidth_;
  Output output_{"monitor", {1000, 600}};
  double speed_ = 1;
  double spanSeconds_ = 600;
  double gain_ = 1;
  std::string origin_;
  std::string at_;
  bool zoneName_ = false;
};

} // namespace xov::cli
