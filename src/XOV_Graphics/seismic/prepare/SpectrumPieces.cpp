#include "XOV_Graphics/seismic/prepare/SpectrumPieces.h"

#include "XOV_Graphics/seismic/prepare/RecordCopy.h"
#include "XOV_Graphics/seismic/prepare/TimeAxis.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <numbers>

namespace xov {

namespace {

constexpr double kNanoDecibels = -180; // of the square of 1e-9

struct Kind {
  std::int32_t idep;
  GroundMotion motion;
  const char* unit; // behind the prefix
};

constexpr Kind kKinds[] = {
    {kSacDisplacement, GroundMotion::Displacement, "m"},
    {kSacVelocity, GroundMotion::Velocity, "m/s"},
    {kSacAcceleration, GroundMotion::Acceleration, "m/s²"},
};

} // namespace

std::vector<SpectrogramPiece> spectrogramPieces(const SeismogramArray& records) {
  std::vector<SpectrogramPiece> pieces;
  for (const auto& record : records) {
    if (!record || samplesOf(*record).empty()) continue;
    pieces.push_back({samplesOf(*record), preciseValuesOf(*record).b, intervalSeconds(*record)});
  }
  std::ranges::stable_sort(pieces, {}, &SpectrogramPiece::startSeconds);
  return pieces;
}

std::vector<float> joinedSamples(const std::vector<SpectrogramPiece>& pieces) {
  std::vector<float> samples;
  for (const SpectrogramPiece& piece : pieces) {
    if (piece.intervalSeconds != pieces.front().intervalSeconds) continue;
    if (!samples.empty()) samples.push_back(std::numeric_limits<float>::quiet_NaN());
    samples.insert(samples.end(), piece.samples.begin(), piece.samples.end());
  }
  return samples;
}

// Each derivative multiplies amplitudes by 2πf.
std::optional<double> decibelsToAcceleration(GroundMotion motion, double hz) {
  if (motion == GroundMotion::Acceleration) return 0;
  if (!(hz > 0)) return {};
  const double derivative = 20 * std::log10(2 * std::numbers::pi * hz);
  return motion == GroundMotion::Velocity ? derivative : 2 * derivative;
}

SpectralUnit spectralUnitOf(const SeismogramArray& records) {
  for (const Kind& kind : kKinds) {
    const auto isOfThatKind = [&](const auto& record) { return record && headerOf(*record).idep == kind.idep; };
    if (records.empty() || !std::ranges::all_of(records, isOfThatKind)) continue;
    const QString unit = QString::fromUtf8(kind.unit);
    return {kind.motion, QStringLiteral("(n%1)²/Hz").arg(unit), QStringLiteral("dB rel. 1 (%1)²/Hz").arg(unit),
            kNanoDecibels};
  }
  return {{}, QStringLiteral("counts²/Hz"), QStringLiteral("dB rel. 1 counts²/Hz"), 0};
}

} // namespace xov
