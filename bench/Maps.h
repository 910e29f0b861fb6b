#pragma once

#include <QString>

namespace xov::bench {

/// A table of views of large images and of many symbols beside the same by QPainter. Medians of that many rounds.
QString mapTable(int rounds);

} // namespace xov::bench
