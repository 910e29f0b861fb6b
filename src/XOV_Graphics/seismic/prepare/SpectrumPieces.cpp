#include "XOV_Graphics/seismic/prepare/SpectrumPieces.h"

#include "XOV_Graphics/seismic/prepare/RecordCopy.h"
#include "XOV_Graphics/seismic/prepare/TimeAxis.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <numbers>

namespace xov {

namespace {

constexpr double kNanoDecibels = -180;                  // of the square of 1e-9
constexpr std::size_t kTogether = std::size_t(1) << 18; // samples that are in memory at a time

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
    if (!record || record->npts() <= 0) continue;
    const BorrowedSamples own = record->borrowedSamples();
    if (own.samples == nullptr) continue;
    pieces.push_back({{own.samples, std::size_t(record->npts())},
                      preciseValuesOf(*record).b,
                      intervalSeconds(*record),
                      own.source});
  }
  std::ranges::stable_sort(pieces, {}, &SpectrogramPiece::startSeconds);
  return pieces;
}

std::vector<float> joinedSamples(const std::vector<SpectrogramPiece>& pieces) {
  std::vector<float> samples;
  for (const SpectrogramPiece& piece : pieces) {
    if (piece.intervalSeconds != pieces.front().intervalSeconds) continue;
    if (!samples.empty()) samples.push_back(std::numeric_limits<float>::quiet_NaN());
    for (std::size_t first = 0; first < piece.samples.size(); first += kTogether) {
      const auto some = piece.samples.subspan(first, std::min(kTogether, piece.samples.size() - first));
      const HeldSamples held = piece.held(first, some.size());
      samples.insert(samples.end(), some.begin(), some.end());
    }
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
