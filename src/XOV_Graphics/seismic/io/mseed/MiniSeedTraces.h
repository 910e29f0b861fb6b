#pragma once

#include "XOV_Graphics/seismic/ArchiveContents.h"
#include "XOV_Graphics/seismic/Extrema.h"
#include "XOV_Graphics/seismic/SacChannel.h"
#include "XOV_Graphics/seismic/SeismogramSummary.h"
#include "XOV_Graphics/seismic/io/mseed/MiniSeedIndex.h"

#include <limits>
#include <map>

namespace xov {

/// A stretch of a piece without a record that could not be decoded: its samples, or what they amount to, or where
/// they lie.
struct Stretch {
  /// Samples in memory that other stretches have a part of, too.
  struct SharedSamples {
    const float* samples = nullptr;
    std::size_t count = 0;
    std::shared_ptr<const void> owner;
    std::optional<Extrema> extrema; ///< where they are known
  };

  PieceExtent extent;
  std::vector<float> samples;
  SharedSamples shared; ///< in place of these
  SampleTally tally;
  std::vector<SamplePlace> places;
};

/// The stretches of one channel.
class Stretches {
public:
  /// The stretch that a record goes on with, a new one where its piece begins or was broken. Valid until the next
  /// call.
  Stretch& add(std::size_t piece, const MiniSeedSpan& span);
  /// After a record of the piece that cannot be decoded.
  void breakOff(std::size_t piece);

  /// Gives the stretches away, in time order.
  std::vector<Stretch> take();

private:
  static constexpr std::size_t kNone = std::numeric_limits<std::size_t>::max();

  std::size_t& openOf(std::size_t piece);

  std::vector<Stretch> all_;
  std::vector<std::size_t> open_; // of each piece, the number of the stretch that goes on; kNone where none does
};

/// Records, and what the samples of each amount to where those are not kept; or traces of which the places are known.
struct MiniSeedTraces {
  SeismogramArray records;
  std::vector<SampleTally> tallies;
  std::vector<ArchivedTrace> located;

  /// Appends the stretches of a channel, which are in time order.
  void append(const ChannelCodes& codes, std::vector<Stretch> stretches, const QString& path);
};

/// Appends the stretches of a channel one by one, in time order. They share a reference time, the start of the first
/// one.
class ChannelTraces {
public:
  ChannelTraces(MiniSeedTraces& traces, const ChannelCodes& codes, std::int64_t startUs, const QString& path);

  void add(Stretch stretch);
  void add(const PieceExtent& extent, const Stretch::SharedSamples& samples);

private:
  const std::shared_ptr<const SacChannel>& channelWith(const std::shared_ptr<const void>& owner);

  MiniSeedTraces& traces_;
  std::int64_t referenceMs_;
  QString path_;
  SacHeader header_;
  std::map<const void*, std::shared_ptr<const SacChannel>> channels_; // by the owner of samples
  std::shared_ptr<const SacChannel> latest_;                          // of these
};

/// Adds the samples of a record in that encoding.
void addToTally(SampleTally& tally, MiniSeedEncoding encoding, std::span<const float> samples);

} // namespace xov
