#pragma once

#include "XOV_Graphics/seismic/SacFooter.h"
#include "XOV_Graphics/seismic/SacHeader.h"

#include <cstddef>

namespace xov {

/// The values of a trace's header in both precisions.
struct SacValues {
  SacHeader header;
  SacFooter precise;

  /// Brings the values that are there in both precisions in line; a trace without a start begins at 0.
  void complete();
  /// Sets number and end of samples.
  void fitTo(std::size_t samples);
};

/// The number of samples that a header tells.
int nptsOf(std::size_t samples);

/// The stored end time where it is plausible, else the computed one.
double endTime(double stored, double b, double delta, int npts);

/// In single precision, at most its largest number.
float singleTime(double seconds);

/// Whether a header holds a time as it is, but for its rounding.
bool isPlainTime(double seconds);

} // namespace xov
