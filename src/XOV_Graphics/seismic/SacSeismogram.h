#pragma once

#include "XOV_Graphics/base/FiniteSum.h"
#include "XOV_Graphics/base/PagedSamples.h"
#include "XOV_Graphics/base/SampleIndex.h"
#include "XOV_Graphics/seismic/Extrema.h"
#include "XOV_Graphics/seismic/SacChannel.h"
#include "XOV_Graphics/seismic/SacFooter.h"
#include "XOV_Graphics/seismic/SacHeader.h"
#include "XOV_Graphics/seismic/SeismogramRecord.h"

#include <atomic>
#include <optional>
#include <span>

namespace xov {

struct SacValues;

/// A trace: samples, and a SAC header for everything else. Readers return it, and a host without files fills a header
/// and hands it over with its samples:
///
///     SacHeader header;
///     header.delta = 0.05F;
///     header.b = 0;
///     header.kstnm = "TLY";
///     auto trace = std::make_shared<SacSeismogram>(header, samples);
///
/// A record is valid whatever the header holds; unset values come back as the interface says.
class XOV_EXPORT SacSeismogram : public SeismogramRecord {
public:
  /// An empty trace with an unset header.
  SacSeismogram();

  /// Takes over the samples. Of the header, npts, depmin and depmax are set to fit them (at most 2147483647 samples
  /// are seen), b to 0 where it is not set, and e to b + (npts - 1) · delta where it is not set or not within reach
  /// of that time (one sample, or a ten-thousandth of the duration). `path` is the file that the trace came from.
  /// With `precise`, its double-precision values replace those of the header.
  explicit SacSeismogram(const SacHeader& header, std::vector<float> samples, QString path = {},
                         std::optional<SacFooter> precise = {});
  /// The same of samples of which these are known already; with an index that does not cover them, it is made.
  SacSeismogram(const SacHeader& header, std::vector<float> samples, SampleIndex index, const FiniteSum& sum,
                QString path, std::optional<SacFooter> precise);
  /// The same of samples that come as they are needed, which must not be null, and what is known of all of them. With
  /// an index that does not cover them, extremes are found in one pass through them.
  SacSeismogram(const SacHeader& header, std::shared_ptr<PagedSamples> samples, SampleIndex index,
                std::optional<FiniteSum> sum, QString path, std::optional<SacFooter> precise);
  /// The same of samples that stay where they are, in memory of the host's that `owner` keeps as long as the record
  /// asks for it. What changes samples copies them first.
  SacSeismogram(const SacHeader& header, std::span<const float> samples, std::shared_ptr<const void> owner,
                QString path = {}, std::optional<SacFooter> precise = {});
  /// The same of a piece of a channel, which must not be null: this one begins at `b` and has samples every `delta`
  /// seconds. A piece of fewer than SampleIndex::kBlock samples takes a hundred bytes beside these, and has no index,
  /// until it is asked for a header of its own or changed. `extrema` are those of its samples, where they are known.
  SacSeismogram(std::shared_ptr<const SacChannel> channel, double b, double delta, std::span<const float> samples,
                const std::optional<Extrema>& extrema = {});
  ~SacSeismogram() override;

  /// Takes over other samples, sets npts, e, depmin and depmax to fit them and computes the extremes.
  void setSamples(std::vector<float> samples);
  /// Gives the samples away; the trace is empty then.
  std::vector<float> takeSamples();
  /// Takes over other header values and another path, as the constructor does. The samples stay, and what is known of
  /// them.
  void setHeader(const SacHeader& header, QString path, std::optional<SacFooter> precise = {});
  /// Keeps `count` samples from `first` on, as far as there are any, and drops those before and behind. The trace
  /// then begins at the first one that is kept.
  void keepSamples(std::size_t first, std::size_t count);
  /// Each sample becomes (sample - offset) · factor in single precision, infinite where it is too large for that. The
  /// extremes follow without another look at the samples while the factor is above 0.
  void rescaleSamples(double offset, double factor);
  /// The samples, which may be changed in place up to the next ComputeExtrema(), which must be sent afterwards; until
  /// then the record has no index of them.
  std::span<float> samples();
  std::span<const float> samples() const;
  /// The header's times and coordinates in double precision: as given to the constructor, else the header's own.
  const SacFooter& preciseValues() const;

  /// All samples, for as long as the record lives: those that come as they are needed are brought into memory,
  /// whatever they take. Who reads some of them asks for borrowedSamples().
  const float* GetSacSeis() const override;
  int npts() const override;
  const SampleIndex* sampleIndex() const override;
  BorrowedSamples borrowedSamples() const override;
  /// What the samples sum up to, where the reader found it and they have stayed as they were.
  const std::optional<FiniteSum>& knownSum() const;
  /// Sample interval as the header has it, also when that is unset or not positive.
  float delta() const override;
  float b() const override;
  float e() const override;
  float a() const override;

  /// Smallest finite sample; 0 when there is none.
  float smin() const override;
  /// Largest finite sample; 0 when there is none.
  float smax() const override;
  /// The larger of |smin| and |smax|.
  float absMax() const override;
  /// Takes no time while nobody has been handed the samples to change them.
  void ComputeExtrema() override;

  /// Text fields without padding; empty when unset.
  QString kstnm() const override;
  QString knetwk() const override;
  QString kcmpnm() const override;
  QString khole() const override;
  QString kuser0() const override;

  /// Distance and directions as the header has them. Where it has not, and it has the coordinates of event and
  /// station, they come from greatCircle().
  float gcarc() const override;
  float azimuth() const override;
  float backazimuth() const override;
  /// Depth in km. A header with more than 1000 has metres, which the format once asked for: a thousandth of it.
  float evdp() const override;
  /// The event's coordinates as text (coordinatesText()), since no table of the regions is at hand; empty when they
  /// are not set, and for latitude and longitude 0 of an event without origin time and depth.
  QString flinnEngdahlString() const override;
  QString flinnEngdahlGeographicRegion() const override;
  /// Reference time plus origin time offset, rounded to a tenth of a second, as "2011/03/11 05:46:23.7" (UTC). Empty
  /// when either is unknown.
  QString oTimeString() const override;

  float originTimeOffset() const override;
  float pTime() const override;
  float timePickKey(int key) const override;
  QString pickLabelWithKey(int key) const override;
  /// Left out: what a header does not have is not written.
  UnsetNumbers unsetNumbers() const override;

  std::shared_ptr<SeisTime> mySeisReferenceTime() const override;
  const SacHeader* GetSacHeader() const override;

  /// Network, station, location and component joined by points, as "II.TLY.00.BHZ" (a missing one is left empty);
  /// where all four are missing, the name of the file without its folders.
  QString labelString() const override;
  QString path() const override;

private:
  struct Own;

  const SacValues& values() const;
  SacValues& ownValues();
  const SacHeader& commonValues() const;
  void leaveChannel();
  void takeHeader(const SacHeader& header, const std::optional<SacFooter>& precise);
  void fitHeaderToSamples();
  void findExtrema();
  void takeIndex();
  void noteExtrema(const std::optional<Extrema>& known = {});
  bool mayChange() const;
  PagedSamples* paged() const;
  void bringIntoMemory();
  bool hasEventPlace() const;

  std::shared_ptr<const SacChannel> channel_; ///< of a piece that has not been changed
  double pieceBegin_ = 0;                     ///< of such a piece
  double pieceInterval_ = 0;
  std::span<const float> stored_; ///< the samples, which need not be in memory
  Extrema extrema_;
  mutable std::atomic<SacValues*> values_ = nullptr; ///< owned; of such a piece, made where they are asked for
  std::unique_ptr<SampleIndex> index_;               ///< none of a short one
  std::unique_ptr<Own> own_;                         ///< none of any
};

} // namespace xov
