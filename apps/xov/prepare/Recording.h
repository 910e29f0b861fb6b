#pragma once

#include "apps/xov/inputs/Records.h"
#include "apps/xov/prepare/Preparation.h"

#include <optional>

namespace xov::cli {

/// The pieces of one channel on one time axis, for the commands that draw the spectra of a recording.
struct Recording {
  SeismogramArray pieces;
  ExitCode status = ExitCode::Ok; ///< as of Records
};

/// Reads and prepares the records. None, which has been said, when nothing is left or several channels are.
std::optional<Recording> readRecording(const RecordInputs& inputs, const Preparation& preparation);

/// The channel, with region and origin time of the event where the records know them.
QString titleOfRecording(const SeismogramArray& pieces);

} // namespace xov::cli
