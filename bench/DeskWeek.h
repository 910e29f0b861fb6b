#pragma once

#include <QString>

namespace xov::bench {

/// What leaving a desk open does to it: its window with a live display of a station's three channels at 100 Hz beside
/// a drum of one, which receive `hours` of recordings over a socket from a server of this process, `speed` times as
/// fast as they were recorded. A week at 5,000 times takes two minutes; its files need 250 MB in the folder for
/// temporary files, and the server as much memory. The table tells whether memory and open files stay as they are
/// once a day and a quarter has passed, which the drum holds one of, and whether the window is painted as quickly at
/// the end as at the beginning.
QString deskWeekTable(double hours, double speed);

} // namespace xov::bench
