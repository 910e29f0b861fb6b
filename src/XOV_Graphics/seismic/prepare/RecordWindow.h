#pragma once

#include "XOV_Graphics/base/Export.h"
#include "XOV_Graphics/base/Result.h"
#include "XOV_Graphics/seismic/SacFooter.h"
#include "XOV_Graphics/seismic/SacHeader.h"
#include "XOV_Graphics/seismic/SeismogramRecord.h"

#include <QDateTime>

#include <span>
#include <variant>

namespace xov {

/// A piece of a record, as a record: it borrows the samples of another one and answers for those that lie between two
/// times. What does not depend on the samples (codes, event, picks, reference time, path) comes from the record, and
/// so do changes of it. Any view shows a window as it shows the record, from any part of a recording to a page of a
/// drum; setSpan() zooms without touching a sample.
///
/// A sample on a border belongs to the window. Times are in double precision; where the record knows its own in
/// single precision only, a sample that misses the border by no more than their rounding counts as on it (half an
/// interval at most). A window may hold no sample: then npts() is 0 and GetSacSeis() null, and it begins and ends at
/// its start. One that follows from a record without samples, a positive interval or, for UTC, a reference time holds
/// none.
///
/// Windows of channels as they arrive follow them: each query looks where the record's samples lie now. A window in
/// UTC stays at its time: it fills as samples arrive, shrinks as the buffer drops them, and is empty in the end. One
/// in seconds counts from the record's base time, and moves with it. Its samples are valid as long as the record's,
/// which for RealTimeSeismogram is until the next append(). The extremes are those of the samples that it holds; what
/// changes its samples without adding or dropping any, as late ones do, is seen by ComputeExtrema().
///
/// As long as the record does not change, queries may come from several threads.
class XOV_EXPORT RecordWindow : public SeismogramRecord {
public:
  /// From `start` to `end`, in seconds on the record's axis; an infinite border is open. A null record is one without
  /// samples.
  RecordWindow(std::shared_ptr<SeismogramRecord> record, double start, double end);
  /// From `start` to `end`, given in any zone; an invalid border is open.
  RecordWindow(std::shared_ptr<SeismogramRecord> record, const QDateTime& start, const QDateTime& end);
  ~RecordWindow() override;

  /// Shows another time of the same record.
  void setSpan(double start, double end);
  void setSpan(const QDateTime& start, const QDateTime& end);

  /// The record whose samples these are; never null.
  const std::shared_ptr<SeismogramRecord>& record() const { return record_; }
  /// The index in the record of the window's first sample.
  std::size_t firstIndex() const;
  /// The samples of the window.
  std::span<const float> samples() const;
  /// The record's values in double precision, with begin and end of the window.
  const SacFooter& preciseValues() const;

  const float* GetSacSeis() const override;
  int npts() const override;
  const SampleIndex* sampleIndex() const override;
  BorrowedSamples borrowedSamples() const override;
  float delta() const override;
  /// Time of the window's first sample; of an empty window its start, or its end where that is open.
  float b() const override;
  float e() const override;
  float a() const override;

  /// Smallest finite sample of the window; 0 when there is none.
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

  float originTimeOffset() const override;
  float pTime() const override;
  float timePickKey(int key) const override;
  QString pickLabelWithKey(int key) const override;

  std::shared_ptr<SeisTime> mySeisReferenceTime() const override;
  /// The record's header with number, times and extremes of the window's samples, and no mean.
  const SacHeader* GetSacHeader() const override;

  UnsetNumbers unsetNumbers() const override;
  QString labelString() const override;
  QString path() const override;

private:
  struct Seconds {
    double start;
    double end;
  };
  struct Moments {
    QDateTime start;
    QDateTime end;
  };
  /// What the window follows from: while it stays, so does the window.
  struct Source {
    const float* samples = nullptr;
    int npts = 0;
    float b = 0;
    float delta = 0;
    QDateTime reference;
    bool operator==(const Source&) const = default;
  };
  struct Piece {
    Source source;
    std::span<const float> samples;
    std::size_t first = 0;
    SacFooter precise;
    SacHeader header;
  };

  Source sourceNow() const;
  Seconds secondsFrom(const QDateTime& reference) const;
  Piece pieceOf(const Source& source) const;
  const Piece& piece() const;

  std::shared_ptr<SeismogramRecord> record_;
  std::variant<Seconds, Moments> span_;
  mutable Piece piece_; // of the record as it was at the last query
};

/// The window of `record` from `start` to `end`, in seconds on its axis; an infinite border is open. Refuses a window
/// without a sample, in a line that says what the record has. `record` must not be null.
XOV_EXPORT Result<std::shared_ptr<RecordWindow>> windowOf(std::shared_ptr<SeismogramRecord> record, double start,
                                                          double end);
/// The same from time to time, given in any zone; an invalid border is open. Refuses a record without a reference
/// time, too.
XOV_EXPORT Result<std::shared_ptr<RecordWindow>> windowOf(std::shared_ptr<SeismogramRecord> record,
                                                          const QDateTime& start, const QDateTime& end);

} // namespace xov
