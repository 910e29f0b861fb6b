#pragma once

#include <QString>

namespace xov::bench {

/// A table of how many samples a second go through filter, decimation, envelope and spectrogram, of a day at 100 Hz
/// in double precision, beside scipy's where `scripts` is the folder of its program and it is installed. Medians of
/// that many rounds.
QString signalTable(int rounds, const QString& scripts);

} // namespace xov::bench
