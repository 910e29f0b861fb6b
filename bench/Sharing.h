#pragma once

#include <QString>

namespace xov::bench {

/// A table of works done on one thread and on two in turn: the least times by the clock and by the processor.
QString sharingTable(int rounds);

} // namespace xov::bench
