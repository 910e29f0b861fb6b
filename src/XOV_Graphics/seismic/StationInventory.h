#pragma once

#include "XOV_Graphics/base/Export.h"
#include "XOV_Graphics/base/Result.h"
#include "XOV_Graphics/seismic/ChannelPatterns.h"
#include "XOV_Graphics/seismic/SeismogramRecord.h"
#include "XOV_Graphics/seismic/response/InstrumentResponse.h"

#include <QDateTime>
#include <QStringList>

#include <optional>
#include <vector>

namespace xov {

/// A time in which something stood unchanged, UTC.
struct XOV_EXPORT Epoch {
  QDateTime start = {}; ///< invalid: always
  QDateTime end = {};   ///< invalid: still

  /// Whether `time` lies within, ends included; an invalid time does.
  bool holds(const QDateTime& time) const;
};

/// A channel of a station during one epoch.
struct XOV_EXPORT StationChannel {
  ChannelCodes codes = {}; ///< an empty network, station or channel stands for any; none at all is any channel
  Epoch epoch = {};        ///< while this holds
  std::optional<double> latitudeDeg = {};  ///< -90 to 90, north positive
  std::optional<double> longitudeDeg = {}; ///< -360 to 360, east positive
  std::optional<double> elevationM = {};   ///< of the ground above sea level
  std::optional<double> depthM = {};       ///< of the sensor below the ground
  std::optional<double> azimuthDeg = {};   ///< in which positive samples point, clockwise from north
  std::optional<double> dipDeg = {};       ///< the same downwards from the horizontal: -90 is up
  std::optional<double> sampleRateHz = {}; ///< samples a second
  InstrumentResponse response = {};        ///< from ground motion to samples
  qint64 line = 0;                         ///< where it stands in the file, from 1 on
};

/// A station during one epoch.
struct XOV_EXPORT InventoryStation {
  QString network = {};                  ///< its code
  QString code = {};                     ///< of the station
  QString site = {};                     ///< the place's name
  Epoch epoch = {};                      ///< while this holds
  double latitudeDeg = 0;                ///< -90 to 90, north positive
  double longitudeDeg = 0;               ///< -360 to 360, east positive
  std::optional<double> elevationM = {}; ///< above sea level
  qint64 line = 0;                       ///< where it stands in the file, from 1 on
};

/// Stations and channels as a file has them.
struct XOV_EXPORT StationInventory {
  QString name;                           ///< the file, for errors
  std::vector<InventoryStation> stations; ///< in the order of the file
  std::vector<StationChannel> channels;   ///< in the order of the file
  /// What the user should know about the reading, such as channels that were left out: one line each, which names the
  /// file.
  QStringList notes;
};

/// The codes of a record's channel.
XOV_EXPORT ChannelCodes channelCodesOf(const SeismogramRecord& record);

/// The station of a record at the time of its first sample; null when the inventory has none. Of several that fit, as
/// for a record of unknown time, the last. A record without a network takes that of its station.
XOV_EXPORT const InventoryStation* stationOf(const StationInventory& inventory, const SeismogramRecord& record);

/// The channel of a record at the time of its first sample. A record without a network, or without a location where
/// its own channels have none, takes those that its other codes leave, as long as they leave one. The line of error
/// names the record and says whether nothing is known of the channel, or nothing at that time, or too much.
XOV_EXPORT Result<const StationChannel*> stationChannelOf(const StationInventory& inventory,
                                                          const SeismogramRecord& record) noexcept;

} // namespace xov
