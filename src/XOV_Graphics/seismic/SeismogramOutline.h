#pragma once

#include "XOV_Graphics/base/Export.h"
#include "XOV_Graphics/seismic/ChannelPatterns.h"

#include <QDateTime>
#include <QString>
#include <QStringList>

#include <cstdint>
#include <optional>
#include <vector>

namespace xov {

/// A channel of a file, as its headers tell.
struct XOV_EXPORT ChannelOutline {
  ChannelCodes codes = {};      ///< network, station, location and channel
  QDateTime start = {};         ///< of its first sample, UTC; invalid where the time is not known
  QDateTime end = {};           ///< of its last sample
  double rateHz = 0;            ///< of the first piece; 0 where the header has none
  std::int64_t sampleCount = 0; ///< of all pieces
  /// How many records it makes: gaps, overlaps and changes of the rate lie between them.
  int pieceCount = 0;
  std::optional<double> distanceDeg = {}; ///< from the event, where the header knows both places
};

/// What a seismogram file holds, as its headers tell.
struct XOV_EXPORT SeismogramOutline {
  QString format;                       ///< one of seismogramFormats()
  std::vector<ChannelOutline> channels; ///< as they first appear
  QStringList notes;                    ///< what headers show of those of a SeismogramFile
};

} // namespace xov
