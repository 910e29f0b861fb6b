#pragma once

#include "XOV_Graphics/base/Result.h"

#include <QByteArray>
#include <QString>

#include <cstdint>
#include <map>

namespace xov {

/// How far a station's packets have arrived.
struct SeedLinkPlace {
  std::uint64_t sequence = 0; ///< of the last packet
  std::int64_t timeUs = 0;    ///< start of its record, microseconds since 1970
  bool operator==(const SeedLinkPlace&) const = default;
};

/// The places of all stations by their identifiers, such as "GE_WLF".
using SeedLinkPlaces = std::map<QByteArray, SeedLinkPlace>;

/// Reads a state file: a line a station of identifier, sequence number and time in microseconds since 1970, between
/// blanks. A file that is not there has no places; one that is damaged is an error, which names the line.
Result<SeedLinkPlaces> readSeedLinkState(const QString& path);

/// Writes a state file, whole or not at all.
Status writeSeedLinkState(const SeedLinkPlaces& places, const QString& path);

} // namespace xov
