#pragma once

#include "XOV_Graphics/base/PagedSamples.h"
#include "XOV_Graphics/seismic/io/archive/ExtremesFile.h"

namespace xov {

/// A file whose samples are read by and by, for all of its traces. It stays open, unless very many are: then it is
/// opened for each reading. One that has become another file since `identity` was taken is read no more.
class ArchiveSource;
std::shared_ptr<ArchiveSource> archiveSource(const QString& path, const ArchiveIdentity& identity,
                                             SampleStorage storage);

/// Reads the samples of one trace, which lie at these places.
PagedSamples::Reader sampleReader(std::shared_ptr<ArchiveSource> source, std::vector<SamplePlace> places);

} // namespace xov
