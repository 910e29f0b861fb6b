#include "XOV_Graphics/seismic/prepare/Derived.h"

#include "XOV_Graphics/base/Guarded.h"
#include "XOV_Graphics/base/Numbers.h"
#include "XOV_Graphics/seismic/prepare/RecordSamples.h"
#include "XOV_Graphics/seismic/prepare/TimeAxis.h"
#include "XOV_Graphics/seismic/signal/Calculus.h"
#include "XOV_Graphics/seismic/signal/Envelope.h"

#include <cmath>

namespace xov {

namespace {

/// The record's header for samples of another quantity.
SacHeader headerFor(const SeismogramRecord& record, std::int32_t quantity) {
  SacHeader header = headerOf(record);
  header.idep = quantity;
  return header;
}

/// Displacement, velocity and acceleration follow each other in the format's numbers.
std::int32_t derivativeOf(std::int32_t quantity, int times) {
  const auto isMotion = [](std::int32_t code) { return code >= kSacDisplacement && code <= kSacAcceleration; };
  return isMotion(quantity) && isMotion(quantity + times) ? quantity + times : kSacUnknownKind;
}

QString averagesText(double shortSeconds, double longSeconds) {
  return QStringLiteral("found averages over %1 and %2 s, expected ")
      .arg(numberText(shortSeconds), numberText(longSeconds));
}

} // namespace

Result<std::shared_ptr<SacSeismogram>> integrated(const SeismogramRecord& record) noexcept {
  return guarded({}, [&]() -> Result<std::shared_ptr<SacSeismogram>> {
    if (const Status status = checkInterval(record); !status) return Error{status.error()};
    std::vector<double> samples = doublesOf(record);
    integrate(samples, intervalSeconds(record));
    return copyWithSamples(record, samples, {.header = headerFor(record, derivativeOf(headerOf(record).idep, -1))});
  });
}

Result<std::shared_ptr<SacSeismogram>> differentiated(const SeismogramRecord& record) noexcept {
  return guarded({}, [&]() -> Result<std::shared_ptr<SacSeismogram>> {
    if (const Status status = checkInterval(record); !status) return Error{status.error()};
    std::vector<double> samples = doublesOf(record);
    differentiate(samples, intervalSeconds(record));
    return copyWithSamples(record, samples, {.header = headerFor(record, derivativeOf(headerOf(record).idep, 1))});
  });
}

std::shared_ptr<SacSeismogram> envelopeOf(const SeismogramRecord& record) {
  std::vector<double> samples = doublesOf(record);
  applyEnvelope(samples);
  return copyWithSamples(record, samples);
}

Result<std::shared_ptr<SacSeismogram>> staLtaOf(const SeismogramRecord& record, double shortSeconds,
                                                double longSeconds, StaLtaKind kind) noexcept {
  return guarded({}, [&]() -> Result<std::shared_ptr<SacSeismogram>> {
    if (const Status status = checkInterval(record); !status) return Error{status.error()};
    const double shortCount = std::round(shortSeconds / intervalSeconds(record));
    const double longCount = std::round(longSeconds / intervalSeconds(record));
    if (!(shortCount >= 1))
      return errorOf(record, averagesText(shortSeconds, longSeconds) +
                                 QStringLiteral("%1 s, a sample, at least").arg(numberText(intervalSeconds(record))));
    if (!(shortCount < longCount))
      return errorOf(record, averagesText(shortSeconds, longSeconds) + QStringLiteral("the shorter one first"));
    std::vector<double> samples = doublesOf(record);
    if (longCount > double(samples.size()))
      return errorOf(record, QStringLiteral("found %1 samples, expected as many as the long-term average, %2")
                                 .arg(samples.size())
                                 .arg(numberText(longCount)));
    applyStaLta(samples, std::size_t(shortCount), std::size_t(longCount), kind);
    return copyWithSamples(record, samples, {.header = headerFor(record, kSacUnknownKind)});
  });
}

} // namespace xov
