#include "XOV_Graphics/seismic/SacSeismogram.h"

#include "XOV_Graphics/base/Numbers.h"
#include "XOV_Graphics/base/TaskPool.h"
#include "XOV_Graphics/seismic/Geodesy.h"
#include "XOV_Graphics/seismic/Picks.h"
#include "XOV_Graphics/seismic/UtcTime.h"

#include <QFileInfo>
#include <QLocale>
#include <QStringList>

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <utility>

namespace xov {

namespace {

struct Pick {
  float SacHeader::*time;
  SacText<8> SacHeader::*label;
};

// In the order of the pick keys.
constexpr Pick kPicks[] = {
    {&SacHeader::t0, &SacHeader::kt0}, {&SacHeader::t1, &SacHeader::kt1}, {&SacHeader::t2, &SacHeader::kt2},
    {&SacHeader::t3, &SacHeader::kt3}, {&SacHeader::t4, &SacHeader::kt4}, {&SacHeader::t5, &SacHeader::kt5},
    {&SacHeader::t6, &SacHeader::kt6}, {&SacHeader::t7, &SacHeader::kt7}, {&SacHeader::t8, &SacHeader::kt8},
    {&SacHeader::t9, &SacHeader::kt9}, {&SacHeader::a, &SacHeader::ka},   {&SacHeader::f, &SacHeader::kf},
};
static_assert(std::size(kPicks) == std::size_t(kEndOfSignalKey) + 1);
static_assert(kFirstArrivalKey == kTimePickCount && kEndOfSignalKey == kFirstArrivalKey + 1);

const Pick* pickWithKey(int key) { return key >= 0 && key <= kEndOfSignalKey ? &kPicks[key] : nullptr; }

// Programs that add up single-precision intervals miss the end by more than a sample in long files.
constexpr double kEndTolerance = 1e-4;

// Earthquakes end 700 km down. What lies deeper is in metres, the format's unit in former times.
constexpr float kDeepestEventKm = 1000;
constexpr float kMetresPerKilometre = 1000;

// Pieces of a recording count from the same moment, and share it: thousands of them would spend most of their time on
// spelling its date.
std::shared_ptr<UtcTime> sharedReferenceTime(const SacHeader& header) {
  struct Moment {
    std::array<std::int32_t, 6> fields = {};
    std::shared_ptr<UtcTime> time;
  };
  static thread_local Moment latest;
  const std::array<std::int32_t, 6> fields{header.nzyear, header.nzjday, header.nzhour,
                                           header.nzmin,  header.nzsec,  header.nzmsec};
  if (latest.time == nullptr || latest.fields != fields)
    latest = {fields, std::make_shared<UtcTime>(xov::referenceTime(header))};
  return latest.time;
}

// Samples that are brought into memory together: whole blocks of the index.
constexpr std::size_t kTogether = std::size_t(1) << 18;

constexpr double kLargestFloat = double(std::numeric_limits<float>::max());

/// The stored end time where it is plausible, else the computed one.
double endTime(double stored, double b, double delta, int npts) {
  if (!(delta > 0) || npts < 1) return b;
  const double duration = double(npts - 1) * delta;
  const double tolerance = std::max(delta, kEndTolerance * duration);
  return isDefined(stored) && std::abs(stored - (b + duration)) <= tolerance ? stored : b + duration;
}

constexpr double kMillisecondsPerSecond = 1000.0;
constexpr qint64 kMillisecondsPerTenth = 100;
// A century: an offset beyond it is damage, not an origin time.
constexpr double kLongestOffsetSeconds = 3.2e9;

QString originTimeText(const QDateTime& reference, double offsetSeconds) {
  if (!reference.isValid() || !isDefined(offsetSeconds) || std::abs(offsetSeconds) > kLongestOffsetSeconds) return {};
  const qint64 offset = std::llround(offsetSeconds * kMillisecondsPerSecond);
  const qint64 exact = reference.toMSecsSinceEpoch() + offset;
  // Rounds half up, also before 1970.
  const qint64 shifted = exact + kMillisecondsPerTenth / 2;
  const qint64 remainder = ((shifted % kMillisecondsPerTenth) + kMillisecondsPerTenth) % kMillisecondsPerTenth;
  const QDateTime rounded = QDateTime::fromMSecsSinceEpoch(shifted - remainder, Qt::UTC);
  const qint64 tenths = rounded.time().msec() / kMillisecondsPerTenth;
  return QLocale::c().toString(rounded, QStringLiteral("yyyy/MM/dd HH:mm:ss.")) + QString::number(tenths);
}

float definedOr(float stored, double computed) { return isDefined(stored) ? stored : float(computed); }

/// Distance and directions from the coordinates, unset where they are.
GreatCircle computedGeometry(const SacFooter& at) {
  if (!isGeographicPoint(at.evla, at.evlo) || !isGeographicPoint(at.stla, at.stlo))
    return {kUndefinedValue, kUndefinedValue, kUndefinedValue};
  return greatCircle(at.evla, at.evlo, at.stla, at.stlo);
}

} // namespace

SacSeismogram::SacSeismogram() : SacSeismogram(SacHeader(), {}) {}

SacSeismogram::SacSeismogram(const SacHeader& header, std::vector<float> samples, QString path,
                             std::optional<SacFooter> precise)
    : header_(header),
      samples_(std::move(samples)),
      path_(std::move(path)) {
  takeHeader(precise);
  findExtrema();
}

SacSeismogram::SacSeismogram(const SacHeader& header, std::shared_ptr<PagedSamples> samples, SampleIndex index,
                             std::optional<FiniteSum> sum, QString path, std::optional<SacFooter> precise)
    : header_(header),
      paged_(std::move(samples)),
      elsewhere_(paged_->data(), std::size_t(paged_->count())),
      sum_(sum),
      path_(std::move(path)),
      index_(std::move(index)) {
  takeHeader(precise);
  if (index_.covers(elsewhere_.data(), 0, std::ssize(elsewhere_)))
    noteExtrema();
  else
    findExtrema();
}

SacSeismogram::SacSeismogram(const SacHeader& header, std::span<const float> samples,
                             std::shared_ptr<const void> owner, QString path, std::optional<SacFooter> precise)
    : header_(header),
      owner_(std::move(owner)),
      elsewhere_(samples),
      path_(std::move(path)) {
  if (!owner_) owner_ = std::make_shared<int>(); // the host's word that the samples stay
  takeHeader(precise);
  findExtrema();
}

SacSeismogram::~SacSeismogram() = default;

/// The samples, which need not be in memory.
std::span<const float> SacSeismogram::stored() const { return isElsewhere() ? elsewhere_ : std::span(samples_); }

/// From here on the samples are like those of any trace.
void SacSeismogram::bringIntoMemory() {
  if (!isElsewhere()) return;
  samples_.resize(elsewhere_.size());
  for (std::size_t first = 0; first < samples_.size(); first += kTogether) {
    const auto some = elsewhere_.subspan(first, std::min(kTogether, elsewhere_.size() - first));
    const HeldSamples held(paged_.get(), some.data(), some.data() + some.size());
    std::ranges::copy(some, samples_.begin() + std::ptrdiff_t(first));
  }
  paged_.reset();
  owner_.reset();
  isHeld_ = false;
  index_.build(samples_);
}

void SacSeismogram::takeHeader(const std::optional<SacFooter>& precise) {
  if (precise) {
    precise_ = *precise;
    refineHeader(header_, precise_);
  } else {
    precise_ = footerFromHeader(header_);
  }
  if (!isDefined(header_.b)) {
    header_.b = 0;
    precise_.b = 0;
  }
  fitTimesToSamples();
  referenceTime_ = sharedReferenceTime(header_);
}

void SacSeismogram::fitTimesToSamples() {
  header_.npts = int(std::min(stored().size(), std::size_t(std::numeric_limits<int>::max())));
  precise_.e = endTime(precise_.e, precise_.b, precise_.delta, header_.npts);
  header_.e = float(std::clamp(precise_.e, -kLargestFloat, kLargestFloat));
}

void SacSeismogram::fitHeaderToSamples() {
  fitTimesToSamples();
  findExtrema();
}

void SacSeismogram::setHeader(const SacHeader& header, QString path, std::optional<SacFooter> precise) {
  header_ = header;
  path_ = std::move(path);
  takeHeader(precise);
  if (mayChange_) return findExtrema();
  header_.depmin = extrema_.min;
  header_.depmax = extrema_.max;
}

void SacSeismogram::keepSamples(std::size_t first, std::size_t count) {
  first = std::min(first, stored().size());
  count = std::min(count, stored().size() - first);
  const std::size_t behind = stored().size() - first - count;
  if (first > 0 || behind > 0) sum_.reset();
  index_.truncated(stored(), std::int64_t(behind));
  if (isElsewhere()) {
    elsewhere_ = elsewhere_.subspan(first, count);
  } else {
    samples_.resize(first + count);
    samples_.erase(samples_.begin(), samples_.begin() + std::ptrdiff_t(first));
  }
  index_.dropped(stored(), std::int64_t(first));
  precise_.b += double(first) * precise_.delta;
  precise_.e = kUndefinedValue;
  refineHeader(header_, precise_);
  fitTimesToSamples();
  mayChange_ ? findExtrema() : noteExtrema();
}

void SacSeismogram::rescaleSamples(double offset, double factor) {
  if (mayChange_) findExtrema();
  sum_.reset();
  const auto rescaled = [=](float sample) { return toSinglePrecision((double(sample) - offset) * factor); };
  if (isDefined(double(header_.depmen))) header_.depmen = rescaled(header_.depmen);
  const bool isFinite = std::isfinite(rescaled(extrema_.min)) && std::isfinite(rescaled(extrema_.max));
  const auto rescaleAll = [=](std::span<float> samples) {
    if (!isFinite) {
      std::ranges::transform(samples, samples.begin(), rescaled);
      return;
    }
    for (float& sample : samples)
      sample = float((double(sample) - offset) * factor);
  };
  if (isHeld_ || owner_) bringIntoMemory();
  if (paged_)
    paged_->addChange(rescaleAll);
  else
    runParts(std::ssize(samples_), kTogether, [&](std::int64_t from, std::int64_t to) {
      rescaleAll(std::span(samples_).subspan(std::size_t(from), std::size_t(to - from)));
    });
  if (!(factor > 0)) return findExtrema();
  index_.mapped(rescaled);
  noteExtrema();
}

void SacSeismogram::setSamples(std::vector<float> samples) {
  samples_ = std::move(samples);
  paged_.reset();
  owner_.reset();
  sum_.reset();
  mayChange_ = false;
  precise_.e = kUndefinedValue;
  fitHeaderToSamples();
}

std::vector<float> SacSeismogram::takeSamples() {
  bringIntoMemory();
  sum_.reset();
  std::vector<float> taken = std::exchange(samples_, {});
  mayChange_ = false;
  precise_.e = kUndefinedValue;
  fitHeaderToSamples();
  return taken;
}

std::span<float> SacSeismogram::samples() {
  bringIntoMemory();
  mayChange_ = true;
  sum_.reset();
  index_.clear();
  return samples_;
}

std::span<const float> SacSeismogram::samples() const { return {GetSacSeis(), stored().size()}; }

const SacFooter& SacSeismogram::preciseValues() const { return precise_; }

const float* SacSeismogram::GetSacSeis() const {
  if (paged_ && !isHeld_) {
    paged_->hold(elsewhere_.data(), elsewhere_.data() + elsewhere_.size());
    isHeld_ = true;
  }
  return stored().data();
}

BorrowedSamples SacSeismogram::borrowedSamples() const { return {stored().data(), &index_, paged_.get()}; }

int SacSeismogram::npts() const { return header_.npts; }

const SampleIndex* SacSeismogram::sampleIndex() const { return &index_; }

float SacSeismogram::delta() const { return header_.delta; }

float SacSeismogram::b() const { return header_.b; }

float SacSeismogram::e() const { return header_.e; }

float SacSeismogram::a() const { return header_.a; }

float SacSeismogram::smin() const { return extrema_.min; }

float SacSeismogram::smax() const { return extrema_.max; }

float SacSeismogram::absMax() const { return std::max(std::abs(extrema_.min), std::abs(extrema_.max)); }

// A drum asks for this at every redraw.
void SacSeismogram::ComputeExtrema() {
  if (mayChange_) findExtrema();
}

void SacSeismogram::findExtrema() {
  if (paged_) {
    index_.build(elsewhere_.first(0));
    for (std::size_t first = 0; first < elsewhere_.size(); first += kTogether) {
      const auto some = elsewhere_.subspan(first, std::min(kTogether, elsewhere_.size() - first));
      const HeldSamples held(paged_.get(), some.data(), some.data() + some.size());
      index_.appended(elsewhere_, std::ssize(some));
    }
  } else {
    index_.build(stored());
  }
  noteExtrema();
}

/// Takes the extremes from the index.
void SacSeismogram::noteExtrema() {
  extrema_ = finiteExtrema(stored(), &index_, paged_.get());
  header_.depmin = extrema_.min;
  header_.depmax = extrema_.max;
}

QString SacSeismogram::kstnm() const { return header_.kstnm.text(); }

QString SacSeismogram::knetwk() const { return header_.knetwk.text(); }

QString SacSeismogram::kcmpnm() const { return header_.kcmpnm.text(); }

QString SacSeismogram::khole() const { return header_.khole.text(); }

QString SacSeismogram::kuser0() const { return header_.kuser0.text(); }

float SacSeismogram::gcarc() const { return definedOr(header_.gcarc, computedGeometry(precise_).distanceDeg); }

float SacSeismogram::azimuth() const { return definedOr(header_.az, computedGeometry(precise_).azimuthDeg); }

float SacSeismogram::backazimuth() const { return definedOr(header_.baz, computedGeometry(precise_).backAzimuthDeg); }

float SacSeismogram::evdp() const {
  return header_.evdp > kDeepestEventKm ? header_.evdp / kMetresPerKilometre : header_.evdp;
}

QString SacSeismogram::flinnEngdahlString() const {
  return hasEventPlace() ? coordinatesText(precise_.evla, precise_.evlo) : QString();
}

// Programs that clear a header put an event that they know nothing of where the equator meets the prime meridian.
bool SacSeismogram::hasEventPlace() const {
  const bool isOrigin = precise_.evla == 0 && precise_.evlo == 0;
  return !isOrigin || isDefined(precise_.o) || (isDefined(header_.evdp) && header_.evdp != 0);
}

QString SacSeismogram::flinnEngdahlGeographicRegion() const { return flinnEngdahlString(); }

QString SacSeismogram::oTimeString() const { return originTimeText(referenceTime_->nsDate(), precise_.o); }

float SacSeismogram::originTimeOffset() const { return header_.o; }

float SacSeismogram::pTime() const { return header_.a; }

float SacSeismogram::timePickKey(int key) const {
  const Pick* pick = pickWithKey(key);
  return pick ? header_.*pick->time : kUndefinedValue;
}

QString SacSeismogram::pickLabelWithKey(int key) const {
  const Pick* pick = pickWithKey(key);
  const QString label = pick ? (header_.*pick->label).text() : QString();
  return label.isEmpty() ? QString::fromLatin1(kUndefinedLabel) : label;
}

UnsetNumbers SacSeismogram::unsetNumbers() const { return UnsetNumbers::LeftOut; }

std::shared_ptr<SeisTime> SacSeismogram::mySeisReferenceTime() const { return referenceTime_; }

const SacHeader* SacSeismogram::GetSacHeader() const { return &header_; }

QString SacSeismogram::labelString() const {
  const QStringList codes{knetwk(), kstnm(), khole(), kcmpnm()};
  if (codes.join(QString()).isEmpty()) return QFileInfo(path_).fileName();
  return codes.join(QLatin1Char('.'));
}

QString SacSeismogram::path() const { return path_; }

} // namespace xov
