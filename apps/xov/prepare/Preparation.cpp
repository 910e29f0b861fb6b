#include "apps/xov/prepare/Preparation.h"

#include "apps/xov/inputs/EventInputs.h"
#include "apps/xov/inputs/RecordCache.h"
#include "apps/xov/inputs/RecordPlot.h"
#include "apps/xov/inputs/Validators.h"
#include "apps/xov/prepare/EventChoice.h"
#include "apps/xov/prepare/StepRunner.h"

#include <XOV_Graphics/base/FileName.h>
#include <XOV_Graphics/seismic/io/picks/PickFiles.h>
#include <XOV_Graphics/seismic/io/stations/InventoryReader.h>
#include <XOV_Graphics/seismic/prepare/PicksOfRecords.h>
#include <XOV_Graphics/seismic/prepare/Placement.h>
#include <XOV_Graphics/seismic/response/ResponseFunction.h>
#include <algorithm>
#include <map>
#include <set>

namespace xov::cli {

namespace {

constexpr qsizetype kMostProblems = 5; // that are said in full
constexpr double kMostHz = 1e6;
constexpr double kDeepestWaterDb = 1000;
constexpr int kExactDigits = 17;

Check parsedBy(Result<PreparationStep> (*parse)(const QString&)) {
  const auto check = [parse](const std::string& value) {
    return parse(QString::fromStdString(value)).error().toStdString();
  };
  return Check{check, {}};
}

// Poles and zeros may come without.
bool hasPlaces(const StationInventory& inventory) {
  return !inventory.stations.empty() || std::ranges::any_of(inventory.channels, [](const StationChannel& channel) {
    return channel.latitudeDeg.has_value();
  });
}

bool removesResponse(const std::vector<PreparationStep>& steps) {
  return std::ranges::any_of(
      steps, [](const PreparationStep& step) { return std::holds_alternative<RemoveResponseStep>(step); });
}

// What of the responses of these records contradicts itself, one line a channel.
QStringList sensitivityNotes(const SeismogramArray& records, const StationInventory& inventory) {
  QStringList notes;
  std::set<const StationChannel*> seen;
  for (const auto& record : records) {
    const Result<const StationChannel*> channel = stationChannelOf(inventory, *record);
    if (!channel || !seen.insert(*channel).second) continue;
    const QString problem = sensitivityProblem((*channel)->response);
    if (!problem.isEmpty()) notes.append(record->labelString() + QStringLiteral(": ") + problem);
  }
  return notes;
}

void sayEach(const QStringList& notes) {
  for (const QString& text : notes)
    note(text);
}

} // namespace

Option Preparation::add(const Options& options, const char* name, const char* value, Parse parse, const char* what) {
  const std::string description = what;
  const Option option =
      options.add(name, description).typeName(value).eachTime().check(parsedBy(parse)).group(kPreparationGroup);
  declared_.push_back({option, parse, QString::fromLatin1(name)});
  return option;
}

void Preparation::addFlag(const Options& options, const char* name, Parse parse, const char* what) {
  const std::string description = what;
  declared_.push_back(
      {options.addFlag(name, description).group(kPreparationGroup), parse, QString::fromLatin1(name)});
}

void Preparation::addOptions(const Options& options) {
  options_ = options;
  const Option stations =
      options
          .add("--stations", stations_, "Places of stations and their responses: StationXML, poles and zeros, text")
          .typeName("FILE")
          .group(kPreparationGroup);
  options.add("--event", event_, "The event that the records show: QuakeML, a catalogue or a table")
      .typeName("FILE")
      .group(kPreparationGroup);
  options.add("--pick-file", pickFile_, "Picks of the records, in place of those in headers: QuakeML or a table")
      .typeName("FILE")
      .group(kPreparationGroup);
  add(options, "--start", "TIME", parseStart, "Cut off what is before this time: UTC, or seconds on the time axis");
  add(options, "--end", "TIME", parseEnd, "Cut off what is after this time: UTC, or seconds on the time axis");
  add(options, "--around", "PHASE FROM TO", parseAround,
      "Keep these seconds about a pick or an expected phase, as P -10 60");
  const Option filter = add(options, "--filter", "BAND F1 F2", parseFilter,
                            "Butterworth filter: lowpass F, highpass F, bandpass F1 F2 or bandstop F1 F2 in Hz");
  options.add("--corners", filterOrder_, "Poles at each corner of filters (default 4)")
      .typeName("N")
      .check(wholeNumberFromTo(1, kMostFilterOrder))
      .needs(filter)
      .group(kPreparationGroup);
  options.addFlag("--zero-phase", zeroPhase_, "Filter forward and backward, so that onsets stay at their times")
      .needs(filter)
      .group(kPreparationGroup);
  add(options, "--detrend", "[KIND]", parseDetrend,
      "Take away the mean, linear trend or a polynomial of that order (default linear)");
  add(options, "--taper", "[SHARE]", parseTaper,
      "Let both ends rise from 0 over this share of the record, or seconds as 10s (default 0.05)");
  add(options, "--normalize", "[BY]", parseNormalize,
      "Divide by the largest sample of each record, or of all: section (default record)");
  addFlag(options, "--integrate", parseIntegrate, "Integrate over time");
  addFlag(options, "--differentiate", parseDifferentiate, "Differentiate with respect to time");
  add(options, "--decimate", "N", parseDecimate, "Keep every Nth sample, after a filter against aliases");
  addResponseOptions(options, stations);
  add(options, "--rotate", "AXES DEG", parseRotate,
      "Turn components of a station: ZRT, or LQT with the ray's incidence in degrees");
}

void Preparation::addResponseOptions(const Options& options, Option stations) {
  const Option removal =
      add(options, "--remove-response", "[MOTION]", parseRemoveResponse,
          "Take the response of --stations away: disp, vel or acc in nm, nm/s or nm/s² (default vel)");
  removal.needs(stations);
  options
      .add("--pre-filter", preFilter_,
           "Frequencies in Hz that --remove-response leaves: all from B to C, none beyond A and D")
      .typeName("A B C D")
      .check(numberFromTo(0, kMostHz))
      .needs(removal)
      .group(kPreparationGroup)
      .takesExactly(4);
  options
      .add("--water-level", waterLevelDb_,
           "Limit of --remove-response in dB below the response's largest value (default 60)")
      .typeName("DB")
      .check(numberFromTo(0, kDeepestWaterDb))
      .needs(removal)
      .group(kPreparationGroup);
}

// Each option has its values in the order in which the parser met it.
std::vector<PreparationStep> Preparation::steps() const {
  std::vector<PreparationStep> steps;
  for (WrittenStep& written : writtenSteps())
    steps.push_back(std::move(written.step));
  return steps;
}

std::vector<Preparation::WrittenStep> Preparation::writtenSteps() const {
  std::vector<WrittenStep> steps;
  std::map<Option, std::size_t> met;
  for (const Option option : options_->given()) {
    const auto declared = std::ranges::find(declared_, option, &Declared::option);
    if (declared == declared_.end()) continue;
    const std::size_t place = met[option]++;
    const QString value = QString::fromStdString(option.results().at(place));
    const Result<PreparationStep> step = declared->parse(value);
    if (step) steps.push_back({*step, declared->name + QLatin1Char(' ') + value});
  }
  return steps;
}

bool Preparation::isWanted() const {
  return !steps().empty() || !stations_.empty() || !event_.empty() || !pickFile_.empty();
}

StepSettings Preparation::settings() const {
  StepSettings settings;
  settings.filterOrder = filterOrder_;
  if (zeroPhase_) settings.filterPhase = FilterPhase::Zero;
  settings.waterLevelDb = waterLevelDb_;
  if (!preFilter_.empty()) settings.preFilter = PreFilter{preFilter_[0], preFilter_[1], preFilter_[2], preFilter_[3]};
  return settings;
}

// False, which has been said, when the file cannot be read.
bool Preparation::takeStations(Records& records, StepSettings& settings) const {
  if (stations_.empty()) return true;
  Result<StationInventory> inventory = readInventory(fileNameFromBytes(stations_));
  if (!inventory) {
    complain(inventory.error());
    return false;
  }
  sayEach(inventory->notes);
  settings.inventory = std::move(inventory).value();
  if (!placesRecords_ || !hasPlaces(settings.inventory)) return true;
  PreparedRecords placed = withStations(std::move(records.records), settings.inventory);
  sayEach(placed.notes);
  records.records = std::move(placed.records);
  return true;
}

bool Preparation::takeEvent(Records& records) const {
  if (event_.empty()) return true;
  const std::optional<EventFile> events = readEventsOrComplain(event_);
  if (!events) return false;
  PreparedRecords placed = withEventsOf(std::move(records.records), events->events);
  sayEach(placed.notes);
  records.records = std::move(placed.records);
  return true;
}

bool Preparation::takePicks(Records& records) const {
  if (pickFile_.empty()) return true;
  const Result<PickFile> file = readPicks(fileNameFromBytes(pickFile_));
  if (!file) {
    complain(file.error());
    return false;
  }
  sayEach(file->notes);
  PreparedRecords picked = withPicks(std::move(records.records), file->picks);
  sayEach(picked.notes);
  records.records = std::move(picked.records);
  return true;
}

Records Preparation::apply(Records records, const AxisAlignment* alignment) const {
  const bool aligns = alignment != nullptr && alignment->isWanted();
  if (records.records.empty() || !(isWanted() || aligns)) return records;
  StepSettings settings = this->settings();
  const bool hasStations = takeStations(records, settings);
  const bool hasEvent = takeEvent(records);
  const bool hasPicks = takePicks(records);
  if (!hasStations || !hasEvent || !hasPicks) records.status = ExitCode::Failed;
  const std::vector<PreparationStep> steps = this->steps();
  if (removesResponse(steps)) sayEach(sensitivityNotes(records.records, settings.inventory));
  const bool isOnAxis = !aligns && countsOnAxis(steps);
  records.origin = originBefore(records, aligns ? alignment : nullptr, isOnAxis);
  if (aligns) {
    records = alignment->apply(std::move(records));
  } else if (isOnAxis) {
    records.records = onOneAxis(std::move(records.records));
  }
  return doSteps(std::move(records), settings);
}

// What the steps begin with; empty where that cannot be told again.
QByteArray Preparation::originBefore(const Records& records, const AxisAlignment* alignment, bool isOnAxis) const {
  if (records.origin.isEmpty() || records.status != ExitCode::Ok) return {};
  QStringList texts{QString::fromLatin1(records.origin.toHex()), alignment != nullptr ? alignment->text() : QString(),
                    QString::number(int(isOnAxis) + 2 * int(placesRecords_) + 4 * int(zeroPhase_)),
                    QString::number(filterOrder_), QString::number(waterLevelDb_, 'g', kExactDigits)};
  for (const std::string& name : {stations_, event_, pickFile_}) {
    texts.append(name.empty() ? QString() : fileStamp(fileNameFromBytes(name)));
    if (texts.back().isEmpty() && !name.empty()) return {};
  }
  for (const double frequency : preFilter_)
    texts.append(QString::number(frequency, 'g', kExactDigits));
  return originOf(texts);
}

// What a cache has of the first steps is taken from there.
Records Preparation::doSteps(Records records, const StepSettings& settings) const {
  RecordCache* const cache = records.origin.isEmpty() ? nullptr : currentRecordCache();
  const std::vector<WrittenStep> steps = writtenSteps();
  std::vector<QByteArray> origins{records.origin}; // before each step, and behind the last one
  for (const WrittenStep& step : steps)
    origins.push_back(originOf({QString::fromLatin1(origins.back().toHex()), step.words}));
  std::size_t done = cache == nullptr ? 0 : steps.size();
  for (; done > 0; --done) {
    auto found = cache->find(origins[done]);
    if (!found) continue;
    records = std::move(found->records);
    break;
  }
  ReadyRecords ready{std::move(records.records), std::move(records.files), {}, {}};
  for (; done < steps.size(); ++done) {
    ReadyRecords next = makeReady(std::move(ready.records), std::move(ready.files), {steps[done].step}, settings);
    ready = {std::move(next.records), std::move(next.files), ready.problems + next.problems,
             ready.notes + next.notes};
    const bool isClean = ready.problems.isEmpty() && ready.notes.isEmpty();
    if (cache != nullptr && isClean) cache->keep(origins[done + 1], {{ready.records, ready.files}, {}});
  }
  sayEach(ready.notes);
  for (const QString& problem : ready.problems.first(std::min(ready.problems.size(), kMostProblems)))
    complain(problem + QStringLiteral("; left out"));
  const qsizetype rest = ready.problems.size() - kMostProblems;
  if (rest > 0) complain(QStringLiteral("%1 more records left out").arg(rest));
  if (!ready.problems.isEmpty()) records.status = ExitCode::Failed;
  records.records = std::move(ready.records);
  records.files = std::move(ready.files);
  return records;
}

QString Preparation::text() const { return describe(steps(), settings()); }

} // namespace xov::cli
