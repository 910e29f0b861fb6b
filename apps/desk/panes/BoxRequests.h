#pragma once

#include "apps/desk/panes/PlotRequest.h"

#include <QRectF>

#include <XOV_Graphics/views/map/MapPlace.h>
#include <XOV_Graphics/views/seismic/SeismogramView.h>
#include <optional>

namespace xov::desk {

/// A map of what lies in a box of another one.
PlotRequest requestForRegion(const PlotRequest& map, const MapBox& box);

/// The records that sections and stacks show; of other views none.
SeismogramArray recordsOf(const XOVView& view);

/// Records that a box on seismograms holds, and the box's times on the axis of the first one.
struct BoxedRecords {
  SeismogramArray records;
  AxisSpan seconds;
};
/// None in views other than sections and stacks, and where the box holds no record.
std::optional<BoxedRecords> recordsInBoxOf(const XOVView& view, const QRectF& box);

/// The beam power of these records between these times; none for less than three records, which are no array, and
/// for times that not all of them have. What is done to the records of `seismograms` is done to them, too.
std::optional<PlotRequest> requestForBeam(const PlotRequest& seismograms, const BoxedRecords& boxed);

} // namespace xov::desk
