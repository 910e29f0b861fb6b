#pragma once

#include <QString>

namespace xov::bench {

/// Tables of what `xov` takes for files of days and of a month at 100 Hz: processor time, the clock's and the peak of
/// its memory, each in a process of its own. Months are opened by a kept index and read whole, a drum stands beside a
/// section of the same file. The least of that many rounds.
QString archiveTable(int rounds);

} // namespace xov::bench
