#pragma once

#include "XOV_Graphics/base/Result.h"
#include "XOV_Graphics/seismic/SacHeader.h"

namespace xov {

inline constexpr int kSacFloatCount = 70;
inline constexpr int kSacIntegerCount = 40;
inline constexpr int kSacWordBytes = 4;

inline constexpr int kSacVersion6 = 6; ///< header and samples
inline constexpr int kSacVersion7 = 7; ///< header, samples and a footer of doubles
inline constexpr int kSacOldestVersion = 1;

/// How an error line says where a header field stands.
enum class SacPlaces : std::uint8_t {
  Bytes, ///< "npts at byte 316"
  Lines, ///< "npts on line 16", by the rows of five of the alphanumeric form
};

/// The place of the header word at `byteOffset`.
QString sacPlace(const char* field, std::size_t byteOffset, SacPlaces places);

/// Refuses a header of which no time series can be read: another version than 6 or 7, a spectrum or x-y data, uneven
/// spacing, a negative number of samples. A type of file that is not set counts as a time series.
Status checkSacHeader(const SacHeader& header, const QString& name, SacPlaces places);

/// Refuses a sample interval that is not above 0 and a start time that is not finite, both in single precision. The
/// places are given as text since the values may come from a footer.
Status checkSacTimes(double delta, const QString& deltaPlace, double b, const QString& bPlace, const QString& name);

/// What to note of a header with a reference time that is none: the first of its fields that is out of range, and
/// where. Empty when the time is fine, or not given.
QString sacTimeNote(const SacHeader& header, const QString& name, SacPlaces places);

/// One line of the form "name: place: found this, expected that".
Error sacError(const QString& name, const QString& place, const QString& found, const QString& expected);

} // namespace xov
