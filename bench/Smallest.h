#pragma once

#include <QString>

namespace xov::bench {

/// What it takes to start `xov` for one small picture, beside a program of Qt alone that writes the same pixels.
QString smallestTable(int rounds);

} // namespace xov::bench
