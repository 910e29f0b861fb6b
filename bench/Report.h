#pragma once

#include <QJsonObject>
#include <QString>

#include <optional>
#include <string>
#include <vector>

namespace xov::bench {

inline constexpr double kBytesPerMegabyte = 1048576;

/// What one engine needed for one work.
struct Measurement {
  std::string work;
  std::string engine;
  std::optional<double> milliseconds;          ///< median; none when it did not finish
  std::optional<double> processorMilliseconds; ///< median of all its threads together
  double prepareMilliseconds = 0;              ///< of what a library wants done before it can draw
  double fastest = 0;
  double slowest = 0;
  int rounds = 0;
  double limitSeconds = 0; ///< after which it was stopped
  double sampleMegabytes = 0;
  double fileMegabytes = 0; ///< of what was written, where an engine writes a file
  double peakMegabytes = 0; ///< of the process that drew it, samples included
};

/// What is measured, as bench/run tells in XOV_BENCH_COMMIT; empty where nothing does.
QString commit();

/// A line that names processor, system and commit.
QString machine();

/// The table with ratios to the scan of the same work, and with the memory that drawing takes beyond it.
QString table(const std::vector<Measurement>& measurements);

QJsonObject json(const std::vector<Measurement>& measurements);

} // namespace xov::bench
