#pragma once

#include "apps/xov/commands/Command.h"
#include "apps/xov/inputs/Records.h"
#include "apps/xov/options/Options.h"
#include "apps/xov/output/ImageOptions.h"
#include "apps/xov/output/Output.h"
#include "apps/xov/prepare/Preparation.h"

#include <XOV_Graphics/grid/Grid.h>
#include <XOV_Graphics/seismic/array/BeamPower.h>
#include <XOV_Graphics/seismic/array/RecordArray.h>
#include <XOV_Graphics/seismic/array/StrongestWindow.h>
#include <optional>
#include <string>
#include <vector>

namespace xov::cli {

/// `xov fk`: the beam power of an array over slowness, from a grid or from the array's recordings.
class FkCommand : public Command {
public:
  void addOptions(const Options& options) override;
  ExitCode run() override;

private:
  void checkOptions() const;
  std::optional<Grid> readGrid();
  std::optional<BeamPower> analyse();
  void sayWhatWasTaken(const BeamPower& beam) const;
  bool chooseWindow(const RecordArray& array, BeamSearch& search);
  ExitCode draw(const Grid& grid, const QString& title);

  RecordInputs inputs_;
  Preparation preparation_;
  QString gridError_; // why the only file is no grid
  std::vector<double> band_;
  std::vector<double> window_;
  std::optional<ArrayWindow> chosen_; // of long recordings, where the user names no window
  std::string circleLabels_ = "velocity";
  bool noPeakValue_ = false;
  std::optional<double> floorDb_; // of powers in decibels
  double limit_ = 0.5;
  int steps_ = 101;
  ImageOptions image_{3};
  Output output_{"fk", {608, 600}};
};

} // namespace xov::cli
