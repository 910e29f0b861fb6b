#include "XOV_Graphics/seismic/prepare/RecordWindow.h"

#include "XOV_Graphics/base/TimeText.h"
#include "XOV_Graphics/seismic/Extrema.h"
#include "XOV_Graphics/seismic/SacSeismogram.h"
#include "XOV_Graphics/seismic/prepare/RecordCopy.h"
#include "XOV_Graphics/seismic/prepare/TimeAxis.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

namespace xov {

namespace {

constexpr double kMillisecondsPerSecond = 1000;
constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kMostMisses = 0.5;    // intervals that a sample may lie outside of its border
constexpr double kLeastMisses = 1e-6;  // what rounding in double precision leaves
constexpr double kFarthestTime = 1e14; // milliseconds that a message adds to a time

bool isSinglePrecise(double value) { return double(float(value)) == value; }

/// Where a time lies among a record's samples, and by how much that may be wrong, in intervals.
struct Place {
  double index = 0;
  double misses = 0;
};

Place placeOf(double seconds, const SacFooter& times) {
  const bool isSingle = isSinglePrecise(times.b) && isSinglePrecise(times.delta);
  const double elapsed = seconds - times.b;
  const double unit = isSingle ? double(std::numeric_limits<float>::epsilon()) / 2 : 0;
  const double misses = unit * (std::abs(times.b) + std::abs(elapsed)) / times.delta;
  return {elapsed / times.delta, std::clamp(misses, kLeastMisses, kMostMisses)};
}

/// How many of the samples lie before the time.
std::size_t countBefore(double seconds, const SacFooter& times, std::size_t count) {
  if (std::isinf(seconds)) return seconds < 0 ? 0 : count;
  const Place place = placeOf(seconds, times);
  return std::size_t(std::clamp(std::ceil(place.index - place.misses), 0.0, double(count)));
}

/// How many of the samples lie before the time, or at it.
std::size_t countUpTo(double seconds, const SacFooter& times, std::size_t count) {
  if (std::isinf(seconds)) return seconds < 0 ? 0 : count;
  const Place place = placeOf(seconds, times);
  return std::size_t(std::clamp(std::floor(place.index + place.misses) + 1, 0.0, double(count)));
}

bool hasTimes(const SacFooter& times) {
  return std::isfinite(times.b) && std::isfinite(times.delta) && times.delta > 0;
}

double secondsBetween(const QDateTime& from, const QDateTime& to) {
  return double(from.msecsTo(to)) / kMillisecondsPerSecond;
}

} // namespace

RecordWindow::RecordWindow(std::shared_ptr<SeismogramRecord> record, double start, double end)
    : record_(record ? std::move(record) : std::make_shared<SacSeismogram>()) {
  setSpan(start, end);
}

RecordWindow::RecordWindow(std::shared_ptr<SeismogramRecord> record, const QDateTime& start, const QDateTime& end)
    : record_(record ? std::move(record) : std::make_shared<SacSeismogram>()) {
  setSpan(start, end);
}

RecordWindow::~RecordWindow() = default;

void RecordWindow::setSpan(double start, double end) {
  span_ = Seconds{start, end};
  piece_ = pieceOf(sourceNow());
}

void RecordWindow::setSpan(const QDateTime& start, const QDateTime& end) {
  span_ = Moments{start, end};
  piece_ = pieceOf(sourceNow());
}

RecordWindow::Source RecordWindow::sourceNow() const {
  return {record_->borrowedSamples().samples, record_->npts(), record_->b(), record_->delta(),
          referenceTimeOf(*record_)};
}

/// The window on the record's axis; borders that are not numbers when that is unknown.
RecordWindow::Seconds RecordWindow::secondsFrom(const QDateTime& reference) const {
  if (const auto* const seconds = std::get_if<Seconds>(&span_)) return *seconds;
  const auto& moments = std::get<Moments>(span_);
  const auto secondsTo = [&](const QDateTime& moment, double open) {
    if (!moment.isValid()) return open;
    return reference.isValid() ? secondsBetween(reference, moment) : std::nan("");
  };
  return {secondsTo(moments.start, -kInfinity), secondsTo(moments.end, kInfinity)};
}

RecordWindow::Piece RecordWindow::pieceOf(const Source& source) const {
  const Seconds span = secondsFrom(source.reference);
  Piece piece{source, {}, 0, preciseValuesOf(*record_), headerOf(*record_)};
  const BorrowedSamples borrowed = record_->borrowedSamples();
  const std::span<const float> all(borrowed.samples,
                                   borrowed.samples != nullptr ? std::size_t(std::max(record_->npts(), 0)) : 0);
  if (hasTimes(piece.precise) && !std::isnan(span.start) && !std::isnan(span.end)) {
    piece.first = countBefore(span.start, piece.precise, all.size());
    const std::size_t end = countUpTo(span.end, piece.precise, all.size());
    if (end > piece.first) piece.samples = all.subspan(piece.first, end - piece.first);
  }
  if (piece.samples.empty()) {
    const double border = std::isfinite(span.start) ? span.start : span.end;
    if (std::isfinite(border)) piece.precise.b = border;
    piece.precise.e = piece.precise.b;
  } else {
    piece.precise.b += double(piece.first) * piece.precise.delta;
    piece.precise.e = piece.precise.b + double(piece.samples.size() - 1) * piece.precise.delta;
  }
  refineHeader(piece.header, piece.precise);
  const Extrema extrema = finiteExtrema(piece.samples, borrowed.index, borrowed.source);
  piece.header.npts = int(piece.samples.size());
  piece.header.depmin = extrema.min;
  piece.header.depmax = extrema.max;
  piece.header.depmen = kUndefinedValue;
  return piece;
}

const RecordWindow::Piece& RecordWindow::piece() const {
  if (const Source source = sourceNow(); source != piece_.source) piece_ = pieceOf(source);
  return piece_;
}

std::size_t RecordWindow::firstIndex() const { return piece().first; }

std::span<const float> RecordWindow::samples() const {
  const std::span<const float> all = piece().samples;
  // Those of a record that reads them as they are needed come into memory, and stay there.
  if (SampleSource* const source = record_->borrowedSamples().source; source != nullptr)
    source->hold(all.data(), all.data() + all.size());
  return all;
}

const SacFooter& RecordWindow::preciseValues() const { return piece().precise; }

const float* RecordWindow::GetSacSeis() const { return samples().data(); }

BorrowedSamples RecordWindow::borrowedSamples() const {
  BorrowedSamples borrowed = record_->borrowedSamples();
  borrowed.samples = piece().samples.data();
  return borrowed;
}

int RecordWindow::npts() const { return int(piece().samples.size()); }

const SampleIndex* RecordWindow::sampleIndex() const { return record_->sampleIndex(); }

float RecordWindow::delta() const { return record_->delta(); }

float RecordWindow::b() const { return piece().header.b; }

float RecordWindow::e() const { return piece().header.e; }

float RecordWindow::a() const { return record_->a(); }

float RecordWindow::smin() const { return piece().header.depmin; }

float RecordWindow::smax() const { return piece().header.depmax; }

float RecordWindow::absMax() const { return std::max(std::abs(smin()), std::abs(smax())); }

void RecordWindow::ComputeExtrema() { piece_ = pieceOf(sourceNow()); }

QString RecordWindow::kstnm() const { return record_->kstnm(); }
QString RecordWindow::knetwk() const { return record_->knetwk(); }
QString RecordWindow::kcmpnm() const { return record_->kcmpnm(); }
QString RecordWindow::khole() const { return record_->khole(); }
QString RecordWindow::kuser0() const { return record_->kuser0(); }

float RecordWindow::gcarc() const { return record_->gcarc(); }
float RecordWindow::azimuth() const { return record_->azimuth(); }
float RecordWindow::backazimuth() const { return record_->backazimuth(); }
float RecordWindow::evdp() const { return record_->evdp(); }
QString RecordWindow::flinnEngdahlString() const { return record_->flinnEngdahlString(); }
QString RecordWindow::flinnEngdahlGeographicRegion() const { return record_->flinnEngdahlGeographicRegion(); }
QString RecordWindow::oTimeString() const { return record_->oTimeString(); }

float RecordWindow::originTimeOffset() const { return record_->originTimeOffset(); }
float RecordWindow::pTime() const { return record_->pTime(); }
float RecordWindow::timePickKey(int key) const { return record_->timePickKey(key); }
QString RecordWindow::pickLabelWithKey(int key) const { return record_->pickLabelWithKey(key); }

std::shared_ptr<SeisTime> RecordWindow::mySeisReferenceTime() const { return record_->mySeisReferenceTime(); }
const SacHeader* RecordWindow::GetSacHeader() const { return &piece().header; }

UnsetNumbers RecordWindow::unsetNumbers() const { return record_->unsetNumbers(); }
QString RecordWindow::labelString() const { return record_->labelString(); }
QString RecordWindow::path() const { return record_->path(); }

namespace {

QString fromTo(const QString& start, const QString& end) {
  return QStringLiteral("from %1 to %2")
      .arg(start.isEmpty() ? QStringLiteral("the begin") : start, end.isEmpty() ? QStringLiteral("the end") : end);
}

QString secondsText(double seconds) {
  return std::isinf(seconds) ? QString() : QString::number(seconds, 'g', 12) + QStringLiteral(" s");
}

Error nothingInside(const SeismogramRecord& record, const QString& wanted, const QString& present) {
  const QString found =
      record.npts() < 1 ? QStringLiteral("a record without samples") : QStringLiteral("samples ") + present;
  return {QStringLiteral("%1: found %2, expected some %3").arg(record.labelString(), found, wanted)};
}

} // namespace

Result<std::shared_ptr<RecordWindow>> windowOf(std::shared_ptr<SeismogramRecord> record, double start, double end) {
  auto window = std::make_shared<RecordWindow>(std::move(record), start, end);
  if (window->npts() > 0) return window;
  const SeismogramRecord& all = *window->record();
  return nothingInside(all, fromTo(secondsText(start), secondsText(end)),
                       fromTo(secondsText(double(all.b())), secondsText(double(all.e()))));
}

Result<std::shared_ptr<RecordWindow>> windowOf(std::shared_ptr<SeismogramRecord> record, const QDateTime& start,
                                               const QDateTime& end) {
  auto window = std::make_shared<RecordWindow>(std::move(record), start, end);
  if (window->npts() > 0) return window;
  const SeismogramRecord& all = *window->record();
  const QDateTime reference = referenceTimeOf(all);
  if (!reference.isValid())
    return Error{QStringLiteral("%1: found no reference time, expected one for times in UTC").arg(all.labelString())};
  const auto timeText = [&](float seconds) {
    const double milliseconds = double(seconds) * kMillisecondsPerSecond;
    return utcText(reference.addMSecs(qint64(std::clamp(milliseconds, -kFarthestTime, kFarthestTime))));
  };
  return nothingInside(all, fromTo(utcText(start), utcText(end)), fromTo(timeText(all.b()), timeText(all.e())));
}

} // namespace xov
