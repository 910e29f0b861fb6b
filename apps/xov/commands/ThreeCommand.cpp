#include "apps/xov/commands/ThreeCommand.h"

#include "apps/xov/inputs/OptionValues.h"
#include "apps/xov/output/RecordNames.h"
#include "apps/xov/output/TitledView.h"

#include <CLI/CLI.hpp>

#include <XOV_Graphics/seismic/prepare/Components.h>
#include <XOV_Graphics/views/seismic/ThreeCompView.h>
#include <algorithm>

namespace xov::cli {

void ThreeCommand::addOptions(CLI::App& options) {
  inputs_.addOptions(options);
  takesExactly(options
                   .add_option("--components", components_,
                               "Codes of the vertical, radial and transverse component, as BHZ BHR BHT or Z 1 2")
                   ->type_name("V R T"),
               3);
  options.add_flag("--self-scaled", selfScaled_, "Let each trace fill its panel");
  options.add_flag("--peaks", peaks_, "Print the largest amplitude of each trace");
  picks_.addOptions(options);
  plot_.addOptions(options);
  timeAxis_.addOptions(options);
  lineWidth_.addOptions(options);
  preparation_.addOptions(options);
  output_.addOptions(options, recordFieldNames());
}

ExitCode ThreeCommand::run() {
  const Records found = preparation_.apply(inputs_.read());
  if (found.records.empty()) return ExitCode::Failed;
  QStringList codes;
  for (const std::string& code : components_)
    codes.append(QString::fromStdString(code));
  const Result<ThreeComponents> components = pickComponents(found.records, codes);
  if (!components) {
    complain(components.error() + QStringLiteral("; --channels and --components choose others"));
    return ExitCode::Failed;
  }
  const SeismogramArray present = plot_.prepare(picks_.apply(presentComponents(*components)));
  const auto shown = observationOf(*components, present);
  const ExitCode delivered = output_.deliver(nameFieldsOf(present), [&](const QRectF& frame) {
    auto view = std::make_unique<TitledView<ThreeCompView>>(frame);
    view->setObservation(shown);
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
