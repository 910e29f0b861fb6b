#pragma once

#include "XOV_Graphics/seismic/SacHeader.h"
#include "XOV_Graphics/seismic/SeismogramRecord.h"
#include "XOV_Graphics/seismic/Undefined.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <optional>
#include <vector>

namespace xov::testing {

/// A record whose every answer a test can set, whether the answers fit each other or not.
class FakeRecord : public SeismogramRecord {
public:
  FakeRecord() = default;
  explicit FakeRecord(std::vector<float> values, float interval = 1, float begin = 0)
      : samples(std::move(values)),
        deltaSeconds(interval),
        beginSeconds(begin) {
    ComputeExtrema();
  }

  std::vector<float> samples;
  float deltaSeconds = 1;
  float beginSeconds = 0;
  std::optional<float> endSeconds; ///< from the samples when not set
  float arrivalSeconds = kUndefinedValue;
  float lowest = 0, highest = 0, peak = 0;
  QString station, network, component, location, user, region, geographicRegion, originTime, caption, file;
  float distanceDeg = 0, azimuthDeg = 0, backAzimuthDeg = 0, depthKm = 0;
  float originSeconds = kUndefinedValue;
  float firstArrivalSeconds = kUndefinedValue;
  std::map<int, float> picks;
  std::map<int, QString> labels;
  SacHeader header;
  std::shared_ptr<SeisTime> reference;
  int extremaComputed = 0;

  const float* GetSacSeis() const override { return samples.empty() ? nullptr : samples.data(); }
  int npts() const override { return int(samples.size()); }
  float delta() const override { return deltaSeconds; }
  float b() const override { return beginSeconds; }
  float e() const override {
    return endSeconds.value_or(beginSeconds + deltaSeconds * float(std::max(0, int(samples.size()) - 1)));
  }
  float a() const override { return arrivalSeconds; }
  float smin() const override { return lowest; }
  float smax() const override { return highest; }
  float absMax() const override { return peak; }
  void ComputeExtrema() override {
    ++extremaComputed;
    bool any = false;
    lowest = highest = 0;
    for (const float value : samples) {
      if (!std::isfinite(value)) continue;
      lowest = any ? std::min(lowest, value) : value;
      highest = any ? std::max(highest, value) : value;
      any = true;
    }
    peak = std::max(std::abs(lowest), std::abs(highest));
  }
  QString kstnm() const override { return station; }
  QString knetwk() const override { return network; }
  QString kcmpnm() const override { return component; }
  QString khole() const override { return location; }
  QString kuser0() const override { return user; }
  float gcarc() const override { return distanceDeg; }
  float azimuth() const override { return azimuthDeg; }
  float backazimuth() const override { return backAzimuthDeg; }
  float evdp() const override { return depthKm; }
  QString flinnEngdahlString() const override { return region; }
  QString flinnEngdahlGeographicRegion() const override { return geographicRegion; }
  QString oTimeString() const override { return originTime; }
  float originTimeOffset() const override { return originSeconds; }
  float pTime() const override { return firstArrivalSeconds; }
  float timePickKey(int key) const override {
    const auto found = picks.find(key);
    return found == picks.end() ? kUndefinedValue : found->second;
  }
  QString pickLabelWithKey(int key) const override {
    const auto found = labels.find(key);
    return found == labels.end() ? QString::fromLatin1(kUndefinedLabel) : found->second;
  }
  std::shared_ptr<SeisTime> mySeisReferenceTime() const override { return reference; }
  const SacHeader* GetSacHeader() const override { return &header; }
  QString labelString() const override { return caption; }
  QString path() const override { return file; }
};

} // namespace xov::testing
