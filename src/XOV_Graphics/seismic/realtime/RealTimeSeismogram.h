#pragma once

#include "XOV_Graphics/seismic/SacSeismogram.h"
#include "XOV_Graphics/seismic/realtime/ChannelArrival.h"
#include "XOV_Graphics/seismic/realtime/SampleBuffer.h"

#include <optional>

namespace xov {

/// A channel as it arrives: a record over the latest samples, with NaN where none arrived.
///
/// Its times count from a base time that the host moves along, so that they stay small enough for single precision:
/// b() grows as old samples leave the buffer, and falls back when the base moves. It starts without samples.
class XOV_EXPORT RealTimeSeismogram : public SeismogramRecord {
public:
  /// A channel with the codes and other values of `header`, of which the times and numbers that depend on samples do
  /// not matter. The buffer holds the latest `seconds`.
  RealTimeSeismogram(const SacHeader& header, double seconds);
  ~RealTimeSeismogram() override;

  /// Puts samples where they belong; `startSeconds` is the time of the first one, since 1970 (UTC). Another interval
  /// than before, by more than a ten-thousandth, starts the buffer anew. Nothing happens for an interval that is not
  /// above 0.
  void append(double startSeconds, double deltaSeconds, std::span<const float> samples);

  /// The same of a packet that arrived at `arrivalSeconds` by the host's clock, since 1970 (UTC).
  void append(double startSeconds, double deltaSeconds, std::span<const float> samples, double arrivalSeconds);

  /// How far the channel has come; nothing as long as no packet with the time of its arrival has come.
  const std::optional<ChannelArrival>& arrival() const { return arrival_; }

  /// The instant that times count from; 1970 at first. An invalid one changes nothing.
  void setBaseTime(const QDateTime& base);
  QDateTime baseTime() const;

  /// The samples in the buffer.
  const SampleBuffer& buffer() const { return buffer_; }

  /// The samples, oldest first; valid until the next append().
  const float* GetSacSeis() const override;
  int npts() const override;
  /// Kept up as samples arrive.
  const SampleIndex* sampleIndex() const override;
  /// The interval of the samples; unset before the first ones.
  float delta() const override;
  float b() const override;
  float e() const override;
  float a() const override;

  /// The extremes of all samples since the last ComputeExtrema(), which narrows them to those in the buffer.
  float smin() const override;
  float smax() const override;
  float absMax() const override;
  void ComputeExtrema() override;

  QString kstnm() const override;
  QString knetwk() const override;
  QString kcmpnm() const override;
  QString khole() const override;
  QString kuser0() const override;

  float gcarc() const override;
  float azimuth() const override;
  float backazimuth() const override;
  float evdp() const override;
  QString flinnEngdahlString() const override;
  QString flinnEngdahlGeographicRegion() const override;
  QString oTimeString() const override;

  /// Origin time and picks are not known while a channel arrives.
  float originTimeOffset() const override;
  float pTime() const override;
  float timePickKey(int key) const override;
  QString pickLabelWithKey(int key) const override;
  UnsetNumbers unsetNumbers() const override;

  /// The base time.
  std::shared_ptr<SeisTime> mySeisReferenceTime() const override;
  const SacHeader* GetSacHeader() const override;
  QString labelString() const override;
  QString path() const override;

private:
  void widenExtrema(std::span<const float> samples);
  void describeSamples();

  double seconds_;
  SampleBuffer buffer_;
  Extrema extrema_;
  bool hasExtrema_ = false;
  SacHeader header_;
  SacSeismogram described_; // answers for everything that samples do not change
  std::shared_ptr<SeisTime> base_;
  std::optional<ChannelArrival> arrival_;
};

} // namespace xov
