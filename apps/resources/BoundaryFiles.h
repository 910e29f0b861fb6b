#pragma once

#include "apps/resources/BoundarySegments.h"

#include <QByteArray>

#include <XOV_Graphics/base/Result.h>

namespace xov::maker {

/// The most points that plateBoundaryController takes as one segment, by file.
inline constexpr std::size_t kMostPointsByType = 1024;
inline constexpr std::size_t kMostPointsBySegment = 512;

/// Part of the titles of files with fewer points than their source has.
inline constexpr char kThinnedMark[] = "thinned";

/// A text of boundaries of one type: a line with the file's title, then for each segment a line "<name> <number>",
/// its points, and a line ">".
QByteArray boundariesByType(const QByteArray& title, const QByteArray& name, const Segments& segments);

/// A named list of segments.
struct NamedSegments {
  QByteArray name;
  Segments segments;
};

/// The ending of the title of each segment that is made of others than the published ones of PB2002.
inline constexpr char kDerivedMark[] = "(generalised, not PB2002)";

/// A text in the form of PB2002_boundaries.txt made of boundaries by type: for each segment a line
/// "<name> <number> (generalised, not PB2002)", its points, and a line "*** end of line segment ***".
QByteArray derivedBoundariesBySegment(const std::vector<NamedSegments>& types);

/// Whether a text was made by derivedBoundariesBySegment().
bool areDerivedBoundaries(const QByteArray& text);

/// The text of PB2002_boundaries.txt out of the published one (PB2002_boundaries.dig.txt of Bird, P., 2003: An
/// updated digital model of plate boundaries, G-cubed 4(3), 1027): a line with the name of the segment, points as
/// longitude and latitude with a comma between them, and a line "*** end of line segment ***". Segments are cut where
/// cutAtMeridians() says, under their own name. An error names the line that no such text has; what was made by
/// derivedBoundariesBySegment() is refused.
Result<QByteArray> importedBoundaries(const QByteArray& published);

} // namespace xov::maker
