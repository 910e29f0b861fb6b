#pragma once

#include "XOV_Graphics/base/Result.h"
#include "XOV_Graphics/seismic/prepare/Components.h"

#include <QChar>

#include <array>

namespace xov {

/// The last letter of a record's component code, in upper case; null for a code of no letters.
QChar componentLetter(const SeismogramRecord& record);

/// The azimuth of a horizontal component: that of its header, else that of its letter where it is N or E.
Result<double> componentAzimuth(const SeismogramRecord& record);

/// When a record begins, in seconds of UTC or on the axis that it has in common with others.
double startOnAxis(const SeismogramRecord& record, bool isUtc);

/// The samples that all components have in common; where they begin in each.
struct CommonPiece {
  std::array<std::size_t, 3> first{};
  std::size_t count = 0;
};

/// The common samples of components that are not all missing. Refuses intervals that differ, samples that lie between
/// each other's by more than a tenth of an interval, and records without a common time.
Result<CommonPiece> commonPiece(const ThreeComponents& components);

} // namespace xov
