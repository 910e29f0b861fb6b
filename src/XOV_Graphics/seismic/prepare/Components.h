#pragma once

#include "XOV_Graphics/base/Export.h"
#include "XOV_Graphics/base/Result.h"
#include "XOV_Graphics/seismic/SeismogramRecord.h"
#include "XOV_Graphics/seismic/StationObservation.h"

#include <QStringList>

#include <array>

namespace xov {

/// Vertical, radial and transverse component of a station; one that is missing is null.
using ThreeComponents = std::array<std::shared_ptr<SeismogramRecord>, 3>;

/// The components among the records.
///
/// With `codes`, the first of them picks the vertical component, the next ones the radial and the transverse one: a
/// record has a code when its component ends in it, whatever the case.
///
/// Without codes, the last character of the records' components decides: Z is vertical; R, N and 1 are radial; T, E
/// and 2 transverse; where there is no Z, but 1, 2 and 3, those are in this order vertical, radial and transverse.
/// Three records that this does not tell apart are taken in their order.
///
/// Refuses what fits no component, more than one record for a component, and records of different stations. Records
/// must not be null.
XOV_EXPORT Result<ThreeComponents> pickComponents(const SeismogramArray& records, const QStringList& codes = {});

/// The components that are not missing, in their order.
XOV_EXPORT SeismogramArray presentComponents(const ThreeComponents& components);

/// Components as a view takes them: those that are not missing are replaced by the `prepared` ones, in their order,
/// such as those on a common axis. With too few of these the last ones are missing.
XOV_EXPORT std::shared_ptr<StationObservation> observationOf(const ThreeComponents& components,
                                                             const SeismogramArray& prepared);

} // namespace xov
