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
#include <mutex>
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
  // Of all threads, as a moment never changes. The system ends a program that has no memory left to note what goes
  // with a thread.
  static std::mutex mutex;
  static Moment latest;
  const std::scoped_lock lock(mutex);
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

/// The number of samples that a header tells.
int nptsOf(std::size_t samples) { return int(std::min(samples, std::size_t(std::numeric_limits<int>::max()))); }

float singleTime(double seconds) { return float(std::clamp(seconds, -kLargestFloat, kLargestFloat)); }

/// Whether a header holds a time as it is, but for its rounding.
bool isPlainTime(double seconds) { return isDefined(seconds) && std::abs(seconds) <= kLargestFloat; }

/// Brings the values that are there in both precisions in line; a trace without a start begins at 0.
void completeHeader(SacHeader& header, SacFooter& precise) {
  refineHeader(header, precise);
  if (isDefined(header.b)) return;
  header.b = 0;
  precise.b = 0;
}

/// Number and end of samples.
void fitTimes(SacHeader& header, SacFooter& precise, std::size_t samples) {
  header.npts = nptsOf(samples);
  precise.e = endTime(precise.e, precise.b, precise.delta, header.npts);
  header.e = singleTime(precise.e);
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
    : samples_(std::move(samples)),
      path_(std::move(path)) {
  takeHeader(header, precise);
  findExtrema();
}

SacSeismogram::SacSeismogram(const SacHeader& header, std::vector<float> samples, SampleIndex index,
                             const FiniteSum& sum, QString path, std::optional<SacFooter> precise)
    : samples_(std::move(samples)),
      sum_(sum),
      path_(std::move(path)),
      index_(std::move(index)) {
  takeHeader(header, precise);
  takeIndex();
}

SacSeismogram::SacSeismogram(const SacHeader& header, std::shared_ptr<PagedSamples> samples, SampleIndex index,
                             std::optional<FiniteSum> sum, QString path, std::optional<SacFooter> precise)
    : paged_(std::move(samples)),
      elsewhere_(paged_->data(), std::size_t(paged_->count())),
      sum_(sum),
      path_(std::move(path)),
      index_(std::move(index)) {
  takeHeader(header, precise);
  takeIndex();
}

SacSeismogram::SacSeismogram(const SacHeader& header, std::span<const float> samples,
                             std::shared_ptr<const void> owner, QString path, std::optional<SacFooter> precise)
    : owner_(std::move(owner)),
      elsewhere_(samples),
      path_(std::move(path)) {
  if (!owner_) owner_ = std::make_shared<int>(); // the host's word that the samples stay
  takeHeader(header, precise);
  findExtrema();
}

SacSeismogram::SacSeismogram(std::shared_ptr<const SacHeader> channel, double b, double delta,
                             std::span<const float> samples, std::shared_ptr<const void> owner, QString path,
                             const std::optional<Extrema>& extrema)
    : channel_(std::move(channel)),
      pieceBegin_(b),
      pieceInterval_(delta),
      owner_(std::move(owner)),
      elsewhere_(samples),
      path_(std::move(path)) {
  if (!owner_) owner_ = std::make_shared<int>();
  referenceTime_ = sharedReferenceTime(*channel_);
  if (!isPlainTime(b) || !isPlainTime(delta)) {
    SacHeader header = *channel_;
    header.b = toSinglePrecision(b);
    header.delta = toSinglePrecision(delta);
    SacFooter precise = footerFromHeader(header);
    precise.b = b;
    precise.delta = delta;
    takeHeader(header, precise);
  }
  index_.build(elsewhere_);
  noteExtrema(extrema);
}

SacSeismogram::~SacSeismogram() { delete values_.load(); }

/// All header values. Several threads may be the first to ask for those of a piece: one's are kept.
const SacSeismogram::Values& SacSeismogram::values() const {
  if (const Values* const known = values_.load(std::memory_order_acquire)) return *known;
  auto made = std::make_unique<Values>(Values{*channel_, footerFromHeader(*channel_)});
  made->precise.b = pieceBegin_;
  made->precise.delta = pieceInterval_;
  completeHeader(made->header, made->precise);
  fitTimes(made->header, made->precise, stored().size());
  made->header.depmin = extrema_.min;
  made->header.depmax = extrema_.max;
  Values* first = nullptr;
  return values_.compare_exchange_strong(first, made.get(), std::memory_order_acq_rel) ? *made.release() : *first;
}

/// The same to be changed: they are shared no more.
SacSeismogram::Values& SacSeismogram::ownValues() {
  values();
  channel_.reset();
  return *values_.load();
}

/// Header values that pieces of a channel share: none of times, npts or extremes.
const SacHeader& SacSeismogram::commonValues() const { return channel_ ? *channel_ : values().header; }

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

void SacSeismogram::takeHeader(const SacHeader& header, const std::optional<SacFooter>& precise) {
  auto taken = std::make_unique<Values>(Values{header, precise ? *precise : footerFromHeader(header)});
  completeHeader(taken->header, taken->precise);
  fitTimes(taken->header, taken->precise, stored().size());
  referenceTime_ = sharedReferenceTime(taken->header);
  delete values_.exchange(taken.release());
  channel_.reset();
}

void SacSeismogram::fitTimesToSamples() {
  Values& values = ownValues();
  fitTimes(values.header, values.precise, stored().size());
}

void SacSeismogram::fitHeaderToSamples() {
  fitTimesToSamples();
  findExtrema();
}

void SacSeismogram::setHeader(const SacHeader& header, QString path, std::optional<SacFooter> precise) {
  takeHeader(header, precise);
  path_ = std::move(path);
  if (mayChange_) return findExtrema();
  SacHeader& own = ownValues().header;
  own.depmin = extrema_.min;
  own.depmax = extrema_.max;
}

void SacSeismogram::keepSamples(std::size_t first, std::size_t count) {
  Values& values = ownValues();
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
  values.precise.b += double(first) * values.precise.delta;
  values.precise.e = kUndefinedValue;
  refineHeader(values.header, values.precise);
  fitTimesToSamples();
  mayChange_ ? findExtrema() : noteExtrema();
}

void SacSeismogram::rescaleSamples(double offset, double factor) {
  if (mayChange_) findExtrema();
  sum_.reset();
  const auto rescaled = [=](float sample) { return toSinglePrecision((double(sample) - offset) * factor); };
  float& mean = ownValues().header.depmen;
  if (isDefined(double(mean))) mean = rescaled(mean);
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
  Values& values = ownValues();
  samples_ = std::move(samples);
  paged_.reset();
  owner_.reset();
  sum_.reset();
  mayChange_ = false;
  values.precise.e = kUndefinedValue;
  fitHeaderToSamples();
}

std::vector<float> SacSeismogram::takeSamples() {
  Values& values = ownValues();
  bringIntoMemory();
  sum_.reset();
  std::vector<float> taken = std::exchange(samples_, {});
  mayChange_ = false;
  values.precise.e = kUndefinedValue;
  fitHeaderToSamples();
  return taken;
}

std::span<float> SacSeismogram::samples() {
  bringIntoMemory();
  ownValues();
  mayChange_ = true;
  sum_.reset();
  index_.clear();
  return samples_;
}

std::span<const float> SacSeismogram::samples() const { return {GetSacSeis(), stored().size()}; }

const SacFooter& SacSeismogram::preciseValues() const { return values().precise; }

const float* SacSeismogram::GetSacSeis() const {
  if (paged_ && !isHeld_) {
    paged_->hold(elsewhere_.data(), elsewhere_.data() + elsewhere_.size());
    isHeld_ = true;
  }
  return stored().data();
}

BorrowedSamples SacSeismogram::borrowedSamples() const { return {stored().data(), &index_, paged_.get()}; }

int SacSeismogram::npts() const { return nptsOf(stored().size()); }

const SampleIndex* SacSeismogram::sampleIndex() const { return &index_; }

float SacSeismogram::delta() const { return channel_ ? float(pieceInterval_) : values().header.delta; }

float SacSeismogram::b() const { return channel_ ? float(pieceBegin_) : values().header.b; }

float SacSeismogram::e() const {
  return channel_ ? singleTime(endTime(kUndefinedValue, pieceBegin_, pieceInterval_, npts())) : values().header.e;
}

float SacSeismogram::a() const { return commonValues().a; }

float SacSeismogram::smin() const { return extrema_.min; }

float SacSeismogram::smax() const { return extrema_.max; }

float SacSeismogram::absMax() const { return std::max(std::abs(extrema_.min), std::abs(extrema_.max)); }

// A drum asks for this at every redraw.
void SacSeismogram::ComputeExtrema() {
  if (mayChange_) findExtrema();
}

/// Finds the extremes with the index that was given, if it is of all samples.
void SacSeismogram::takeIndex() {
  index_.covers(stored().data(), 0, std::ssize(stored())) ? noteExtrema() : findExtrema();
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

/// Takes the extremes from the index where they are not known.
void SacSeismogram::noteExtrema(const std::optional<Extrema>& known) {
  extrema_ = known ? *known : finiteExtrema(stored(), &index_, paged_.get());
  if (channel_) return; // a header that is made later on has them
  SacHeader& own = ownValues().header;
  own.depmin = extrema_.min;
  own.depmax = extrema_.max;
}

QString SacSeismogram::kstnm() const { return commonValues().kstnm.text(); }

QString SacSeismogram::knetwk() const { return commonValues().knetwk.text(); }

QString SacSeismogram::kcmpnm() const { return commonValues().kcmpnm.text(); }

QString SacSeismogram::khole() const { return commonValues().khole.text(); }

QString SacSeismogram::kuser0() const { return commonValues().kuser0.text(); }

float SacSeismogram::gcarc() const {
  return definedOr(commonValues().gcarc, computedGeometry(preciseValues()).distanceDeg);
}

float SacSeismogram::azimuth() const {
  return definedOr(commonValues().az, computedGeometry(preciseValues()).azimuthDeg);
}

float SacSeismogram::backazimuth() const {
  return definedOr(commonValues().baz, computedGeometry(preciseValues()).backAzimuthDeg);
}

float SacSeismogram::evdp() const {
  const float depth = commonValues().evdp;
  return depth > kDeepestEventKm ? depth / kMetresPerKilometre : depth;
}

QString SacSeismogram::flinnEngdahlString() const {
  return hasEventPlace() ? coordinatesText(preciseValues().evla, preciseValues().evlo) : QString();
}

// Programs that clear a header put an event that they know nothing of where the equator meets the prime meridian.
bool SacSeismogram::hasEventPlace() const {
  const auto& [header, precise] = values();
  const bool isOrigin = precise.evla == 0 && precise.evlo == 0;
  return !isOrigin || isDefined(precise.o) || (isDefined(header.evdp) && header.evdp != 0);
}

QString SacSeismogram::flinnEngdahlGeographicRegion() const { return flinnEngdahlString(); }

QString SacSeismogram::oTimeString() const { return originTimeText(referenceTime_->nsDate(), preciseValues().o); }

float SacSeismogram::originTimeOffset() const { return commonValues().o; }

float SacSeismogram::pTime() const { return commonValues().a; }

float SacSeismogram::timePickKey(int key) const {
  const Pick* pick = pickWithKey(key);
  return pick ? commonValues().*pick->time : kUndefinedValue;
}

QString SacSeismogram::pickLabelWithKey(int key) const {
  const Pick* pick = pickWithKey(key);
  const QString label = pick ? (commonValues().*pick->label).text() : QString();
  return label.isEmpty() ? QString::fromLatin1(kUndefinedLabel) : label;
}

UnsetNumbers SacSeismogram::unsetNumbers() const { return UnsetNumbers::LeftOut; }

std::shared_ptr<SeisTime> SacSeismogram::mySeisReferenceTime() const { return referenceTime_; }

const SacHeader* SacSeismogram::GetSacHeader() const { return &values().header; }

QString SacSeismogram::labelString() const {
  const QStringList codes{knetwk(), kstnm(), khole(), kcmpnm()};
  if (codes.join(QString()).isEmpty()) return QFileInfo(path_).fileName();
  return codes.join(QLatin1Char('.'));
}

QString SacSeismogram::path() const { return path_; }

} // namespace xov
