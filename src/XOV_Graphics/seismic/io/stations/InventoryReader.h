#pragma once

#include "XOV_Graphics/base/Export.h"
#include "XOV_Graphics/base/Result.h"
#include "XOV_Graphics/seismic/StationInventory.h"

#include <QByteArrayView>

namespace xov {

/// Reads what a file says of stations, their channels and the responses of these; the contents decide on the format,
/// not the name.
///
/// StationXML 1.0 to 1.2 (FDSN, www.fdsn.org/xml/station): all networks, stations and channels with their epochs,
/// coordinates and responses. A station without a place on the globe, or with a number that is none, is left out with
/// its channels, a channel alone where only it has one; the notes say how many, and where the first one was. A
/// response that cannot be read leaves the channel, with the line that says why in InstrumentResponse::problem.
///
/// SAC files of poles and zeros (SAC User's Guide, command TRANSFER, "polezero"): one channel for each block of
/// ZEROS, POLES and CONSTANT, with the codes, epoch and place that the comments above it give, as data centres write
/// them. The response is from metres of displacement, in angular frequency, as the format has it. A block without
/// codes is that of any record.
///
/// The texts that readStations() reads: stations, no channels.
///
/// Errors are one line that names the file, and the line where there is one. At most 1 GiB.
XOV_EXPORT Result<StationInventory> readInventory(const QString& path) noexcept;

/// The same from memory; `name` stands for the file in errors and notes.
XOV_EXPORT Result<StationInventory> parseInventory(QByteArrayView bytes, const QString& name) noexcept;

} // namespace xov
