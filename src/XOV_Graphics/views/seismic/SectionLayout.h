#pragma once

#include "XOV_Graphics/views/seismic/MultiSeisView.h"

#include <QRectF>
#include <QString>

#include <cstddef>
#include <optional>
#include <vector>

namespace xov {

/// Where the strips of a record section stand.
struct SectionLayout {
  struct Strip {
    std::size_t record = 0; ///< its index
    double center = 0;      ///< height of the zero line, in view points
  };
  std::vector<Strip> strips; ///< in the order of the records
  double slot = 0;           ///< points that amplitudes and picks are measured by
  bool hasAxis = false;      ///< whether the strips stand at their values along an axis
  float lower = 0;           ///< the value at the lower edge of the plot
  float upper = 0;           ///< at its upper edge
};

/// The value that a record has along an axis of that kind: degrees or kilometres from the event, or degrees clockwise
/// from north, 0 to below 360. Nothing where the record does not know it, and for Evenly.
std::optional<double> placeOf(const SeismogramRecord& record, MultiSeisView::StripPlacement placement);

/// Whether any record has a place of that kind.
bool anyHasPlace(const SeismogramArray& records, MultiSeisView::StripPlacement placement);

/// Lays out the strips of a plot from its lower edge up.
///
/// Evenly, or where no record knows its place: all records, null ones too, in slots of equal height. Else the ones
/// that know theirs, in their places; a slot is what they would have evenly, but at least kLeastSlot points and at
/// most a sixth of the plot. Beyond the outermost ones the axis goes on by as much as the largest amplitude reaches,
/// `reach` slots, within limits.
SectionLayout layoutSection(const SeismogramArray& records, MultiSeisView::StripPlacement placement,
                            const QRectF& plot, double reach);

/// Moves the strips of a plot along its axis to where they stand when it shows `places` of it. Those outside are left
/// out; the slot stays.
void showPlaces(SectionLayout& layout, const QRectF& plot, const PlotSpan& places);

inline constexpr double kLeastSlot = 18;

/// What the axis is called, with its unit: "Distance (km)". Empty for Evenly.
QString sectionAxisTitle(MultiSeisView::StripPlacement placement);

/// The distance of ticks along the axis: kAutomaticInterval, or for azimuths one that divides 90 degrees.
float sectionTickInterval(MultiSeisView::StripPlacement placement, float lower, float upper);

} // namespace xov
