#pragma once

#include "XOV_Graphics/seismic/io/events/EventReaders.h"

namespace xov {

/// Whether a file begins with an event in the five lines of NDK: the third one holds the centroid.
bool isNdk(QByteArrayView head);

/// Reads events of the Global CMT catalogue, five lines each (Global CMT Project, "allorder.ndk_explained", Lamont-
/// Doherty Earth Observatory, 2006). The origin is that of the first line, of the catalogue that the project refers
/// to; centroid, moment tensor and nodal planes become the mechanism. Mw follows from the scalar moment M0 in dyne cm
/// as 2/3 (lg M0 - 16.1), the project's own definition, rounded to two decimals.
Result<EventFile> readNdk(QByteArrayView text, const QString& name);

} // namespace xov
