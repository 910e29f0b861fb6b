#pragma once

#include "apps/xov/commands/Command.h"
#include "apps/xov/inputs/TimeAxisOption.h"
#include "apps/xov/options/Options.h"
#include "apps/xov/output/ImageOptions.h"
#include "apps/xov/output/Output.h"
#include "apps/xov/prepare/Recording.h"

#include <vector>

namespace xov::cli {

/// `xov spectrogram`: the power of a recording over time and frequency.
class SpectrogramCommand : public Command {
public:
  void addOptions(const Options& options) override;
  ExitCode run() override;

private:
  RecordInputs inputs_;
  Preparation preparation_;
  TimeAxisOption timeAxis_;
  ImageOptions image_{"viridis", 256};
  Output output_{"spectrogram", {900, 600}};
  double window_ = 0; // seconds; 0 chooses
  double overlap_ = 0.5;
  std::vector<double> decibels_; // both ends, or not given
  std::vector<double> band_;
  bool logFrequency_ = false;
  bool withoutSeismogram_ = false;
};

} // namespace xov::cli
