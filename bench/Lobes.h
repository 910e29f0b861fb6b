#pragma once

#include <QString>

namespace xov::bench {

/// A table of sections that are stroked alone, and with the lobes above their zero lines filled under the strokes.
QString lobesTable(int rounds);

} // namespace xov::bench
