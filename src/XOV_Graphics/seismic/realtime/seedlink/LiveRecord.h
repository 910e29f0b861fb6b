#pragma once

#include "XOV_Graphics/base/Result.h"
#include "XOV_Graphics/seismic/ChannelPatterns.h"
#include "XOV_Graphics/seismic/SacHeader.h"
#include "XOV_Graphics/seismic/realtime/ChannelArrival.h"

#include <QByteArrayView>

#include <cstdint>
#include <memory>
#include <vector>

namespace xov {

class MiniSeedSamples;

/// What a miniSEED record holds that arrives by itself.
struct XOV_EXPORT LiveRecord {
  ChannelCodes codes;       ///< network, station, location, channel
  std::int64_t startUs = 0; ///< time of the first sample, microseconds since 1970
  double rateHz = 0;        ///< above 0 where there are samples
  /// None where the record says something else than samples.
  std::vector<float> samples;
  double arrivalSeconds = 0; ///< when a client received it, seconds since 1970 by its machine's clock

  /// Time of the first sample, seconds since 1970.
  double startSeconds() const;
  /// Time between samples; only where there are any.
  double deltaSeconds() const { return 1 / rateHz; }
  /// How far its channel has come with it; that of the start where there are no samples.
  ChannelArrival arrival() const;
  /// A header with the codes, for RealTimeFeed.
  SacHeader header() const;
  /// The station's identifier, as "GE_WLF".
  QByteArray station() const;
};

/// Reads single miniSEED records of version 2 or 3, one after the other.
class LiveRecordReader {
public:
  LiveRecordReader();
  ~LiveRecordReader();
  LiveRecordReader(const LiveRecordReader&) = delete;
  LiveRecordReader& operator=(const LiveRecordReader&) = delete;

  /// The record that `bytes` begin with. One of text, or of no samples, has none. What is wrong, in one line, where
  /// it is no record or a damaged one.
  Result<LiveRecord> read(QByteArrayView bytes);

private:
  std::unique_ptr<MiniSeedSamples> samples_;
};

} // namespace xov
