#pragma once

#include "apps/xov/live/DrumDays.h"
#include "apps/xov/live/LateOptions.h"
#include "apps/xov/live/LiveFeed.h"

#include <QColor>

#include <XOV_Graphics/views/timeline/helicorderView.h>
#include <optional>
#include <utility>

namespace xov::cli {

/// How live drums look.
struct LiveDrumLook {
  QString title;              ///< from the first samples on: without any there is no page that it could stand over
  std::optional<double> gain; ///< nothing for what lets rows be told apart
  std::vector<QColor> rowColors;
  Lateness late;
};

/// Gives a view the page of a day, which the view does not hold itself.
void putPage(const std::shared_ptr<const SeismogramArray>& pieces, const QDateTime& day, std::optional<double> gain,
             helicorderView& view);

/// What a server sends, on drums of the day, of which a view shows one at a time.
class LiveDrum {
public:
  LiveDrum(const SeedLinkSettings& settings, LiveDrumLook look, DrumDays::Keep keep);

  LiveFeed& live() { return live_; }
  const DrumDays& days() const { return days_; }

  /// Turns pages at midnight, and shows the present page of the channel that was turned to, the first one at first.
  /// The page stays with this object, which must live as long as it is drawn.
  void show(helicorderView& view);
  /// Shows the page of another channel from the next show() on: so many further, as far as there are any.
  void turn(int channels);

  /// Stops receiving, and keeps the pages of days that are over.
  void leave();

private:
  void tellLatency(const SeismogramRecord& record, const QDateTime& present, helicorderView& view) const;

  LiveDrumLook look_;
  DrumDays days_;
  std::size_t shown_ = 0;                         // channel
  std::shared_ptr<const SeismogramArray> pieces_; // of the page that is shown
  std::pair<const void*, QDateTime> shownOn_;     // the view and the day of that page
  LiveFeed live_;                                 // goes first
};

} // namespace xov::cli
