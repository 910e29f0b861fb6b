#pragma once

#include "XOV_Graphics/platform/Symbols.h"

#include <QRectF>

#include <cstdint>
#include <vector>

namespace xov {

/// The symbols that a page needs, in drawing order: those that reach into `area` (view points) and of which
/// something shows. Left out are, where there are more than a few thousand, symbols that later ones certainly cover,
/// and, where all look alike and opaque, symbols centred within 1/20 point of a later one: less than a dot at 600
/// dots an inch. That distance doubles until no more than a quarter of a million are left, or a million where each is
/// a disc of one colour, which is the shortest thing that a page can hold.
std::vector<std::int64_t> symbolsOnPaper(const Symbols& symbols, const QRectF& area);

} // namespace xov
