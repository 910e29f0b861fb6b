#include "XOV_Graphics/seismic/SacSeismogram.h"

#include "XOV_Graphics/base/Numbers.h"
#include "XOV_Graphics/base/TaskPool.h"
#include "XOV_Graphics/seismic/Geodesy.h"
#include "XOV_Graphics/seismic/SacPickFields.h"
#include "XOV_Graphics/seismic/SacValues.h"
#include "XOV_Graphics/seismic/SharedReferenceTime.h"

#include <QFileInfo>
#include <QLocale>
#include <QStringList>

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

namespace xov {

namespace {

const SacPickFields* pickWithKey(int key) {
  const auto* const pick = std::ranges::find(kSacPickFields, key, &SacPickFields::key);
  return pick != std::end(kSacPickFields) ? pick : nullptr;
}

// Earthquakes end 700 km down. What lies deeper is in metres, the format's unit in former times.
constexpr float kDeepestEventKm = 1000;
constexpr float kMetresPerKilometre = 1000;

// Samples that are brought into memory together: whole blocks of the index.
constexpr std::size_t kTogether = std::size_t(1) << 18;

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

/// What a piece of a channel does without until it is changed.
struct SacSeismogram::Own {
  std::vector<float> samples;
  std::shared_ptr<PagedSamples> paged; ///< in place of these
  std::shared_ptr<const void> owner;   ///< of a host's memory, in place of both
  std::atomic<bool> isHeld = false;    ///< all samples, as long as the trace lives
  std::optional<FiniteSum> sum;
  QString path;
  bool mayChange = false; ///< samples() has handed them out
  std::shared_ptr<SeisTime> referenceTime;

  bool isElsewhere() const { return paged != nullptr || owner != nullptr; }
};

SacSeismogram::SacSeismogram() : SacSeismogram(SacHeader(), {}) {}

SacSeismogram::SacSeismogram(const SacHeader& header, std::vector<float> samples, QString path,
                             std::optional<SacFooter> precise)
    : index_(std::make_unique<SampleIndex>()),
      own_(std::make_unique<Own>()) {
  own_->samples = std::move(samples);
  own_->path = std::move(path);
  stored_ = own_->samples;
  takeHeader(header, precise);
  findExtrema();
}

SacSeismogram::SacSeismogram(const SacHeader& header, std::vector<float> samples, SampleIndex index,
                             const FiniteSum& sum, QString path, std::optional<SacFooter> precise)
    : index_(std::make_unique<SampleIndex>(std::move(index))),
      own_(std::make_unique<Own>()) {
  own_->samples = std::move(samples);
  own_->sum = sum;
  own_->path = std::move(path);
  stored_ = own_->samples;
  takeHeader(header, precise);
  takeIndex();
}

SacSeismogram::SacSeismogram(const SacHeader& header, std::shared_ptr<PagedSamples> samples, SampleIndex index,
                             std::optional<FiniteSum> sum, QString path, std::optional<SacFooter> precise)
    : stored_(samples->data(), std::size_t(samples->count())),
      index_(std::make_unique<SampleIndex>(std::move(index))),
      own_(std::make_unique<Own>()) {
  own_->paged = std::move(samples);
  own_->sum = sum;
  own_->path = std::move(path);
  takeHeader(header, precise);
  takeIndex();
}

SacSeismogram::SacSeismogram(const SacHeader& header, std::span<const float> samples,
                             std::shared_ptr<const void> owner, QString path, std::optional<SacFooter> precise)
    : stored_(samples),
      index_(std::make_unique<SampleIndex>()),
      own_(std::make_unique<Own>()) {
  own_->owner = owner ? std::move(owner) : std::make_shared<int>(); // else the host's word that the samples stay
  own_->path = std::move(path);
  takeHeader(header, precise);
  findExtrema();
}

SacSeismogram::SacSeismogram(std::shared_ptr<const SacChannel> channel, double b, double delta,
                             std::span<const float> samples, const std::optional<Extrema>& extrema)
    : channel_(std::move(channel)),
      pieceBegin_(b),
      pieceInterval_(delta),
      stored_(samples) {
  if (std::ssize(stored_) >= SampleIndex::kBlock) index_ = std::make_unique<SampleIndex>(stored_);
  if (!isPlainTime(b) || !isPlainTime(delta)) {
    SacHeader header = channel_->header();
    header.b = toSinglePrecision(b);
    header.delta = toSinglePrecision(delta);
    SacFooter precise = footerFromHeader(header);
    precise.b = b;
    precise.delta = delta;
    takeHeader(header, precise);
  }
  noteExtrema(extrema);
}

SacSeismogram::~SacSeismogram() { delete values_.load(); }

/// All header values. Several threads may be the first to ask for those of a piece: one's are kept.
const SacValues& SacSeismogram::values() const {
  if (const SacValues* const known = values_.load(std::memory_order_acquire)) return *known;
  const SacHeader& common = channel_->header();
  auto made = std::make_unique<SacValues>(SacValues{common, footerFromHeader(common)});
  made->precise.b = pieceBegin_;
  made->precise.delta = pieceInterval_;
  made->complete();
  made->fitTo(stored_.size());
  made->header.depmin = extrema_.min;
  made->header.depmax = extrema_.max;
  SacValues* first = nullptr;
  return values_.compare_exchange_strong(first, made.get(), std::memory_order_acq_rel) ? *made.release() : *first;
}

/// The same to be changed: they are shared no more.
SacValues& SacSeismogram::ownValues() {
  values();
  leaveChannel();
  return *values_.load();
}

/// Header values that pieces of a channel share: none of times, npts or extremes.
const SacHeader& SacSeismogram::commonValues() const { return channel_ ? channel_->header() : values().header; }

/// From here on a piece is like any trace, but for its samples, which stay where they are. Its header values are
/// another matter.
void SacSeismogram::leaveChannel() {
  if (!channel_) return;
  if (!index_) index_ = std::make_unique<SampleIndex>(stored_);
  own_ = std::make_unique<Own>();
  own_->owner = channel_->owner();
  own_->path = channel_->path();
  own_->referenceTime = channel_->referenceTime();
  channel_.reset();
}

bool SacSeismogram::mayChange() const { return own_ && own_->mayChange; }

PagedSamples* SacSeismogram::paged() const { return own_ ? own_->paged.get() : nullptr; }

/// Of a trace that is none of a channel's pieces; from here on the samples are like those of any trace.
void SacSeismogram::bringIntoMemory() {
  if (!own_->isElsewhere()) return;
  std::vector<float>& samples = own_->samples;
  samples.resize(stored_.size());
  for (std::size_t first = 0; first < samples.size(); first += kTogether) {
    const auto some = stored_.subspan(first, std::min(kTogether, stored_.size() - first));
    const HeldSamples held(own_->paged.get(), some.data(), some.data() + some.size());
    std::ranges::copy(some, samples.begin() + std::ptrdiff_t(first));
  }
  stored_ = samples;
  own_->paged.reset();
  own_->owner.reset();
  own_->isHeld = false;
  index_->build(samples);
}

void SacSeismogram::takeHeader(const SacHeader& header, const std::optional<SacFooter>& precise) {
  auto taken = std::make_unique<SacValues>(SacValues{header, precise ? *precise : footerFromHeader(header)});
  taken->complete();
  taken->fitTo(stored_.size());
  leaveChannel();
  own_->referenceTime = sharedReferenceTime(taken->header);
  delete values_.exchange(taken.release());
}

void SacSeismogram::fitHeaderToSamples() {
  ownValues().fitTo(stored_.size());
  findExtrema();
}

void SacSeismogram::setHeader(const SacHeader& header, QString path, std::optional<SacFooter> precise) {
  takeHeader(header, precise);
  own_->path = std::move(path);
  if (mayChange()) return findExtrema();
  SacHeader& own = ownValues().header;
  own.depmin = extrema_.min;
  own.depmax = extrema_.max;
}

void SacSeismogram::keepSamples(std::size_t first, std::size_t count) {
  SacValues& values = ownValues();
  first = std::min(first, stored_.size());
  count = std::min(count, stored_.size() - first);
  const std::size_t behind = stored_.size() - first - count;
  if (first > 0 || behind > 0) own_->sum.reset();
  index_->truncated(stored_, std::int64_t(behind));
  if (own_->isElsewhere()) {
    stored_ = stored_.subspan(first, count);
  } else {
    std::vector<float>& samples = own_->samples;
    samples.resize(first + count);
    samples.erase(samples.begin(), samples.begin() + std::ptrdiff_t(first));
    stored_ = samples;
  }
  index_->dropped(stored_, std::int64_t(first));
  values.precise.b += double(first) * values.precise.delta;
  values.precise.e = kUndefinedValue;
  refineHeader(values.header, values.precise);
  values.fitTo(stored_.size());
  mayChange() ? findExtrema() : noteExtrema();
}

void SacSeismogram::rescaleSamples(double offset, double factor) {
  if (mayChange()) findExtrema();
  const auto rescaled = [=](float sample) { return toSinglePrecision((double(sample) - offset) * factor); };
  float& mean = ownValues().header.depmen;
  if (isDefined(double(mean))) mean = rescaled(mean);
  own_->sum.reset();
  const bool isFinite = std::isfinite(rescaled(extrema_.min)) && std::isfinite(rescaled(extrema_.max));
  const auto rescaleAll = [=](std::span<float> samples) {
    if (!isFinite) {
      std::ranges::transform(samples, samples.begin(), rescaled);
      return;
    }
    for (float& sample : samples)
      sample = float((double(sample) - offset) * factor);
  };
  if (own_->isHeld || own_->owner) bringIntoMemory();
  if (own_->paged)
    own_->paged->addChange(rescaleAll);
  else
    runParts(std::ssize(stored_), kTogether, [&](std::int64_t from, std::int64_t to) {
      rescaleAll(std::span(own_->samples).subspan(std::size_t(from), std::size_t(to - from)));
    });
  if (!(factor > 0)) return findExtrema();
  index_->mapped(rescaled);
  noteExtrema();
}

void SacSeismogram::setSamples(std::vector<float> samples) {
  SacValues& values = ownValues();
  own_->samples = std::move(samples);
  stored_ = own_->samples;
  own_->paged.reset();
  own_->owner.reset();
  own_->sum.reset();
  own_->mayChange = false;
  values.precise.e = kUndefinedValue;
  fitHeaderToSamples();
}

std::vector<float> SacSeismogram::takeSamples() {
  SacValues& values = ownValues();
  bringIntoMemory();
  own_->sum.reset();
  std::vector<float> taken = std::exchange(own_->samples, {});
  stored_ = {};
  own_->mayChange = false;
  values.precise.e = kUndefinedValue;
  fitHeaderToSamples();
  return taken;
}

std::span<float> SacSeismogram::samples() {
  ownValues();
  bringIntoMemory();
  own_->mayChange = true;
  own_->sum.reset();
  index_->clear();
  return own_->samples;
}

std::span<const float> SacSeismogram::samples() const { return {GetSacSeis(), stored_.size()}; }

const std::optional<FiniteSum>& SacSeismogram::knownSum() const {
  static const std::optional<FiniteSum> unknown;
  return own_ ? own_->sum : unknown;
}

const SacFooter& SacSeismogram::preciseValues() const { return values().precise; }

const float* SacSeismogram::GetSacSeis() const {
  if (PagedSamples* const source = paged(); source != nullptr && !own_->isHeld) {
    source->hold(stored_.data(), stored_.data() + stored_.size());
    own_->isHeld = true;
  }
  return stored_.data();
}

BorrowedSamples SacSeismogram::borrowedSamples() const { return {stored_.data(), index_.get(), paged()}; }

int SacSeismogram::npts() const { return nptsOf(stored_.size()); }

const SampleIndex* SacSeismogram::sampleIndex() const { return index_.get(); }

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
  if (mayChange()) findExtrema();
}

/// Finds the extremes with the index that was given, if it is of all samples.
void SacSeismogram::takeIndex() {
  index_->covers(stored_.data(), 0, std::ssize(stored_)) ? noteExtrema() : findExtrema();
}

void SacSeismogram::findExtrema() {
  if (own_->paged) {
    index_->build(stored_.first(0));
    for (std::size_t first = 0; first < stored_.size(); first += kTogether) {
      const auto some = stored_.subspan(first, std::min(kTogether, stored_.size() - first));
      const HeldSamples held(own_->paged.get(), some.data(), some.data() + some.size());
      index_->appended(stored_, std::ssize(some));
    }
  } else {
    index_->build(stored_);
  }
  noteExtrema();
}

/// Takes the extremes from the index where they are not known.
void SacSeismogram::noteExtrema(const std::optional<Extrema>& known) {
  extrema_ = known ? *known : finiteExtrema(stored_, index_.get(), paged());
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

QString SacSeismogram::oTimeString() const {
  return originTimeText(mySeisReferenceTime()->nsDate(), preciseValues().o);
}

float SacSeismogram::originTimeOffset() const { return commonValues().o; }

float SacSeismogram::pTime() const { return commonValues().a; }

float SacSeismogram::timePickKey(int key) const {
  const SacPickFields* pick = pickWithKey(key);
  return pick ? commonValues().*pick->time : kUndefinedValue;
}

QString SacSeismogram::pickLabelWithKey(int key) const {
  const SacPickFields* pick = pickWithKey(key);
  const QString label = pick ? (commonValues().*pick->label).text() : QString();
  return label.isEmpty() ? QString::fromLatin1(kUndefinedLabel) : label;
}

UnsetNumbers SacSeismogram::unsetNumbers() const { return UnsetNumbers::LeftOut; }

std::shared_ptr<SeisTime> SacSeismogram::mySeisReferenceTime() const {
  return channel_ ? channel_->referenceTime() : own_->referenceTime;
}

const SacHeader* SacSeismogram::GetSacHeader() const { return &values().header; }

QString SacSeismogram::labelString() const {
  const QStringList codes{knetwk(), kstnm(), khole(), kcmpnm()};
  if (codes.join(QString()).isEmpty()) return QFileInfo(path()).fileName();
  return codes.join(QLatin1Char('.'));
}

QString SacSeismogram::path() const { return channel_ ? channel_->path() : own_->path; }

} // namespace xov
