#pragma once

#include "apps/xov/inputs/Inputs.h"
#include "apps/xov/options/Options.h"

#include <QDateTime>

#include <XOV_Graphics/base/Result.h>
#include <XOV_Graphics/seismic/SeismogramFile.h>
#include <XOV_Graphics/seismic/io/archive/Archive.h>
#include <XOV_Graphics/seismic/io/archive/SdsArchive.h>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace xov::cli {

/// An archive of seismograms by days in place of files: the arguments of a command are channels then.
class ArchiveInputs {
public:
  void addOptions(const Options& options);

  bool isGiven() const { return !root_.empty(); }
  /// The archive and the time, as the user named them.
  QString text() const;

  /// The files of the channels that patterns select, for one who reads each by itself.
  InputList files(const QStringList& patterns) const;

  /// Reads the channels that patterns select, one after the other: `take` gets what each gave. An error where there
  /// is none.
  Status read(const QStringList& patterns, const std::optional<IndexCache>& cache,
              const std::function<void(const Result<SeismogramFile>& channel)>& take) const;

private:
  Result<std::vector<SdsChannel>> channels(const QStringList& patterns, QStringList* unreadable = nullptr) const;
  QString root() const;
  QDateTime from() const;
  QDateTime to() const;

  std::string root_;
  std::vector<std::string> between_; // two times, or none
};

} // namespace xov::cli
