#pragma once

#include "apps/resources/ResourceTable.h"
#include "apps/xov/commands/Command.h"
#include "apps/xov/options/Options.h"

#include <QString>
#include <QStringList>

#include <string>

namespace xov::cli {

/// `xov resources`: which base maps and plate boundaries there are, or the import of boundaries.
class ResourcesCommand : public Command {
public:
  void addOptions(const Options& options) override;
  ExitCode run() override;

private:
  std::string published_;
};

/// The cells of a resource as the library finds it: its file's name; "full", "small", "thinned", "derived"
/// (boundaries that stand in for PB2002), "published" or "missing"; width and height in pixels or grid cells, bytes,
/// path. What does not apply is empty. Adds to `faults`, one line each, why a file could not be read.
QStringList resourceCells(const maker::Resource& resource, QStringList& faults);

} // namespace xov::cli
