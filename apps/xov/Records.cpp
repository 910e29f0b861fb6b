#include "apps/xov/Records.h"

#include "apps/xov/Inputs.h"
#include "apps/xov/Progress.h"
#include "seismic/io/Readers.h"

#include <CLI/CLI.hpp>

#include <QFileInfo>
#include <QHash>
#include <QSet>

namespace xov::cli {

namespace {

constexpr int kNotesPerFolder = 5; // of skipped files; the rest is counted

// Says what could not be read, without getting into the way of the bar.
class Complaints {
public:
  explicit Complaints(Progress& progress) : progress_(progress) {}

  void say(const QString& text) {
    progress_.clear();
    complain(text);
  }

  void skip(const InputFile& file, const QString& reason) {
    const int count = ++skipped_[file.folder];
    if (count <= kNotesPerFolder) say(reason + QStringLiteral("; skipped"));
  }

  void sayRest() {
    for (auto folder = skipped_.cbegin(); folder != skipped_.cend(); ++folder) {
      const int rest = folder.value() - kNotesPerFolder;
      if (rest > 0) say(QStringLiteral("%1: %2 more files skipped").arg(folder.key()).arg(rest));
    }
  }

private:
  Progress& progress_;
  QHash<QString, int> skipped_;
};

// The folders in which no file could be read.
QStringList barrenFolders(const std::vector<InputFile>& files, const QStringList& read) {
  const QSet<QString> readFiles(read.begin(), read.end());
  QStringList barren;
  QSet<QString> fruitful;
  for (const InputFile& file : files) {
    if (file.folder.isEmpty()) continue;
    if (readFiles.contains(file.path)) fruitful.insert(file.folder);
    if (!barren.contains(file.folder)) barren.append(file.folder);
  }
  barren.removeIf([&](const QString& folder) { return fruitful.contains(folder); });
  return barren;
}

void readOne(const InputFile& file, Records& all, Complaints& complaints) {
  const Result<SeismogramArray> found = readSeismograms(file.path);
  if (!found && !file.folder.isEmpty()) {
    complaints.skip(file, found.error());
  } else if (!found) {
    complaints.say(found.error());
    all.status = ExitCode::Failed;
  }
  for (const auto& record : found.value()) {
    all.records.push_back(record);
    all.files.append(file.path);
  }
}

} // namespace

void RecordInputs::addOptions(CLI::App& options) {
  options.add_option("FILES", arguments_, "Seismogram files, folders of them, or patterns in quotes")
      ->required()
      ->type_name("");
}

Records RecordInputs::read() const {
  QStringList names;
  for (const std::string& argument : arguments_)
    names.append(QString::fromStdString(argument));
  const InputList inputs = expandInputs(names);

  Records all;
  Progress progress(QStringLiteral("reading"), std::int64_t(inputs.files.size()));
  Complaints complaints(progress);
  for (const InputFile& file : inputs.files) {
    readOne(file, all, complaints);
    progress.advanceTo(&file - inputs.files.data() + 1);
  }
  complaints.sayRest();
  QStringList errors = inputs.errors;
  for (const QString& folder : barrenFolders(inputs.files, all.files))
    errors.append(folder + QStringLiteral(": the folder holds no seismogram"));
  for (const QString& error : errors)
    complaints.say(error);
  if (!errors.isEmpty()) all.status = ExitCode::Failed;
  return all;
}

} // namespace xov::cli
