#pragma once

#include <QStringList>

namespace xov::bench {

/// What it takes to run a program: time of the processor in its own code and the system's, time by the clock, memory.
struct ProcessCost {
  double processorMs = 0;
  double clockMs = 0;
  double peakMegabytes = 0;
};

/// Milliseconds of the processor that all threads of this program have taken so far.
double ownProcessorMs();

/// Of one run; nothing where it fails, and on systems that do not tell.
ProcessCost costOf(const QStringList& command);

/// The least of both, number by number; a run that failed counts for nothing.
ProcessCost lesser(const ProcessCost& a, const ProcessCost& b);

/// The least of some rounds.
ProcessCost leastCost(const QStringList& command, int rounds);

} // namespace xov::bench
