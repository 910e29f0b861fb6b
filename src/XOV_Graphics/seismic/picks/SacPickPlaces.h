#pragma once

#include "XOV_Graphics/seismic/SacPickFields.h"
#include "XOV_Graphics/seismic/picks/Pick.h"

#include <span>
#include <vector>

namespace xov {

/// A pick and where it goes in a SAC header.
struct PlacedPick {
  const SacPickFields* place;
  const Pick* pick;
};

/// Places for picks of one record in its header, whose own picks give way to them: where the header has a pick of the
/// same name now; that of their name, where it is "A", "F" or "T0" to "T9"; A for the earliest whose name begins with
/// a P; and the first free ones of T0 to T9, by time. What has no room is left out.
std::vector<PlacedPick> placesInHeader(std::span<const Pick* const> picks, const SacHeader& header);

/// Takes all picks out of a header.
void clearPicks(SacHeader& header, SacFooter& precise);

/// Writes a pick with its name; `seconds` count from the header's reference time.
void setPick(SacHeader& header, SacFooter& precise, const PlacedPick& placed, double seconds);

} // namespace xov
