#pragma once

#include "XOV_Graphics/base/Export.h"
#include "XOV_Graphics/seismic/arrivals/Arrivals.h"
#include "XOV_Graphics/seismic/prepare/PreparedRecords.h"

#include <QStringList>

#include <optional>
#include <span>
#include <vector>

namespace xov {

// Picks of records by their names. The name of a pick is its label, or "A", "F", "T0" to "T9" where it has none; case
// counts. The origin time is no pick. What is changed is changed in copies (changedRecord()); records must not be
// null.

/// The name of the pick with that key (Picks.h), whether it is set or not.
XOV_EXPORT QString pickName(const SeismogramRecord& record, int key);

/// The time of the first pick of that name on the record's axis in seconds, in double precision where the record has
/// it; A and F come before T0 to T9. Nothing when no such pick is set.
XOV_EXPORT std::optional<double> pickTime(const SeismogramRecord& record, const QString& name);

/// The origin time of the event on the record's axis in seconds, in double precision where the record has it; nothing
/// when it is not known.
XOV_EXPORT std::optional<double> originSeconds(const SeismogramRecord& record);

/// When phases of its event arrive at a record: arrivalsAt() the distance and depth that the record knows, seconds
/// after its origin time. A depth that is not known counts as 0. None where the distance is not known.
XOV_EXPORT std::vector<PhaseArrival> arrivalsOf(const SeismogramRecord& record,
                                                std::span<const SeismicPhase> phases = allSeismicPhases(),
                                                PhaseRepeats repeats = PhaseRepeats::FirstOnly);

/// Records with the first arrivals of phases as picks, labelled with the names of the phases. No pick is overwritten:
/// a predicted one takes the first of T0 to T9 that is free, and a phase that a pick of the record is named after is
/// not predicted. A and F stay for what has been seen. Notes name the records without a distance or an origin time,
/// and those that have no room left.
XOV_EXPORT PreparedRecords withPredictedPicks(SeismogramArray records, std::span<const SeismicPhase> phases);

/// Records with only the picks of these names; none is left without names.
XOV_EXPORT SeismogramArray withPicksNamed(SeismogramArray records, const QStringList& names);

/// Records with the picks of these names, and no others: their own, and predicted ones where the name is that of a
/// phase which a record has no pick of. A note says which names are neither.
XOV_EXPORT PreparedRecords withPicksOrPredictions(SeismogramArray records, const QStringList& names);

} // namespace xov
