#pragma once

#include "XOV_Graphics/base/Export.h"
#include "XOV_Graphics/base/Result.h"
#include "XOV_Graphics/seismic/Hypocentre.h"
#include "XOV_Graphics/seismic/picks/Pick.h"

#include <QByteArrayView>
#include <QStringList>

namespace xov {

/// What a file of picks holds.
struct XOV_EXPORT PickFile {
  PickArray picks;   ///< in the order of the file, each with an id of its own
  QStringList notes; ///< what the user should know about the reading, one line each
};

/// Reads the picks of a file; the contents decide on the format, not the name.
///
/// QuakeML 1.2: the picks of all events, with uncertainty, onset, polarity and mode. Where one is 0.5 s to either
/// side, both sides have it. The phase is the hint of the pick, else that of an arrival which refers to it.
///
/// Tables of text with a row of names, fields separated by commas, semicolons or tabulators and quoted where they
/// hold a separator: time (UTC), phase, network, station, location, channel, lower_s and upper_s (or uncertainty_s,
/// for both), polarity, onset, mode, comment, id, in any order. Time and station are needed; names of columns that
/// are not among these are passed over.
///
/// A pick without a station, with a time that is none or outside the years 1678 to 2261, with an uncertainty that is
/// negative or above a day, or with a word that is not one of QuakeML's is left out; a note says how many and where
/// the first one was. Errors are one line that names the file.
XOV_EXPORT Result<PickFile> readPicks(const QString& path) noexcept;

/// Reads picks from memory; `name` stands for the file in errors and notes.
XOV_EXPORT Result<PickFile> parsePicks(QByteArrayView bytes, const QString& name) noexcept;

/// Formats of files of picks.
enum class PickFormat : std::uint8_t { QuakeMl, Table };

/// Writes picks as a file, whole or not at all: a QuakeML 1.2 document of one event, with its origin and magnitudes
/// and arrivals that refer to the picks where an event is given; or a table of text with commas. The same picks give
/// the same bytes. Refuses what XML cannot hold.
XOV_EXPORT Status writePicks(const PickArray& picks, const QString& path, PickFormat format,
                             const Hypocentre* event = nullptr) noexcept;

} // namespace xov
