#pragma once

#include "apps/xov/commands/Command.h"

#include <string>
#include <vector>

namespace xov::cli {

/// `xov desk`: the window in which plots are looked at, beside each other, all day.
class DeskCommand : public Command {
public:
  void addOptions(const Options& options) override;
  ExitCode run() override;

private:
  std::vector<std::string> paths_;
};

} // namespace xov::cli
