#pragma once

#include "apps/xov/commands/Command.h"
#include "apps/xov/options/Options.h"
#include "apps/xov/output/Output.h"

#include <XOV_Graphics/views/seismic/FocalMechanismView.h>
#include <array>
#include <optional>
#include <string>
#include <vector>

namespace xov::cli {

/// `xov mechanism`: focal mechanisms of event files, or one from its angles or its tensor, as beach balls.
class MechanismCommand : public Command {
public:
  void addOptions(const Options& options) override;
  ExitCode run() override;

private:
  static constexpr std::size_t kMostBalls = 400;

  void checkOptions();
  /// What the command line tells by itself.
  std::optional<CaptionedMechanism> given() const;
  bool readFile(const std::string& path, std::vector<CaptionedMechanism>& found) const;

  std::vector<std::string> files_;
  std::optional<double> strike_;
  std::optional<double> dip_;
  std::optional<double> rake_;
  std::optional<std::array<double, 6>> tensor_;
  std::optional<int> event_; // from 1 on
  std::string color_ = "black";
  bool plain_ = false;
  Output output_{"mechanism", {560, 340}};
};

} // namespace xov::cli
