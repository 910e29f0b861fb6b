#include "apps/xov/commands/ThreeCommand.h"

#include "apps/xov/output/RecordNames.h"
#include "apps/xov/output/TitledView.h"

#include <XOV_Graphics/seismic/prepare/Components.h>
#include <XOV_Graphics/views/seismic/ThreeCompView.h>
#include <algorithm>

namespace xov::cli {

void ThreeCommand::addOptions(const Options& options) {
  inputs_.addOptions(options);
  components_.addOption(options, "Codes of the vertical, radial and transverse component, as BHZ BHR BHT or Z 1 2",
                        "V R T");
  options.addFlag("--self-scaled", selfScaled_, "Let each trace fill its panel");
  options.addFlag("--peaks", peaks_, "Print the largest amplitude of each trace");
  pages_.addOptions(options);
  picks_.addOptions(options);
  plot_.addOptions(options);
  timeAxis_.addOptions(options);
  lineWidth_.addOptions(options);
  preparation_.addOptions(options);
  output_.addOptions(options, recordFieldNames());
}

ExitCode ThreeCommand::run() {
  Records found = preparation_.apply(inputs_.read());
  if (found.records.empty()) return ExitCode::Failed;
  const RecordPages groups =
      pages_.pagesOf(std::move(found.records), [](SeismogramArray records) { return records; });
  std::vector<ThreeComponents> stations;
  std::vector<PlotPage> pages;
  for (std::size_t i = 0; i < groups.count(); ++i) {
    const Result<ThreeComponents> components = components_.of(groups.recordsAsRead(i));
    if (components) {
      stations.push_back(*components);
      pages.push_back(groups.plotPages()[i]);
      continue;
    }
    complain(components.error());
    found.status = ExitCode::Failed;
  }
  if (pages.empty()) return ExitCode::Failed;
  std::shared_ptr<StationObservation> shown; // which views do not hold themselves
  const ExitCode delivered = output_.deliver(pages, [&](const QRectF& frame, std::size_t page) {
    const SeismogramArray present = plot_.prepare(picks_.apply(presentComponents(stations[page])));
    shown = observationOf(stations[page], present);
    auto view = std::make_unique<TitledView<ThreeCompView>>(frame);
    view->setObservation(shown);
    Output::keep(shown);
    view->setLabelsGiveWay(true);
    timeAxis_.apply(*view, present);
    lineWidth_.apply(*view);
    view->setSelfScaled(selfScaled_);
    view->setShowMaxAmplitude(peaks_);
    view->setTitle(output_.titleOr(QString()));
    view->setSubtitle(preparation_.text());
    return view;
  });
  return std::max(found.status, delivered);
}

} // namespace xov::cli
