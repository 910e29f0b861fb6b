#pragma once

#include "XOV_Graphics/base/Export.h"
#include "XOV_Graphics/base/SampleSource.h"
#include "XOV_Graphics/seismic/SeisTime.h"

#include <QString>

#include <memory>
#include <vector>

namespace xov {

struct SacHeader;

/// What captions make of numbers that are not set.
enum class UnsetNumbers {
  Shown,   ///< they are written like any others
  LeftOut, ///< they are left out, with the words around them
};

/// One trace with its header values and picks, as the plot views read it. A host implements this interface over its
/// own data, or fills a SacSeismogram.
///
/// Times are seconds on the trace's own axis, whose zero is the reference time mySeisReferenceTime(). A value that is
/// not set is kUndefinedValue (-12345), a label that is not set the text "-12345". Every operation but
/// ComputeExtrema() is a plain query.
class XOV_EXPORT SeismogramRecord {
public:
  SeismogramRecord() = default;
  SeismogramRecord(const SeismogramRecord&) = delete;
  SeismogramRecord& operator=(const SeismogramRecord&) = delete;
  virtual ~SeismogramRecord();

  /// The samples, npts() of them in one piece; sample i lies at time b() + i · delta(). They stay owned by the record
  /// and valid while it lives. May be null when npts() is 0.
  virtual const float* GetSacSeis() const = 0;
  /// Number of samples.
  virtual int npts() const = 0;
  /// An index of the extremes of these samples, with which long records are drawn in a fraction of the time; null
  /// where the record keeps none. It stays owned by the record and valid while the samples are.
  virtual const SampleIndex* sampleIndex() const { return nullptr; }
  /// The same for those that read some of the samples and hold those: of a record whose samples are not all in memory
  /// it brings none there. As long valid as the samples.
  virtual BorrowedSamples borrowedSamples() const { return {GetSacSeis(), sampleIndex(), nullptr}; }
  /// Sample interval in seconds.
  virtual float delta() const = 0;
  /// Time of the first sample in seconds.
  virtual float b() const = 0;
  /// Time of the last sample in seconds.
  virtual float e() const = 0;
  /// Time of the first-arrival pick in seconds.
  virtual float a() const = 0;

  /// Smallest sample.
  virtual float smin() const = 0;
  /// Largest sample.
  virtual float smax() const = 0;
  /// Largest absolute value of a sample.
  virtual float absMax() const = 0;
  /// Computes smin(), smax() and absMax() anew from the samples.
  virtual void ComputeExtrema() = 0;

  /// Station code.
  virtual QString kstnm() const = 0;
  /// Network code.
  virtual QString knetwk() const = 0;
  /// Component (channel) code.
  virtual QString kcmpnm() const = 0;
  /// Location code.
  virtual QString khole() const = 0;
  /// A label of the user's own.
  virtual QString kuser0() const = 0;

  /// Distance from the event to the station in degrees.
  virtual float gcarc() const = 0;
  /// Direction from the event to the station, degrees clockwise from north.
  virtual float azimuth() const = 0;
  /// Direction from the station to the event, degrees clockwise from north.
  virtual float backazimuth() const = 0;
  /// Depth of the event in km.
  virtual float evdp() const = 0;
  /// Name of the Flinn-Engdahl region of the event.
  virtual QString flinnEngdahlString() const = 0;
  /// Name of the Flinn-Engdahl geographic region of the event.
  virtual QString flinnEngdahlGeographicRegion() const = 0;
  /// Origin time of the event, formatted for display.
  virtual QString oTimeString() const = 0;

  /// Origin time of the event on the trace's time axis in seconds.
  virtual float originTimeOffset() const = 0;
  /// Time of the first-arrival pick in seconds.
  virtual float pTime() const = 0;
  /// Time of a pick in seconds: keys 0 to 9 are T0 to T9, 10 the first arrival (A), 11 the end of the signal (F).
  /// kUndefinedValue for any other key.
  virtual float timePickKey(int key) const = 0;
  /// Label of the pick with that key, or "-12345" when it has none.
  virtual QString pickLabelWithKey(int key) const = 0;

  /// The moment that the trace's time axis counts from; never null, an unknown time when it is not known.
  virtual std::shared_ptr<SeisTime> mySeisReferenceTime() const = 0;
  /// The header block. It stays owned by the record and valid while it lives.
  virtual const SacHeader* GetSacHeader() const = 0;

  /// How the captions of the plot views treat distance, directions and depth of this record that are not set; region
  /// and origin time then are not named without a text either. A host's own records are shown with what they answer.
  virtual UnsetNumbers unsetNumbers() const { return UnsetNumbers::Shown; }
  /// Caption of the trace in real-time displays.
  virtual QString labelString() const = 0;
  /// Full path of the file that the trace came from; empty when it came from none.
  virtual QString path() const = 0;
};

/// Several traces, as readers return them and views take them.
using SeismogramArray = std::vector<std::shared_ptr<SeismogramRecord>>;

} // namespace xov
