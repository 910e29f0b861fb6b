#pragma once

#include <QString>
#include <QStringList>

#include <XOV_Graphics/base/Result.h>
#include <XOV_Graphics/seismic/SeismogramFile.h>
#include <XOV_Graphics/seismic/SeismogramSummary.h>
#include <utility>
#include <vector>

namespace xov::cli {

/// Reads the seismograms of a file, a pipe, or of standard input where the name is "-". What comes out of a pipe goes
/// into a temporary file first: seismogram files are read in more than one pass.
Result<SeismogramFile> readInputFile(const QString& name, const SeismogramReadOptions& options);

/// Reads inputs one after the other, as readInputFile() does each, and files that come next ahead of time, several at
/// the same time. Not more of them are in memory than some.
class InputReader {
public:
  /// All that is going to be asked for, in that order.
  InputReader(QStringList names, SeismogramReadOptions options)
      : names_(std::move(names)),
        options_(std::move(options)) {}

  /// The next one.
  Result<SeismogramFile> next();

private:
  void readAhead();

  QStringList names_;
  SeismogramReadOptions options_;
  qsizetype next_ = 0;
  std::vector<Result<SeismogramFile>> ahead_; // those from firstAhead_ on
  qsizetype firstAhead_ = 0;
};

/// The same, summed up.
Result<SeismogramFileSummary> summarizeInputFile(const QString& name, const SeismogramReadOptions& options);

} // namespace xov::cli
