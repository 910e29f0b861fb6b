#include "apps/xov/prepare/StepRunner.h"

#include <QSet>

#include <XOV_Graphics/seismic/prepare/Conditioning.h>
#include <XOV_Graphics/seismic/prepare/Derived.h>
#include <XOV_Graphics/seismic/prepare/PhaseTimes.h>
#include <XOV_Graphics/seismic/prepare/RecordPicks.h>
#include <XOV_Graphics/seismic/prepare/RecordTexts.h>
#include <XOV_Graphics/seismic/prepare/RecordWindow.h>
#include <XOV_Graphics/seismic/prepare/Resampling.h>
#include <XOV_Graphics/seismic/prepare/Rotation.h>
#include <algorithm>
#include <limits>

namespace xov::cli {

namespace {

constexpr double kOpen = std::numeric_limits<double>::infinity();

using Made = Result<std::shared_ptr<SeismogramRecord>>;

template <typename Record>
Made asRecord(Result<std::shared_ptr<Record>> made) {
  if (!made) return Error{made.error()};
  return std::shared_ptr<SeismogramRecord>(std::move(made).value());
}

Made windowFrom(const std::shared_ptr<SeismogramRecord>& record, const WrittenTime& start) {
  if (const auto* seconds = std::get_if<double>(&start)) return asRecord(windowOf(record, *seconds, kOpen));
  return asRecord(windowOf(record, std::get<QDateTime>(start), QDateTime()));
}

Made windowTo(const std::shared_ptr<SeismogramRecord>& record, const WrittenTime& end) {
  if (const auto* seconds = std::get_if<double>(&end)) return asRecord(windowOf(record, -kOpen, *seconds));
  return asRecord(windowOf(record, QDateTime(), std::get<QDateTime>(end)));
}

/// Does a step to one record.
class Doer {
public:
  Doer(std::shared_ptr<SeismogramRecord> record, const StepSettings& settings)
      : record_(std::move(record)),
        settings_(settings) {}

  Made operator()(const StartStep& step) const { return windowFrom(record_, step.at); }
  Made operator()(const EndStep& step) const { return windowTo(record_, step.at); }
  Made operator()(const AroundStep& step) const {
    const Result<double> phase = phaseSeconds(*record_, step.phase);
    if (!phase) return Error{phase.error()};
    return asRecord(windowOf(record_, *phase + step.from, *phase + step.to));
  }
  Made operator()(const FilterStep& step) const {
    ButterworthFilter filter = step.filter;
    filter.order = settings_.filterOrder;
    return asRecord(filtered(*record_, filter, settings_.filterPhase));
  }
  Made operator()(const DetrendStep& step) const {
    return std::shared_ptr<SeismogramRecord>(detrended(*record_, step.order));
  }
  Made operator()(const TaperStep& step) const {
    return asRecord(step.isSeconds ? taperedBySeconds(*record_, step.amount) : taperedByShare(*record_, step.amount));
  }
  Made operator()(const IntegrateStep& /*step*/) const { return asRecord(integrated(*record_)); }
  Made operator()(const DifferentiateStep& /*step*/) const { return asRecord(differentiated(*record_)); }
  Made operator()(const DecimateStep& step) const { return asRecord(decimated(*record_, step.factor)); }
  Made operator()(const RemoveResponseStep& step) const {
    ResponseRemoval removal;
    removal.motion = step.motion;
    removal.preFilter = settings_.preFilter;
    removal.waterLevelDb = settings_.waterLevelDb;
    return asRecord(removeResponse(*record_, settings_.inventory, removal));
  }
  // Of several records: doTogether().
  Made operator()(const NormalizeStep& /*step*/) const { return record_; }
  Made operator()(const RotateStep& /*step*/) const { return record_; }

private:
  std::shared_ptr<SeismogramRecord> record_;
  const StepSettings& settings_;
};

bool isWindow(const PreparationStep& step) {
  return std::holds_alternative<StartStep>(step) || std::holds_alternative<EndStep>(step);
}

/// Does a step to each record by itself.
void doEach(ReadyRecords& ready, const PreparationStep& step, const StepSettings& settings) {
  SeismogramArray records;
  QStringList files;
  QSet<QString> channels; // of which something is left
  std::vector<std::pair<QString, QString>> failed;
  for (std::size_t i = 0; i < ready.records.size(); ++i) {
    const QString channel = ready.records[i]->labelString();
    // Given away, so that the samples of the step before are in memory once.
    Made made = std::visit(Doer(std::exchange(ready.records[i], {}), settings), step);
    if (!made) {
      failed.emplace_back(channel, made.error());
      continue;
    }
    channels.insert(channel);
    records.push_back(std::move(made).value());
    files.append(ready.files.value(qsizetype(i)));
  }
  for (const auto& [channel, problem] : failed) {
    if (!isWindow(step) || !channels.contains(channel)) ready.problems.append(problem);
  }
  ready.records = std::move(records);
  ready.files = std::move(files);
}

/// Of the first wave that is expected at the record's distance.
std::optional<double> expectedIncidence(const SeismogramRecord& record) {
  constexpr SeismicPhase kFirst[] = {SeismicPhase::P, SeismicPhase::Pdiff, SeismicPhase::PKP};
  const std::vector<PhaseArrival> arrivals = arrivalsOf(record, kFirst);
  const auto first = std::ranges::min_element(arrivals, {}, &PhaseArrival::seconds);
  return first == arrivals.end() ? std::nullopt : std::optional(first->incidenceDeg);
}

/// To the axes of the rays that are expected, those of one station and distance at a time.
RotatedRecords turnedToRays(const SeismogramArray& records) {
  std::vector<SeismogramArray> groups;
  for (const auto& record : records) {
    const auto group = std::ranges::find_if(groups, [&](const SeismogramArray& known) {
      return stationText(*known.front()) == stationText(*record) && known.front()->gcarc() == record->gcarc();
    });
    (group == groups.end() ? groups.emplace_back() : *group).push_back(record);
  }
  RotatedRecords all;
  for (const SeismogramArray& group : groups) {
    const std::optional<double> incidence = expectedIncidence(*group.front());
    RotatedRecords turned =
        incidence ? rotatedRecords(group, WaveAxes::LQT, {{}, *incidence}) : RotatedRecords{group, {}};
    if (!incidence)
      all.notes.append(stationText(*group.front()) +
                       QStringLiteral(": no wave is expected, as the distance is not known or has none; not turned"));
    all.records.insert(all.records.end(), turned.records.begin(), turned.records.end());
    all.notes += turned.notes;
  }
  return all;
}

RotatedRecords turned(const SeismogramArray& records, const RotateStep& step) {
  if (step.axes == WaveAxes::LQT && !step.incidenceDeg) return turnedToRays(records);
  return rotatedRecords(records, step.axes, {{}, step.incidenceDeg.value_or(0)});
}

/// Does a step that takes all records together; false where the step is none of these.
bool doTogether(ReadyRecords& ready, const PreparationStep& step) {
  if (const auto* normalize = std::get_if<NormalizeStep>(&step)) {
    ready.records = normalized(std::move(ready.records), normalize->by);
    return true;
  }
  const auto* const rotate = std::get_if<RotateStep>(&step);
  if (rotate == nullptr) return false;
  RotatedRecords rotated = turned(ready.records, *rotate);
  ready.records = std::move(rotated.records);
  ready.notes += rotated.notes;
  ready.files.clear();
  for (const auto& record : ready.records)
    ready.files.append(record->path());
  return true;
}

} // namespace

ReadyRecords makeReady(SeismogramArray records, QStringList files, const std::vector<PreparationStep>& steps,
                       const StepSettings& settings) {
  ReadyRecords ready{std::move(records), std::move(files), {}, {}};
  for (const PreparationStep& step : steps) {
    if (!doTogether(ready, step)) doEach(ready, step, settings);
  }
  return ready;
}

bool countsOnAxis(const std::vector<PreparationStep>& steps) {
  return std::ranges::any_of(steps, [](const PreparationStep& step) {
    const auto* const start = std::get_if<StartStep>(&step);
    const auto* const end = std::get_if<EndStep>(&step);
    return (start != nullptr && std::holds_alternative<double>(start->at)) ||
           (end != nullptr && std::holds_alternative<double>(end->at));
  });
}

} // namespace xov::cli
