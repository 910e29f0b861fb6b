#pragma once

#include "apps/xov/commands/Command.h"
#include "apps/xov/inputs/Records.h"
#include "apps/xov/options/Options.h"
#include "apps/xov/output/Output.h"
#include "apps/xov/prepare/Preparation.h"

#include <XOV_Graphics/seismic/prepare/SpectrumPieces.h>
#include <XOV_Graphics/seismic/signal/PowerSpectrum.h>
#include <XOV_Graphics/views/xy/PowerSpectraView.h>
#include <vector>

namespace xov::cli {

/// `xov spectrum`: power spectral densities of recordings over frequency.
class SpectrumCommand : public Command {
public:
  void addOptions(const Options& options) override;
  ExitCode run() override;

private:
  void checkOptions() const;
  PowerSpectrum estimate(const SeismogramArray& channel) const;
  SpectrumCurve curveOf(const SeismogramArray& channel, const PowerSpectrum& spectrum,
                        const SpectralUnit& unit) const;
  bool isInDecibels(const SpectralUnit& unit) const;
  QString unitText(const SpectralUnit& unit) const;

  RecordInputs inputs_;
  Preparation preparation_;
  Output output_{"spectrum", {720, 540}};
  std::string method_ = "welch";
  double window_ = 0; // seconds; 0 chooses
  double overlap_ = 0.5;
  int tapers_ = kUsualTapers;
  std::string smoothing_;
  double bandwidth_ = kUsualBandwidth;
  std::vector<double> band_;
  bool noiseModels_ = false;
  bool decibels_ = false;
  bool linearFrequency_ = false;
};

} // namespace xov::cli
