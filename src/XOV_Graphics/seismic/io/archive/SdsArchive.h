#pragma once

#include "XOV_Graphics/base/Export.h"
#include "XOV_Graphics/base/Result.h"
#include "XOV_Graphics/seismic/ChannelPatterns.h"
#include "XOV_Graphics/seismic/SeismogramOutline.h"
#include "XOV_Graphics/seismic/io/archive/Archive.h"

#include <QDate>
#include <QDateTime>

#include <stop_token>

namespace xov {

/// A channel of an SDS archive, as the names of its files tell.
struct XOV_EXPORT SdsChannel {
  ChannelCodes codes = {}; ///< network, station, location and channel
  QDate firstDay = {};     ///< of its first file
  QDate lastDay = {};      ///< of its last file
  int dayCount = 0;        ///< that have a file
};

/// A folder of miniSEED files by days, as SeisComP data structure ("SDS", www.seiscomp.de) lays them out:
/// YEAR/NETWORK/STATION/CHANNEL.D/NETWORK.STATION.LOCATION.CHANNEL.D.YEAR.DAY, the day being that of the year. Other
/// files and folders are passed over, also those whose name is not that of the folders that they lie in. Days are
/// UTC.
///
/// Nothing is kept: each question looks at the folders as they are now.
class XOV_EXPORT SdsArchive {
public:
  /// An archive below a folder, which need not be there.
  explicit SdsArchive(QString root) : root_(std::move(root)) {}

  /// Whether a folder is laid out so: it has a file of waveforms at its place.
  static bool isArchive(const QString& folder) noexcept;

  /// The folder that holds the years.
  const QString& root() const { return root_; }

  /// The channels that are selected by patterns as of SeismogramReadOptions, in the order of their codes. No file is
  /// opened. Refuses a folder that cannot be read and patterns that are none. Fewer once `stop` is requested.
  /// Folders below it that cannot be read are passed over; `unreadable` gets a line for each.
  Result<std::vector<SdsChannel>> channels(const QStringList& patterns = {}, std::stop_token stop = {},
                                           QStringList* unreadable = nullptr) const noexcept;

  /// The files of a channel with a name between two days, both included, in the order of days; an invalid day is
  /// open.
  QStringList dayFiles(const ChannelCodes& codes, const QDate& from, const QDate& to) const noexcept;

  /// The files that hold samples of a channel between two times: those of its days, and that of the day before where
  /// its last record goes on so far. An invalid time is open.
  QStringList files(const ChannelCodes& codes, const QDateTime& from, const QDateTime& to) const noexcept;

  /// When the samples of a channel begin and end, and its rate, by two headers of its first and last file; the
  /// beginning and end of these days where they do not tell. Samples are not counted.
  ChannelOutline span(const SdsChannel& channel) const noexcept;

  /// The records of a channel between two times, ends included; an invalid time is open. Its days are read as one
  /// (openJoinedFiles()): it makes one record where it has no gap. An error where it has no sample in that time.
  Result<SeismogramFile> recordsOf(const ChannelCodes& codes, const QDateTime& from, const QDateTime& to,
                                   const std::optional<IndexCache>& cache = {}) const noexcept;

  /// The same of all channels that are selected: an error where no channel is, or none has a sample in that time; one
  /// that cannot be read is left out with a note.
  Result<SeismogramFile> records(const QStringList& patterns, const QDateTime& from, const QDateTime& to,
                                 const std::optional<IndexCache>& cache = {}) const noexcept;

private:
  QString root_;
};

} // namespace xov
