#pragma once

#include "XOV_Graphics/base/PagedSamples.h"
#include "XOV_Graphics/seismic/io/archive/JoinedFiles.h"

namespace xov {

/// Files whose samples are read by and by, for all of their traces. The one that was read last stays open, unless
/// very many are: then it is opened for each reading. One that has become another file since it was looked at is read
/// no more.
class ArchiveSource;
std::shared_ptr<ArchiveSource> archiveSource(std::vector<JoinedFile> files, SampleStorage storage);

/// The first reason for samples that could not be read, as one line that names the file; empty while all could.
QString firstFault(const ArchiveSource& source);

/// From now on takeSampleFaults() tells of this source: its records are in use.
void tellOfFaults(ArchiveSource& source);

/// Reads the samples of one trace, which lie at these places.
PagedSamples::Reader sampleReader(std::shared_ptr<ArchiveSource> source, std::vector<SamplePlace> places);

} // namespace xov
