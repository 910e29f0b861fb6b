#pragma once

#include "XOV_Graphics/seismic/io/mseed/MiniSeedRecord.h"

#include <optional>

namespace xov {

/// The encoding with a number of blockette 1000, if it is known.
std::optional<MiniSeedEncoding> miniSeedEncoding(int number);

/// Whether the header's samples can be there: they have a rate, begin behind `headerBytes`, and as many fit into the
/// record. What is wrong if not. Text and records without samples always can.
QString samplesProblem(const MiniSeedRecord& record, qsizetype headerBytes);

/// What an encoding that is not known is refused with.
QString unknownEncoding(int number);

int daysInYear(int year);

/// What is said of a day that its year does not have, at byte `place` of the header.
QString missingDay(int day, int year, int place);

/// Midnight of a day of the year, 1 to 366, in microseconds since 1970.
std::int64_t dayStartUs(int year, int day);

} // namespace xov
