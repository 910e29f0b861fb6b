#pragma once

#include "apps/xov/commands/Command.h"
#include "apps/xov/options/Options.h"
#include "apps/xov/output/ImageOptions.h"
#include "apps/xov/output/Output.h"
#include "apps/xov/prepare/Recording.h"

#include <vector>

namespace xov::cli {

/// `xov ppsd`: how often the noise of a recording has which power, by period.
class PpsdCommand : public Command {
public:
  void addOptions(const Options& options) override;
  ExitCode run() override;

private:
  RecordInputs inputs_;
  Preparation preparation_;
  ImageOptions image_{"viridis", 256};
  Output output_{"ppsd", {720, 540}};
  double segment_ = 3600; // seconds
  double overlap_ = 0.5;
  std::vector<double> decibels_; // both ends, or not given
  bool withoutNoiseModels_ = false;
  bool withoutPercentiles_ = false;
};

} // namespace xov::cli
