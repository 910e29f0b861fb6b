#pragma once

#include "apps/xov/inputs/Records.h"
#include "apps/xov/options/Options.h"
#include "apps/xov/prepare/AxisAlignment.h"
#include "apps/xov/prepare/PreparationStep.h"

#include <QString>

#include <optional>
#include <string>
#include <vector>

namespace xov::cli {

/// The heading of the options that all commands for seismograms share.
inline constexpr char kPreparationGroup[] = "Preparation";

/// What the user wants done to seismograms before they are shown, as options whose order on the command line is that
/// of the steps; and where stations, event and picks are.
class Preparation {
public:
  void addOptions(const Options& options);

  /// Takes the responses alone from the file of stations: the command looks after the places itself.
  void leavePlacesAlone() { placesRecords_ = false; }

  /// The steps in their order, once the command line has been parsed.
  std::vector<PreparationStep> steps() const;

  /// Whether the user wants anything of it.
  bool isWanted() const;

  /// The records after all steps. Says which ones could not be made ready; those are left out, and make the status
  /// Failed. Without a step, stations and event the records are the same.
  Records apply(Records records) const { return apply(std::move(records), nullptr); }
  /// The same of records that are aligned before the first step, which then counts seconds on their aligned axes.
  Records apply(Records records, const AxisAlignment* alignment) const;

  /// What is done to the records, for under the title; empty when nothing is.
  QString text() const;

  /// The file of stations as the user named it; empty when there is none.
  const std::string& stationsFile() const { return stations_; }

private:
  using Parse = Result<PreparationStep> (*)(const QString& value);
  struct Declared {
    Option option;
    Parse parse;
    QString name;
  };
  struct WrittenStep {
    PreparationStep step;
    QString words; // of the command line
  };
  Option add(const Options& options, const char* name, const char* value, Parse parse, const char* what);
  void addFlag(const Options& options, const char* name, Parse parse, const char* what);
  void addResponseOptions(const Options& options, Option stations);
  StepSettings settings() const;
  std::vector<WrittenStep> writtenSteps() const;
  QByteArray originBefore(const Records& records, const AxisAlignment* alignment, bool isOnAxis) const;
  Records doSteps(Records records, const StepSettings& settings) const;
  bool takeStations(Records& records, StepSettings& settings) const;
  bool takeEvent(Records& records) const;
  bool takePicks(Records& records) const;

  std::optional<Options> options_;
  std::vector<Declared> declared_;
  int filterOrder_ = StepSettings().filterOrder;
  bool zeroPhase_ = false;
  bool placesRecords_ = true;
  std::string stations_;
  std::string event_;
  std::string pickFile_;
  std::vector<double> preFilter_; // four frequencies, or none
  double waterLevelDb_ = StepSettings().waterLevelDb;
};

} // namespace xov::cli
