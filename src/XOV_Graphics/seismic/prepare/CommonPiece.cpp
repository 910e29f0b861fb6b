#include "XOV_Graphics/seismic/prepare/CommonPiece.h"

#include "XOV_Graphics/base/Numbers.h"
#include "XOV_Graphics/seismic/Undefined.h"
#include "XOV_Graphics/seismic/prepare/RecordSamples.h"
#include "XOV_Graphics/seismic/prepare/TimeAxis.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace xov {

namespace {

constexpr double kMostMiss = 0.1;           // of an interval between the samples of two components
constexpr double kIntervalTolerance = 0.01; // of an interval at the end of the records

bool haveUtc(const SeismogramArray& records) {
  return std::ranges::all_of(records, [](const auto& record) { return startSeconds(*record).has_value(); });
}

} // namespace

QChar componentLetter(const SeismogramRecord& record) {
  const QString code = record.kcmpnm();
  return code.isEmpty() ? QChar() : code.back().toUpper();
}

Result<double> componentAzimuth(const SeismogramRecord& record) {
  if (const float azimuth = headerOf(record).cmpaz; isDefined(double(azimuth))) return double(azimuth);
  if (componentLetter(record) == u'N') return 0.0;
  if (componentLetter(record) == u'E') return 90.0;
  return errorOf(record,
                 QStringLiteral("found no azimuth of the component, expected one, or a code ending in N or E"));
}

double startOnAxis(const SeismogramRecord& record, bool isUtc) {
  return isUtc ? startSeconds(record).value_or(0) : preciseValuesOf(record).b;
}

Result<CommonPiece> commonPiece(const ThreeComponents& components) {
  const SeismogramArray present = presentComponents(components);
  const bool isUtc = haveUtc(present);
  const SeismogramRecord& reference = *present.front();
  const double interval = intervalSeconds(reference);
  std::array<double, 3> places{};
  double begin = -std::numeric_limits<double>::infinity();
  double end = std::numeric_limits<double>::infinity();
  for (std::size_t k = 0; k < components.size(); ++k) {
    if (!components[k]) continue;
    const SeismogramRecord& record = *components[k];
    if (const Status status = checkInterval(record); !status) return Error{status.error()};
    const auto count = double(samplesOf(record).size());
    if (std::abs(intervalSeconds(record) / interval - 1) * count > kIntervalTolerance)
      return errorOf(record,
                     QStringLiteral("found a sample interval of %1 s, expected the %2 s of %3")
                         .arg(numberText(intervalSeconds(record)), numberText(interval), reference.labelString()));
    const double place = (startOnAxis(record, isUtc) - startOnAxis(reference, isUtc)) / interval;
    places[k] = std::nearbyint(place);
    if (!(std::abs(place - places[k]) <= kMostMiss))
      return errorOf(record, QStringLiteral("found samples %1 s beside those of %2, expected them at the same times")
                                 .arg(numberText((place - places[k]) * interval), reference.labelString()));
    begin = std::max(begin, places[k]);
    end = std::min(end, places[k] + count);
  }
  if (!(begin < end))
    return errorOf(reference, QStringLiteral("found no time that all components have, expected one"));
  CommonPiece piece;
  piece.count = std::size_t(end - begin);
  for (std::size_t k = 0; k < components.size(); ++k) {
    if (components[k]) piece.first[k] = std::size_t(begin - places[k]);
  }
  return piece;
}

} // namespace xov
