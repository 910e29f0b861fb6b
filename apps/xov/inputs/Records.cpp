#include "apps/xov/inputs/Records.h"

#include "apps/xov/inputs/Inputs.h"
#include "apps/xov/inputs/Validators.h"
#include "apps/xov/terminal/Progress.h"

#include <CLI/CLI.hpp>

#include <QFileInfo>
#include <QHash>
#include <QSet>

#include <XOV_Graphics/seismic/io/Readers.h>
#include <algorithm>

namespace xov::cli {

namespace {

constexpr int kNotesPerFolder = 5; // of skipped files; the rest is counted
constexpr qsizetype kUnselectedNotes = 5;

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

QStringList texts(const std::vector<std::string>& arguments) {
  QStringList list;
  for (const std::string& argument : arguments)
    list.append(QString::fromStdString(argument));
  return list;
}

// Reads files into records and keeps what there is to say of files in which no channel is selected.
class Reading {
public:
  Reading(SeismogramReadOptions options, Complaints& complaints)
      : options_(std::move(options)),
        complaints_(complaints) {}

  void read(const InputFile& file) {
    const Result<SeismogramFile> found = readSeismogramFile(file.path, options_);
    if (!found) return refuse(file, found.error());
    readable_.append(file.path);
    if (found->records.empty()) {
      unselected_ += found->notes;
      return;
    }
    for (const QString& note : found->notes)
      complaints_.say(note);
    for (const auto& record : found->records) {
      all_.records.push_back(record);
      all_.files.append(file.path);
    }
  }

  /// The files that could be read, whatever is selected of them.
  const QStringList& readable() const { return readable_; }

  /// Says and counts as failures what is wrong with the command line.
  Records finish(const QStringList& errors) && {
    for (const QString& error : errors)
      complaints_.say(error);
    if (!errors.isEmpty()) all_.status = ExitCode::Failed;
    if (all_.records.empty()) sayUnselected();
    return std::move(all_);
  }

private:
  void refuse(const InputFile& file, const QString& reason) {
    if (!file.folder.isEmpty()) return complaints_.skip(file, reason);
    complaints_.say(reason);
    all_.status = ExitCode::Failed;
  }

  void sayUnselected() {
    for (const QString& note : unselected_.first(std::min(unselected_.size(), kUnselectedNotes)))
      complaints_.say(note);
    const qsizetype rest = unselected_.size() - kUnselectedNotes;
    if (rest > 0) complaints_.say(QStringLiteral("%1 more files hold no channel that is selected").arg(rest));
    if (!unselected_.isEmpty()) all_.status = ExitCode::Failed;
  }

  SeismogramReadOptions options_;
  Complaints& complaints_;
  Records all_;
  QStringList readable_;
  QStringList unselected_; // what was noted of files without a record
};

} // namespace

void RecordInputs::addOptions(CLI::App& options, const char* files, const char* description) {
  options.add_option(files, arguments_, description)->required()->type_name("");
  options
      .add_option("--channels", channels_, "Read these channels only: codes with * and ?, as 'BH?' or 'XX.*.00.BHZ'")
      ->type_name("PATTERN[,...]")
      ->delimiter(',')
      ->allow_extra_args(false)
      ->check(channelPattern());
}

QStringList RecordInputs::names() const { return texts(arguments_); }

Records RecordInputs::read() const {
  const InputList inputs = expandInputs(names());
  Progress progress(QStringLiteral("reading"), std::int64_t(inputs.files.size()));
  Complaints complaints(progress);
  Reading reading({texts(channels_)}, complaints);
  for (const InputFile& file : inputs.files) {
    reading.read(file);
    progress.advanceTo(&file - inputs.files.data() + 1);
  }
  complaints.sayRest();
  QStringList errors = inputs.errors;
  for (const QString& folder : barrenFolders(inputs.files, reading.readable()))
    errors.append(folder + QStringLiteral(": the folder holds no seismogram"));
  return std::move(reading).finish(errors);
}

} // namespace xov::cli
