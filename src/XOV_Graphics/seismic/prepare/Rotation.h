#pragma once

#include "XOV_Graphics/base/Export.h"
#include "XOV_Graphics/base/Result.h"
#include "XOV_Graphics/seismic/prepare/Components.h"

#include <QStringList>

#include <cstdint>
#include <optional>

namespace xov {

/// Axes of a wave that comes from an event.
enum class WaveAxes : std::uint8_t {
  ZRT, ///< up, away from the event, and to the right of that
  LQT, ///< along the ray of P, across it in the vertical plane of the ray, and T as before
};

/// From where a wave comes.
struct XOV_EXPORT WaveDirection {
  /// From station to event, degrees clockwise from north; that of the records where it is not given.
  std::optional<double> backAzimuthDeg = {};
  /// Of the ray at the station, degrees from the vertical; for LQT.
  double incidenceDeg = 0;
};

/// Records of one station turned to other axes:
///
///     R = −N cos β − E sin β,   T = N sin β − E cos β,   L = Z cos i + R sin i,   Q = Z sin i − R cos i
///
/// with back azimuth β and incidence i (Plešinger, A., M. Hellweg, and D. Seidl (1986), Interactive high-resolution
/// polarization analysis of broadband seismograms, J. Geophys. 59, 129-139).
///
/// `components` are vertical, north and east, as pickComponents() finds them. Horizontal ones of other azimuths are
/// turned to north and east first, by their azimuths (SacHeader::cmpaz; without one, codes ending in N and E tell
/// it). All count from their common time on, to their common end; a sample that is missing in one component is
/// missing in all that it goes into. What comes back has components, azimuths and inclinations set to what it is, in
/// this order.
///
/// Refuses, in one line: horizontal components that are missing, or, for LQT, the vertical one; unknown or parallel
/// azimuths; an unknown back azimuth; intervals that differ, samples that lie between each other's by more than a
/// tenth of an interval (onCommonSamples() mends both), and records without a common time.
XOV_EXPORT Result<ThreeComponents> rotated(const ThreeComponents& components, WaveAxes axes,
                                           const WaveDirection& direction = {}) noexcept;

/// Records, turned as far as they can be.
struct XOV_EXPORT RotatedRecords {
  SeismogramArray records; ///< turned ones and the others
  QStringList notes;       ///< what stayed as it was and why, one line a channel
};

/// Rotates records of any stations, each by its own back azimuth unless one is given, which components of one band
/// and instrument (codes but for their last character) with a common time: pieces of recordings with gaps piece by
/// piece. ZRT leaves vertical components as they are. The new ones stand where the first of those that they come from
/// stood; what cannot be rotated stays, with a note. Records must not be null.
XOV_EXPORT RotatedRecords rotatedRecords(const SeismogramArray& records, WaveAxes axes,
                                         const WaveDirection& direction = {});

} // namespace xov
