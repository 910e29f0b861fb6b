#pragma once

#include "XOV_Graphics/base/Export.h"

#include <QString>

namespace xov {

/// The limits and the label of an axis whose range is too large or too small to be labelled as it stands.
struct XOV_EXPORT ScaledAxis {
  float lower = 0; ///< divided by the power of ten
  float upper = 0; ///< divided by the power of ten
  QString label;   ///< with that power

  bool operator==(const ScaledAxis&) const = default;
};

/// Ranges wider than 100 and narrower than 0.01 are scaled by a power of ten 10^e, and the label says what the
/// numbers were divided by: "label (/ 10^−e)". With g the logarithm of the range, rounded to single precision, e is
/// floor(2 − g) for g > 2 and ceil(−g) for g < −2. A range that has no logarithm is left as it is.
XOV_EXPORT ScaledAxis scaledAxis(float lower, float upper, const QString& label);

} // namespace xov
