#include "apps/xov/commands/MotionCommand.h"

#include <XOV_Graphics/seismic/prepare/Components.h>
#include <XOV_Graphics/seismic/prepare/ParticleMotion.h>
#include <XOV_Graphics/views/seismic/ParticleMotionView.h>
#include <algorithm>

namespace xov::cli {

void MotionCommand::addOptions(const Options& options) {
  inputs_.addOptions(options);
  components_.addOption(options, "Codes of the vertical and the two horizontal components, as BHZ BHN BHE or Z R T",
                        "V A B");
  options.addFlag("--no-polarization", noPolarization_, "Draw the path alone");
  preparation_.addOptions(options);
  output_.addOptions(options);
}

ExitCode MotionCommand::run() {
  const Records found = preparation_.apply(inputs_.read());
  if (found.records.empty()) return ExitCode::Failed;
  const Result<ThreeComponents> components = components_.of(found.records);
  if (!components) {
    complain(components.error());
    return ExitCode::Failed;
  }
  const Result<ParticleMotion> motion = particleMotionOf(*components);
  if (!motion) {
    complain(motion.error());
    return ExitCode::Failed;
  }
  const QString station = (*components)[0]->labelString();
  const ExitCode delivered = output_.deliver([&](const QRectF& frame) {
    auto view = std::make_unique<ParticleMotionView>(frame);
    view->setMotion(*motion);
    view->setShowPolarization(!noPolarization_);
    view->setTitle(output_.titleOr(station));
    view->setSubtitle(preparation_.text());
    return view;
  });
  return std::max(found.status, delivered);
}

} // namespace xov::cli
