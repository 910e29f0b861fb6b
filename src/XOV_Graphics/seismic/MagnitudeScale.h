#pragma once

#include "XOV_Graphics/base/Export.h"
#include "XOV_Graphics/seismic/Hypocentre.h"

#include <optional>

namespace xov {

/// The scales that the types of magnitudes belong to.
enum class MagnitudeScale : std::uint8_t {
  Other,    ///< any other, and those that are not named
  Moment,   ///< Mw and how it was found: Mww, Mwc, Mwb, Mwr, Mwp, ...
  Surface,  ///< Ms, Msz, Ms_20, ...
  Body,     ///< mb and mB; not mb_Lg, which Lg waves make a regional scale
  Local,    ///< ML, MLv, ...; not MLg
  Duration, ///< Md, and Mc after the coda
};

/// The scale of a magnitude type; case does not matter. Source of the types: P. Bormann (ed.), New Manual of
/// Seismological Observatory Practice (NMSOP-2), chapter 3 (GFZ Potsdam, 2013), and the list of magnitude types of
/// the ANSS catalogue (USGS).
XOV_EXPORT MagnitudeScale magnitudeScale(const QString& type);

/// Fills the magnitudes of `values`. Those of a scale that is there more than once are represented by the preferred
/// one, else by the first; the event's own by the preferred one, else by the first of the scales in the order Mw, Ms,
/// mb, ML, Md, others. `preferred` is a place in `magnitudes`.
XOV_EXPORT void setMagnitudes(HypocentreValues& values, std::vector<EventMagnitude> magnitudes,
                              std::optional<std::size_t> preferred = {});

} // namespace xov
