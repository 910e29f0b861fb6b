#pragma once

#include <QString>

namespace xov::bench {

/// A table of what the desk takes to list a thousand files, beside its limit, and from opening a day at 100 Hz to its
/// picture, beside a program of Qt alone that draws the same samples from memory, and until that day filtered is
/// shown another time, beside the first one: processor time and the clock's.
QString deskTable(int rounds);

} // namespace xov::bench
