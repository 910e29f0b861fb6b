#pragma once

#include <QString>

#include <XOV_Graphics/base/Result.h>
#include <XOV_Graphics/seismic/SeismogramFile.h>
#include <XOV_Graphics/seismic/SeismogramSummary.h>

namespace xov::cli {

/// Reads the seismograms of a file, a pipe, or of standard input where the name is "-". What comes out of a pipe goes
/// into a temporary file first: seismogram files are read in more than one pass.
Result<SeismogramFile> readInputFile(const QString& name, const SeismogramReadOptions& options);

/// The same, summed up.
Result<SeismogramFileSummary> summarizeInputFile(const QString& name, const SeismogramReadOptions& options);

} // namespace xov::cli
