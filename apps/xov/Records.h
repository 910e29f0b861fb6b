#pragma once

#include "apps/xov/Messages.h"
#include "seismic/SeismogramRecord.h"

#include <QString>
#include <QStringList>

#include <string>
#include <vector>

namespace CLI {
class App;
}

namespace xov::cli {

/// The seismograms that were read, in the order of the command line.
struct Records {
  SeismogramArray records;
  QStringList files;              ///< for each record, the file it came from, named as the user did
  ExitCode status = ExitCode::Ok; ///< Failed when something could not be read; that has been said
};

/// The FILES arguments of a command that takes seismograms.
class RecordInputs {
public:
  void addOptions(CLI::App& options);

  /// Reads all files, with a progress bar when that takes long. A file that cannot be read is said on standard error
  /// and left out. When the user named it that makes the status Failed; a folder may hold other files besides.
  Records read() const;

private:
  std::vector<std::string> arguments_;
};

} // namespace xov::cli
