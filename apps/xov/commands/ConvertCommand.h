#pragma once

#include "apps/xov/commands/Command.h"
#include "apps/xov/inputs/Records.h"
#include "apps/xov/options/Options.h"
#include "apps/xov/prepare/Preparation.h"

#include <string>

namespace xov::cli {

/// `xov convert`: seismograms, made ready, as SAC or miniSEED files.
class ConvertCommand : public Command {
public:
  void addOptions(const Options& options) override;
  ExitCode run() override;

private:
  bool writesMiniSeed() const;
  bool writesFolder() const;

  RecordInputs inputs_;
  Preparation preparation_;
  std::string output_;
  std::string format_;
};

/// The name of the file for a record in a folder: its codes and the day and time (UTC) of its first sample, as
/// "II.TLY.00.BHZ.2011.070.054730" and the extension. Of codes only what is safe in names stays: letters, digits, "-"
/// and "_", which stands for anything else, too.
QString fileNameOf(const SeismogramRecord& record, const char* extension);

} // namespace xov::cli
