#pragma once

#include "XOV_Graphics/base/Export.h"
#include "XOV_Graphics/seismic/SacHeader.h"

namespace xov {

/// The footer of a SAC file of header version 7: 22 eight-byte floats right after the samples, which repeat header
/// values in double precision. Source: SAC User's Guide, "SAC Data File Format" (IRIS/EarthScope Data Services).
struct XOV_EXPORT SacFooter {
  double delta = kUndefinedValue; ///< sample interval in seconds
  double b = kUndefinedValue;     ///< begin, seconds from the reference time
  double e = kUndefinedValue;     ///< end
  double o = kUndefinedValue;     ///< origin time of the event
  double a = kUndefinedValue;     ///< first arrival
  double t0 = kUndefinedValue;    ///< the user's pick 0
  double t1 = kUndefinedValue;
  double t2 = kUndefinedValue;
  double t3 = kUndefinedValue;
  double t4 = kUndefinedValue;
  double t5 = kUndefinedValue;
  double t6 = kUndefinedValue;
  double t7 = kUndefinedValue;
  double t8 = kUndefinedValue;
  double t9 = kUndefinedValue;
  double f = kUndefinedValue;      ///< end of the signal
  double evlo = kUndefinedValue;   ///< longitude of the event in degrees
  double evla = kUndefinedValue;   ///< latitude of the event
  double stlo = kUndefinedValue;   ///< longitude of the station
  double stla = kUndefinedValue;   ///< latitude of the station
  double sb = kUndefinedValue;     ///< begin as it was before the samples were changed
  double sdelta = kUndefinedValue; ///< sample interval before the samples were changed
};

static_assert(offsetof(SacFooter, t0) == 40);
static_assert(offsetof(SacFooter, evlo) == 128);
static_assert(sizeof(SacFooter) == 176);

/// The header's values in double precision.
XOV_EXPORT SacFooter footerFromHeader(const SacHeader& header);

/// Replaces the header's values by those of the footer, rounded to single precision. Values that are not set, not
/// finite or beyond single precision leave the header's value, and take its place in the footer.
XOV_EXPORT void refineHeader(SacHeader& header, SacFooter& footer);

} // namespace xov
