#pragma once

#include <QString>

#include <vector>

namespace xov {

/// A longitude (x) or latitude (y) with a degree sign and its letter: "120°E", "60°W", "45.5°N"; 0, and 180 degrees
/// of longitude, have no letter. Longitudes are taken to -180 … 180 first.
QString degreeText(Qt::Axis axis, double deg, int decimals);

/// A tick label of a map's edge.
struct DegreeLabel {
  float deg = 0;
  QString text;
};

/// The labels of ticks at all multiples of `step` from `lower` to `upper`, with as many decimals as the step needs,
/// at most 6. None for a step that is not positive, limits that are not finite or reversed, or more than 1000 ticks.
std::vector<DegreeLabel> degreeLabels(Qt::Axis axis, float lower, float upper, float step);

} // namespace xov
