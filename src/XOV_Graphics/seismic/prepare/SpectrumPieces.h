#pragma once

#include "XOV_Graphics/base/Export.h"
#include "XOV_Graphics/seismic/SeismogramRecord.h"
#include "XOV_Graphics/seismic/response/ResponseFunction.h"
#include "XOV_Graphics/seismic/signal/Spectrogram.h"

#include <QString>

#include <optional>
#include <vector>

namespace xov {

/// The records as pieces of one recording, in time order; times are those of the records. The samples stay the
/// records', and where these are not in memory, pieces have their source. Null records and those without samples are
/// left out.
XOV_EXPORT std::vector<SpectrogramPiece> spectrogramPieces(const SeismogramArray& records);

/// The samples of pieces one behind the other, with a NaN between them, for spectra of the whole; those that have the
/// sample interval of the first. Throws std::bad_alloc when memory does not allow it.
XOV_EXPORT std::vector<float> joinedSamples(const std::vector<SpectrogramPiece>& pieces);

/// What the power spectral densities of records are.
struct XOV_EXPORT SpectralUnit {
  std::optional<GroundMotion> motion; ///< of the ground, as far as all records agree
  QString density;                    ///< "(nm/s)²/Hz", or "counts²/Hz" where they do not say what they are
  QString decibels;                   ///< "dB rel. 1 (m/s)²/Hz", in SI units, or "dB rel. 1 counts²/Hz"
  double decibelOffset = 0;           ///< to add to dB of densities in the records' own unit
};

/// Of records whose headers say so (SacHeader::idep): nm, nm/s or nm/s².
XOV_EXPORT SpectralUnit spectralUnitOf(const SeismogramArray& records);

/// What to add to the dB of a density at a frequency, in SI units, to make it one of acceleration. Nothing for 0 Hz,
/// where only acceleration itself is known.
XOV_EXPORT std::optional<double> decibelsToAcceleration(GroundMotion motion, double hz);

} // namespace xov
