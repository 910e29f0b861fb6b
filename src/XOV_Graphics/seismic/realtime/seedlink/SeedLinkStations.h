#pragma once

#include "XOV_Graphics/base/Export.h"
#include "XOV_Graphics/base/Result.h"

#include <QByteArray>
#include <QStringList>

#include <vector>

namespace xov {

/// A station that is asked for, with patterns of its channels; '*' is any text and '?' any character, in codes of
/// stations too.
struct XOV_EXPORT SeedLinkStation {
  QByteArray network; ///< its code or a pattern
  QByteArray station; ///< its code or a pattern
  /// As "BHZ", "00BHZ" or "HH?", with '!' before what is left out; none asks for all channels.
  std::vector<QByteArray> channels;

  /// The identifier: "GE_WLF".
  QByteArray id() const { return network + '_' + station; }
  /// Whether a code of it is a pattern.
  bool hasWildcards() const;
};

/// Reads a list such as "GE_WLF:BHZ,GR_*:HHZ": stations between commas, each with patterns of channels between blanks
/// behind a colon, or without. Refuses in one line what no station or channel can be called.
XOV_EXPORT Result<std::vector<SeedLinkStation>> parseSeedLinkStations(const QString& text);

/// What protocol 4 calls a channel at its station: "00_B_H_Z" for location 00 and channel BHZ.
QByteArray seedLink4StreamId(QByteArrayView location, QByteArrayView channel);

/// What selects channels of that pattern in protocol 4: "00_B_H_Z" for "00BHZ", "*_B_H_Z" for "BHZ".
QByteArray seedLink4Selector(const QByteArray& channels);

/// Whether a pattern with '*' and '?' is that of a text.
bool matchesWildcards(QByteArrayView pattern, QByteArrayView text);

/// Whether patterns of channels, such as those of a SeedLinkStation, select a channel with that location and code.
/// A pattern without a location takes any.
bool selectsChannel(const std::vector<QByteArray>& patterns, QByteArrayView location, QByteArrayView channel);

} // namespace xov
