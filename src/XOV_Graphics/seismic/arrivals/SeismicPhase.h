#pragma once

#include "XOV_Graphics/base/Export.h"
#include "XOV_Graphics/seismic/arrivals/EarthModel.h"

#include <QString>

#include <cstdint>
#include <optional>
#include <span>

namespace xov {

/// Seismic phases under the names of the IASPEI standard list (D. A. Storchak, J. Schweitzer, P. Bormann, Seism. Res.
/// Lett. 74, 761-772 (2003)). S and its kin are the same of S waves.
enum class SeismicPhase : std::uint8_t {
  P,     ///< bottoms in the crust or mantle, or goes up from the source: the direct wave at any distance
  Pg,    ///< bottoms in the upper crust or goes up from there
  Pb,    ///< bottoms in the lower crust or goes up from there
  Pn,    ///< bottoms below the Moho and above 210 km, or goes up from there
  Pdiff, ///< runs along the core, into its shadow
  PcP,   ///< reflected by the core
  PP,    ///< P that bottoms twice, reflected by the surface in between
  pP,    ///< reflected by the surface above the source, then P
  sP,    ///< goes up from the source as S, becomes P at the surface
  PKP,   ///< P through the core: PKPab, PKPbc or PKPdf
  PKPab, ///< bottoms in the upper part of the outer core
  PKPbc, ///< bottoms in the lower part of the outer core
  PKPdf, ///< bottoms in the inner core; PKIKP is another name of it
  PKiKP, ///< reflected by the inner core
  S,     ///< as P
  Sg,    ///< as Pg
  Sb,    ///< as Pb
  Sn,    ///< as Pn
  Sdiff, ///< as Pdiff
  ScS,   ///< as PcP
  SS,    ///< as PP
  sS,    ///< as pP
  SKS,   ///< crosses the outer core as P
  LQ,    ///< the beginning of the Love waves
  LR,    ///< the beginning of the Rayleigh waves
};

/// All of them, in their order above.
XOV_EXPORT std::span<const SeismicPhase> allSeismicPhases();

/// The name of the phase.
XOV_EXPORT QString phaseName(SeismicPhase phase);

/// The phase of a name, in which case counts; nothing where it is none of the above.
XOV_EXPORT std::optional<SeismicPhase> phaseNamed(const QString& name);

/// As which wave a body wave leaves the source, and arrives at the surface. Love and Rayleigh waves count as S.
XOV_EXPORT BodyWave waveAtSource(SeismicPhase phase);
/// As which wave it arrives at the surface.
XOV_EXPORT BodyWave waveAtSurface(SeismicPhase phase);

} // namespace xov
