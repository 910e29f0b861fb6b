#pragma once

#include "apps/xov/commands/Command.h"
#include "apps/xov/inputs/EventInputs.h"
#include "apps/xov/inputs/Records.h"
#include "apps/xov/inputs/TraceStyle.h"
#include "apps/xov/live/DailyPages.h"
#include "apps/xov/live/EventServiceOptions.h"
#include "apps/xov/live/LateOptions.h"
#include "apps/xov/live/SeedLinkOptions.h"
#include "apps/xov/options/Options.h"
#include "apps/xov/output/DrumSheets.h"
#include "apps/xov/output/Output.h"
#include "apps/xov/prepare/Preparation.h"

#include <QColor>

#include <XOV_Graphics/views/timeline/helicorderView.h>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace xov::cli {

/// `xov drum`: a continuous recording in rows, as a drum recorder draws it; or the day so far, as a SeedLink server
/// sends it.
class DrumCommand : public Command {
public:
  void addOptions(const Options& options) override;
  ExitCode run() override;

private:
  void checkInputs() const;
  ExitCode runLive() const;
  /// A view with all that does not depend on what it shows.
  std::unique_ptr<helicorderView> makeView(const QRectF& frame,
                                           const std::shared_ptr<const EventOriginArray>& events) const;
  /// Keeps the page of a day that is over on a view made for it. False where that cannot be done, which has been
  /// said.
  bool keepPage(const DrumSheet& sheet, double ratio, std::unique_ptr<helicorderView> page) const;
  int rowsOfADay() const;
  std::vector<QColor> chosenColors() const;
  DrumPaging paging() const;

  RecordInputs inputs_;
  SeedLinkOptions seedLink_;
  DailyPages daily_;
  LateOptions late_;
  Preparation preparation_;
  EventInputs events_;
  EventServiceOptions eventService_;
  bool eventLabels_ = false;
  bool scaleBar_ = false;
  std::vector<std::string> rowColors_;
  bool dayColors_ = false;
  std::string zone_;
  std::string page_; // "channel" or "day"; empty for one page
  double clip_ = 0;  // as traces are
  LineWidthOption lineWidth_;
  Output output_{"drum", {900, 900}};
  std::optional<int> rows_;
  double rowSeconds_ = 3600;
  std::optional<double> gain_;
  double smallestMagnitude_ = 4;
  bool zeroLines_ = false;
  bool hours_ = false;
};

} // namespace xov::cli
