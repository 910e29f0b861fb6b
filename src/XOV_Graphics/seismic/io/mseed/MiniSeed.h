#pragma once

#include "XOV_Graphics/base/Result.h"
#include "XOV_Graphics/seismic/ArchiveContents.h"
#include "XOV_Graphics/seismic/SeismogramFile.h"
#include "XOV_Graphics/seismic/SeismogramSummary.h"

#include <QByteArrayView>
#include <QIODevice>

namespace xov {

/// Whether a file that begins so holds miniSEED: a record at the start or further on, the control headers that full
/// SEED begins with, or the letters of miniSEED 3.
bool isMiniSeed(QByteArrayView head);

/// Reads a miniSEED file from a device, which can be sequentially read twice. Errors and notes call it `name`; the
/// records get `path`.
Result<SeismogramFile> readMiniSeedDevice(QIODevice& device, const QString& name, const QString& path,
                                          const SeismogramReadOptions& options);

/// The same without ever holding more samples than those of one record.
Result<SeismogramFileSummary> summarizeMiniSeedDevice(QIODevice& device, const QString& name, const QString& path,
                                                      const SeismogramReadOptions& options);

/// Finds where the samples of its traces lie, of all channels. Each record is decoded once, so that those are left
/// out that cannot be.
Result<ArchiveContents> locateMiniSeedDevice(QIODevice& device, const QString& name);

} // namespace xov
