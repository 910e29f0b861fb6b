#pragma once

#include "XOV_Graphics/base/Export.h"
#include "XOV_Graphics/base/Result.h"
#include "XOV_Graphics/seismic/Hypocentre.h"

#include <QByteArrayView>
#include <QStringList>

namespace xov {

/// What an event file holds.
struct XOV_EXPORT EventFile {
  HypocentreArray events; ///< in the order of the file; each has an origin time
  /// What the user should know about the reading, such as rows that were left out: one line each, which names the
  /// file.
  QStringList notes;

  /// The events as the views take them.
  EventOriginArray origins() const { return {events.begin(), events.end()}; }
};

/// Reads the events of a file; the contents decide on the format, not the name.
///
/// QuakeML 1.2 (D. Schorlemmer et al., QuakeML Basic Event Description, 2013): of each event the preferred origin,
/// else the first one with a time; all magnitudes (setMagnitudes() says which count); the region's name, else
/// the first description; its publicID; the preferred focal mechanism, else the first one with a moment tensor or a
/// nodal plane. A mechanism with a number that is none or out of range is left out, which a note says; its event
/// stays.
///
/// Tables of text, as catalogues export them: fields separated by commas, semicolons, tabulators or "|", quoted where
/// they hold a separator. A first row with names says which column is which, in any order and whatever else there is:
/// time (or date and time), latitude, longitude, depth in km, magnitude or mag, magType (else type), place, id (or
/// eventID); columns mw, ms, mb and ml are magnitudes of these types. Without names the columns are time, latitude,
/// longitude, depth, magnitude, type. A field may be empty except for the time.
///
/// FDSN's event text is such a table, also without its row of names. Catalogues in formats of their own are known by
/// their first lines: GCMT's NDK (with moment tensor, centroid and nodal planes as the event's mechanism), Nordic
/// (S-files and compact ones; the first hypocentre, with the digits of a line of high accuracy below it), mchedr (the
/// machine-readable PDE bulletin of the USGS; of solutions of the source the first with a moment tensor), hypoDD
/// (.loc, .reloc and phase.dat) and ZMAP.
///
/// An event without a time, or with a number that is none or out of range, is left out; the notes say how many, and
/// on which line the first one was. Errors are one line that names the file, and the line where there is one.
XOV_EXPORT Result<EventFile> readEvents(const QString& path) noexcept;

/// Whether a file begins like one of the formats of readEvents(), or as XML, so that what is wrong with it is better
/// told of as events. False where it cannot be read.
XOV_EXPORT bool looksLikeEvents(const QString& path) noexcept;

/// Reads events from memory; `name` stands for the file in errors and notes.
XOV_EXPORT Result<EventFile> parseEvents(QByteArrayView bytes, const QString& name) noexcept;

} // namespace xov
