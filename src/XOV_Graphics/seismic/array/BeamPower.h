#pragma once

#include "XOV_Graphics/base/Export.h"
#include "XOV_Graphics/base/Result.h"
#include "XOV_Graphics/seismic/array/ArrayOffsets.h"

#include <QString>

#include <cstdint>
#include <functional>
#include <span>
#include <vector>

namespace xov {

/// What one station of an array recorded.
struct ArrayTrace {
  QString name;                   ///< for messages
  std::span<const float> samples; ///< borrowed
  double startSeconds = 0;        ///< time of the first sample on the axis that all stations share
  StationOffset offset;           ///< from the middle of the array
};

/// What to look for in the traces of an array.
struct XOV_EXPORT BeamSearch {
  double intervalSeconds = 0; ///< between samples, the same for all traces
  /// The piece of the traces to use, in seconds from the beginning of the time that all of them have; an end that is
  /// not positive stands for the end of that time.
  double windowFrom = 0;
  double windowTo = 0; ///< the end of that piece
  /// The frequencies to use, both ends included. Not positive: from four periods in the window on, up to half of the
  /// Nyquist frequency.
  double lowestHz = 0;
  double highestHz = 0; ///< the upper end
  /// The grid: `steps` by `steps` slownesses from −limit to limit (s/km), both ends included.
  double slownessLimit = 0.5;
  std::int32_t steps = 101; ///< 2 to kMostBeamSteps
};

/// Beam power over horizontal slowness.
struct XOV_EXPORT BeamPower {
  /// steps × steps values in 0 … 1, row after row, the northernmost row and the westernmost column first.
  std::vector<float> power;
  std::int32_t steps = 0;       ///< of rows and columns alike
  double slownessLimit = 0;     ///< the outermost slowness, in s/km
  double lowestHz = 0;          ///< the frequencies that were used
  double highestHz = 0;         ///< the upper end
  std::int32_t frequencies = 0; ///< how many of them

  /// East or north slowness of a column, or of a row counted from the south.
  double slowness(std::int32_t step) const { return slownessLimit * (2.0 * step / (steps - 1) - 1); }
};

/// The largest grid that is searched, in steps a side.
inline constexpr std::int32_t kMostBeamSteps = 2001;

/// The power of the beam that an array forms for each slowness, by the conventional frequency-wavenumber analysis:
/// for N stations at the offsets r with the spectra X,
///
///     P(s) = Σf |1/N Σn Xn(f) exp(−2πi f s·rn)|² / Σf 1/N Σn |Xn(f)|²,
///
/// 1 for a plane wave alone, 1/N on average for noise that differs from station to station. The slowness vector s
/// points to where the wave comes from, so that its direction is the back azimuth. Means are taken off the traces,
/// and their ends are tapered by cosines of a twentieth of the window each. Starts that lie between samples are
/// accounted for exactly.
///
/// Sources: J. Capon, High-resolution frequency-wavenumber spectrum analysis, Proc. IEEE 57, 1408-1418 (1969), where
/// the conventional estimate stands beside the high-resolution one; S. Rost and C. Thomas, Array seismology: methods
/// and applications, Rev. Geophys. 40(3), 1008 (2002).
///
/// `progress`, where given, hears of every frequency that is done and of their number. An error is one line that
/// begins with the name of a trace where one is at fault.
XOV_EXPORT Result<BeamPower> beamPower(std::span<const ArrayTrace> traces, const BeamSearch& search,
                                       const std::function<void(std::int64_t, std::int64_t)>& progress = {}) noexcept;

} // namespace xov
