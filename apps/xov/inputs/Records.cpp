#include "apps/xov/inputs/Records.h"

#include "apps/xov/inputs/GivenInputs.h"
#include "apps/xov/inputs/InputFiles.h"
#include "apps/xov/inputs/Inputs.h"
#include "apps/xov/inputs/RecordCache.h"
#include "apps/xov/inputs/Validators.h"
#include "apps/xov/terminal/Progress.h"

#include <QFileInfo>
#include <QHash>
#include <QSet>

#include <XOV_Graphics/base/FileName.h>
#include <XOV_Graphics/base/InputFile.h>
#include <XOV_Graphics/base/PagedSamples.h>
#include <XOV_Graphics/base/SampleIndex.h>
#include <XOV_Graphics/seismic/ChannelPatterns.h>
#include <XOV_Graphics/seismic/StationInventory.h>
#include <XOV_Graphics/seismic/prepare/RecordCopy.h>
#include <algorithm>
#include <cmath>

namespace xov::cli {

namespace {

constexpr int kNotesPerFolder = 5; // of skipped files; the rest is counted
constexpr qsizetype kUnselectedNotes = 5;

// An index that cannot be kept is no matter of the plot.
void noteOfFile(const QString& text) {
  const bool isOfIndex = text.contains(QLatin1String(kIndexNotKept));
  if (!isOfIndex) return note(text);
  noteInTheEnd(text, text.sliced(text.lastIndexOf(QLatin1String(": "))));
}

// Says what could not be read, without getting into the way of the bar.
class Complaints {
public:
  explicit Complaints(Progress& progress) : progress_(progress) {}

  void say(const QString& text) {
    progress_.clear();
    complain(text);
  }

  void sayNote(const QString& text) {
    if (!isQuiet()) say(text);
  }

  void sayOfFile(const QString& text) {
    progress_.clear();
    noteOfFile(text);
  }

  void skip(const InputFile& file, const QString& reason) {
    const int count = ++skipped_[file.folder];
    if (count <= kNotesPerFolder) sayNote(reason + QStringLiteral("; skipped"));
  }

  void sayRest() {
    for (auto folder = skipped_.cbegin(); folder != skipped_.cend(); ++folder) {
      const int rest = folder.value() - kNotesPerFolder;
      if (rest > 0) sayNote(QStringLiteral("%1: %2 more files skipped").arg(folder.key()).arg(rest));
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
    list.append(fileNameFromBytes(argument));
  return list;
}

// Goes through the files and keeps what there is to say of those in which no channel is selected.
class Reading {
public:
  Reading(SeismogramReadOptions options, const FileReader& reader, Complaints& complaints)
      : options_(std::move(options)),
        reader_(reader),
        complaints_(complaints) {}

  void read(const InputFile& file) {
    const Result<ReadFile> found = reader_(file.path, options_);
    if (!found) return refuse(file, found.error());
    readable_.append(file.path);
    if (!found->holdsRecords) {
      unselected_ += found->notes;
      return;
    }
    anyRecords_ = true;
    for (const QString& note : found->notes)
      complaints_.sayOfFile(note);
  }

  /// The files that could be read, whatever is selected of them.
  const QStringList& readable() const { return readable_; }

  /// Says and counts as failures what is wrong with the command line.
  ExitCode finish(const QStringList& errors) {
    for (const QString& error : errors)
      complaints_.say(error);
    if (!errors.isEmpty()) status_ = ExitCode::Failed;
    if (!anyRecords_) sayUnselected();
    return status_;
  }

private:
  void refuse(const InputFile& file, const QString& reason) {
    // What is no recording lies in folders, too; what the disk does not give may be one.
    if (!file.folder.isEmpty() && !isReadingFailure(reason)) return complaints_.skip(file, reason);
    complaints_.say(reason);
    status_ = ExitCode::Failed;
  }

  void sayUnselected() {
    for (const QString& note : unselected_.first(std::min(unselected_.size(), kUnselectedNotes)))
      complaints_.say(note);
    const qsizetype rest = unselected_.size() - kUnselectedNotes;
    if (rest > 0) complaints_.say(QStringLiteral("%1 more files hold no channel that is selected").arg(rest));
    if (!unselected_.isEmpty()) status_ = ExitCode::Failed;
  }

  SeismogramReadOptions options_;
  const FileReader& reader_;
  Complaints& complaints_;
  ExitCode status_ = ExitCode::Ok;
  bool anyRecords_ = false;
  QStringList readable_;
  QStringList unselected_; // what was noted of files without a record
};

constexpr double kBytesPerMegabyte = 1 << 20;
constexpr double kLeastMegabytes = 16;
constexpr double kMostMegabytes = 1 << 20;
constexpr char kBesideFiles[] = "beside";

// Whether the index of a record knows a block without a gap.
bool hasWholeBlock(const SeismogramRecord& record) {
  const BorrowedSamples samples = record.borrowedSamples();
  if (samples.index == nullptr || !samples.index->covers(samples.samples, 0, record.npts())) return false;
  const SampleIndex::Blocks blocks = samples.index->blocksWithin(samples.samples, 0, record.npts());
  return std::any_of(blocks.lowest, blocks.lowest + blocks.count, [](float low) { return std::isfinite(low); });
}

// What a trace that is drawn does not show of a record; empty when it shows all.
QString drawingNote(const QString& name, const SeismogramRecord& record) {
  if (hasWholeBlock(record)) return {};
  const std::span<const float> samples = samplesOf(record);
  const auto isFinite = [](float sample) { return std::isfinite(sample); };
  const auto bothFinite = [](float left, float right) { return std::isfinite(left) && std::isfinite(right); };
  if (std::ranges::adjacent_find(samples, bothFinite) != samples.end() || std::ranges::none_of(samples, isFinite))
    return {};
  return QStringLiteral("%1: samples of %2: no two in a row are numbers, so there is no line to draw")
      .arg(name, record.labelString());
}

} // namespace

void RecordInputs::addOptions(const Options& options, const char* files, const char* description) {
  options.add(files, arguments_, description).required(isRequired_).typeName("");
  options.add("--channels", channels_, "Read these channels only: codes with * and ?, as 'BH?' or 'XX.*.00.BHZ'")
      .typeName("PATTERN[,...]")
      .listBetweenCommas()
      .check(channelPattern());
  archive_.addOptions(options);
}

void RecordInputs::addMemoryOptions(const Options& options) {
  options
      .add("--index-cache", indexCache_,
           "Keep an index of each large file, which opens at once the next time: 'beside' it, or in a folder")
      .typeName("beside|FOLDER");
  options
      .add("--sample-memory", sampleMegabytes_,
           "Megabytes for samples of larger files, which are read as they are needed (default 512)")
      .typeName("MB")
      .check(numberFromTo(kLeastMegabytes, kMostMegabytes));
}

bool RecordInputs::isRead(const QString& name) const {
  const QFileInfo file(name);
  const bool isLarge = double(file.size()) > sampleMegabytes_ * kBytesPerMegabyte;
  return !file.isFile() || (indexCache_.empty() && !isLarge);
}

std::optional<IndexCache> RecordInputs::indexCache() const {
  if (indexCache_.empty()) return {};
  return IndexCache{indexCache_ == kBesideFiles ? QString() : fileNameFromBytes(indexCache_)};
}

QStringList RecordInputs::names() const { return texts(arguments_); }

SeismogramReadOptions RecordInputs::readOptions() const { return {texts(channels_)}; }

ExitCode RecordInputs::readEach(const FileReader& reader) const {
  return readEach(archive_.isGiven() ? archive_.files(names()) : expandInputs(names()), reader);
}

ExitCode RecordInputs::readEach(const InputList& inputs, const FileReader& reader) const {
  Progress progress(QStringLiteral("reading"), std::int64_t(inputs.files.size()));
  Complaints complaints(progress);
  Reading reading(readOptions(), reader, complaints);
  for (const InputFile& file : inputs.files) {
    reading.read(file);
    progress.advanceTo(&file - inputs.files.data() + 1);
  }
  complaints.sayRest();
  QStringList errors = inputs.errors;
  for (const QString& folder : barrenFolders(inputs.files, reading.readable()))
    errors.append(folder + QStringLiteral(": the folder holds no seismogram"));
  return reading.finish(errors);
}

Records RecordInputs::selectedOfGiven() const {
  const Result<ChannelPatterns> patterns = ChannelPatterns::parse(texts(channels_)); // which the option has checked
  Records all;
  for (auto& record : givenInputs().records()) {
    if (!patterns->isEmpty() && !patterns->select(channelCodesOf(*record))) continue;
    all.records.push_back(std::move(record));
    all.files.append(QString());
  }
  return all;
}

Records RecordInputs::readArchive() const {
  Records all;
  const Status status = archive_.read(names(), indexCache(), [&](const Result<SeismogramFile>& channel) {
    if (!channel) {
      complain(channel.error());
      all.status = ExitCode::Failed;
      return;
    }
    for (const QString& text : channel->notes)
      noteOfFile(text);
    for (const auto& record : channel->records) {
      all.records.push_back(record);
      all.files.append(record->path());
    }
  });
  if (status) return all;
  complain(status.error());
  all.status = ExitCode::Failed;
  return all;
}

Records RecordInputs::read() const {
  if (givenInputs().records && names() == QStringList{QLatin1String(kGivenInput)}) return selectedOfGiven();
  setPagedSamplesLimit(std::size_t(sampleMegabytes_ * kBytesPerMegabyte));
  if (archive_.isGiven()) {
    const QByteArray origin = currentRecordCache() == nullptr ? QByteArray() : originOfFiles(archive_.files(names()));
    return cachedRecords(origin, [this] { return readArchive(); });
  }
  const InputList inputs = expandInputs(names());
  return cachedRecords(originOfFiles(inputs), [&] { return readFiles(inputs); });
}

// What is read and how; empty where something of it cannot be told again.
QByteArray RecordInputs::originOfFiles(const InputList& inputs) const {
  if (currentRecordCache() == nullptr || !inputs.errors.isEmpty()) return {};
  QStringList made{archive_.text(), QString::number(sampleMegabytes_), fileNameFromBytes(indexCache_)};
  made += texts(channels_) + QStringList{QString()} + names() + QStringList{QString()};
  for (const InputFile& file : inputs.files) {
    const QString stamp = fileStamp(file.path);
    if (stamp.isEmpty()) return {};
    made.append(stamp);
  }
  return originOf(made);
}

Records RecordInputs::readFiles(const InputList& inputs) const {
  Records all;
  QSet<QString> opened; // of which samples are read as they are drawn
  QStringList read;
  for (const InputFile& file : inputs.files) {
    if (isRead(file.path))
      read.append(file.path);
    else
      opened.insert(file.path);
  }
  InputReader files(read, readOptions());
  all.status = readEach(inputs, [&](const QString& name, const SeismogramReadOptions& options) -> Result<ReadFile> {
    const Result<SeismogramFile> file =
        opened.contains(name) ? openSeismogramFile(name, options, indexCache()) : files.next();
    if (!file) return Error{file.error()};
    ReadFile found{!file->records.empty(), file->notes};
    for (const auto& record : file->records) {
      all.records.push_back(record);
      all.files.append(name);
      if (const QString note = drawingNote(name, *record); !note.isEmpty()) found.notes.append(note);
    }
    return found;
  });
  return all;
}

} // namespace xov::cli
