#pragma once

#include "bench/Report.h"
#include "bench/RivalProcess.h"
#include "bench/Works.h"

#include <QDir>
#include <QString>

#include <string>
#include <vector>

namespace xov::bench {

/// What all engines and other libraries need for a work. The quick ones are timed in turn, so that a change of the
/// machine's mood meets all of them; a slow one is drawn once, in a process of its own, and stopped after the limit.
/// What they drew is saved into the folder.
std::vector<Measurement> measure(const Work& work, const std::vector<RivalProgram>& programs, int rounds,
                                 double limitSeconds, const QDir& pictures);

/// Draws once and prints what it took: milliseconds by the clock, the peak memory of this process, the size of
/// the file, and milliseconds of the processor. What was drawn goes to `path` with a suffix of its kind. Returns the
/// exit status.
int drawOnce(const std::string& engineName, const std::string& workName, const QString& path);

} // namespace xov::bench
