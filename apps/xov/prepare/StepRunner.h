#pragma once

#include "apps/xov/prepare/PreparationStep.h"

#include <QStringList>

#include <XOV_Graphics/seismic/SeismogramRecord.h>

namespace xov::cli {

/// What steps made of records.
struct ReadyRecords {
  SeismogramArray records;
  QStringList files;    ///< for each record, the file it came from
  QStringList problems; ///< what could not be done: one line for a record, which is left out
  QStringList notes;    ///< what stayed as it was, and why
};

/// Does the steps one after the other. A record that one of them fails for is left out, with its problem; a piece of
/// a recording that a window leaves nothing of is left out without one where other pieces of that channel have some.
/// Records must not be null; the originals stay as they are.
ReadyRecords makeReady(SeismogramArray records, QStringList files, const std::vector<PreparationStep>& steps,
                       const StepSettings& settings);

/// Whether a step counts in seconds on the records' time axis.
bool countsOnAxis(const std::vector<PreparationStep>& steps);

} // namespace xov::cli
