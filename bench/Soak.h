#pragma once

#include <QString>

namespace xov::bench {

/// What a soak has found.
struct SoakResult {
  QString table;
  bool isComplete = false; ///< every sample of the files arrived, once, in its place
};

/// Plays `hours` of 36 channels at 100 Hz, synthetic noise of sites written as miniSEED, through a SeedLink server
/// and a socket to a client and a real-time display, `speed` times as fast as they were recorded: 24 hours at 500
/// times take three minutes. The table tells whether every sample arrived once and as the files have it, whether
/// memory stays flat once the display's buffers are full, and whether redraws take as long at the end as at the
/// beginning. The files need 18 MB an hour in the folder for temporary files, the server as much memory and more.
SoakResult soak(double hours, double speed);

} // namespace xov::bench
