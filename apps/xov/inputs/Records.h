#pragma once

#include "apps/xov/inputs/ArchiveInputs.h"
#include "apps/xov/options/Options.h"
#include "apps/xov/terminal/Messages.h"

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <XOV_Graphics/base/Result.h>
#include <XOV_Graphics/seismic/SeismogramFile.h>
#include <XOV_Graphics/seismic/io/archive/Archive.h>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace xov::cli {

struct InputList;

/// The seismograms that were read, in the order of the command line.
struct Records {
  SeismogramArray records;
  QStringList files;              ///< for each record, the file it came from, named as the user did
  ExitCode status = ExitCode::Ok; ///< Failed when something could not be read; that has been said
  QByteArray origin = {};         ///< tells them from others in a RecordCache; empty where they are in none
};

/// What was found in a file.
struct ReadFile {
  bool holdsRecords = false; ///< that are selected
  QStringList notes;         ///< as of a SeismogramFile
};

/// Reads a file of that name and keeps what it wants of it.
using FileReader = std::function<Result<ReadFile>(const QString& name, const SeismogramReadOptions& options)>;

/// The FILES arguments of a command that takes seismograms, its option --channels, and an archive in place of files.
class RecordInputs {
public:
  /// `files` is the name of the arguments, with that of an option, if any, which they may follow; `description` is
  /// what help says of them.
  void addOptions(const Options& options, const char* files = "FILES",
                  const char* description = "Seismogram files, folders of them, or patterns in quotes");

  /// The command works without files, too; to be said before addOptions().
  void allowNone() { isRequired_ = false; }

  /// Options for records that are drawn as they are: how much memory samples of large files may take, and where to
  /// keep the indexes of files.
  void addMemoryOptions(const Options& options);

  /// The arguments as the user gave them.
  QStringList names() const;

  /// Reads all files (of those larger than the memory for samples, and of all where indexes are kept, samples come as
  /// they are needed), with a progress bar when that takes long, and says on standard error what readers note, such
  /// as damaged records. A file that cannot be read is said there, too, and left out. When the user named it that
  /// makes the status Failed; a folder may hold other files besides. Of files without a channel that is selected
  /// nothing is said as long as others have one.
  Records read() const;

  /// The same for one who reads the files by other means, one after the other: the status of the whole.
  ExitCode readEach(const FileReader& reader) const;

private:
  ExitCode readEach(const InputList& inputs, const FileReader& reader) const;
  Records readArchive() const;
  Records readFiles(const InputList& inputs) const;
  QByteArray originOfFiles(const InputList& inputs) const;
  Records selectedOfGiven() const;
  SeismogramReadOptions readOptions() const;
  /// Whether a file is read whole; else its samples come as they are drawn.
  bool isRead(const QString& name) const;
  std::optional<IndexCache> indexCache() const;

  bool isRequired_ = true;
  std::vector<std::string> arguments_;
  std::vector<std::string> channels_;
  ArchiveInputs archive_;
  std::string indexCache_;
  double sampleMegabytes_ = 512;
};

} // namespace xov::cli
