#pragma once

#include "XOV_Graphics/base/Result.h"
#include "XOV_Graphics/seismic/io/mseed/MiniSeedRecord.h"

#include <memory>
#include <span>
#include <vector>

namespace xov {

/// Turns the samples of miniSEED records into floats. Integers, floats and Steim's frames are decoded here; libmseed,
/// known to this file's source only, does the rare encodings and says what is wrong with frames that are damaged.
class MiniSeedSamples {
public:
  MiniSeedSamples();
  ~MiniSeedSamples();
  MiniSeedSamples(const MiniSeedSamples&) = delete;
  MiniSeedSamples& operator=(const MiniSeedSamples&) = delete;

  /// Decodes the samples of a record of that format, whose bytes are given, format.length of them; `samples` has room
  /// for its samples, as many as the format has room for at most. What is wrong, in a few words, when they cannot be
  /// decoded. Compressed samples that do not end at the value that the record has for their end are given all the
  /// same, with that as the `doubt`; where the record does not state that they are compressed, they are refused. Not
  /// for text.
  Status decode(const SampleFormat& format, QByteArrayView bytes, std::span<float> samples, QString& doubt);

  /// The same by libmseed alone.
  Status decodeByLibrary(const SampleFormat& format, QByteArrayView bytes, std::span<float> samples, QString& doubt);

private:
  struct Library;
  std::unique_ptr<Library> library_;
  std::vector<char> aligned_;
};

} // namespace xov
