#include "apps/xov/commands/DeskCommand.h"

#include "apps/desk/window/Desk.h"
#include "apps/xov/commands/CommandLine.h"
#include "apps/xov/output/Desktop.h"

#include <XOV_Graphics/base/FileName.h>

namespace xov::cli {

void DeskCommand::addOptions(const Options& options) {
  options.add("PATHS", paths_, "Files and folders to open").typeName("FILES");
}

ExitCode DeskCommand::run() {
  const Desktop desktop(DesktopUse::Window);
  if (!desktop.hasWindows()) {
    complain(QStringLiteral("found no display that answers, expected one for the desk's window"));
    return ExitCode::Failed;
  }
  QStringList paths;
  for (const std::string& path : paths_)
    paths.append(fileNameFromBytes(path));
  const auto run = [](const std::vector<std::string>& words) { return int(CommandLine().run(words)); };
  return desk::runDesk(run, paths) ? ExitCode::Ok : ExitCode::Failed;
}

} // namespace xov::cli
