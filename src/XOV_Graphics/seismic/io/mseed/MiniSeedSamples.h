#pragma once

#include "XOV_Graphics/base/Result.h"
#include "XOV_Graphics/seismic/io/mseed/MiniSeedRecord.h"

#include <memory>
#include <span>
#include <vector>

namespace xov {

/// Turns the samples of miniSEED records into floats. What does the work, libmseed, is known to this file's source
/// only.
class MiniSeedSamples {
public:
  MiniSeedSamples();
  ~MiniSeedSamples();
  MiniSeedSamples(const MiniSeedSamples&) = delete;
  MiniSeedSamples& operator=(const MiniSeedSamples&) = delete;

  /// Decodes the samples of `record`, whose bytes are given, record.length of them; `samples` has room for
  /// record.sampleCount. What is wrong, in a few words, when they cannot be decoded, or when compressed samples do
  /// not end at the value that the record has for their end. Not for text.
  Status decode(const MiniSeedRecord& record, QByteArrayView bytes, std::span<float> samples);

private:
  struct Library;
  std::unique_ptr<Library> library_;
  std::vector<char> aligned_;
};

} // namespace xov
