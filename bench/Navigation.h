#pragma once

#include <QString>

namespace xov::bench {

/// A table of what it takes from a turn of the wheel over a section to its picture, beside the time of one or two
/// frames of a screen that shows 60 a second.
QString navigationTable(int rounds);

} // namespace xov::bench
