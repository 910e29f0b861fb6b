#pragma once

#include "apps/xov/Command.h"
#include "apps/xov/Output.h"

#include <array>
#include <string>

namespace xov::cli {

/// `xov xy`: two columns of numbers as a line.
class XyCommand : public Command {
public:
  void addOptions(CLI::App& options) override;
  ExitCode run() override;

private:
  std::string file_;
  Output output_{"xy", {600, 500}};
  std::array<std::string, 2> columns_{"1", "2"};
  std::optional<std::string> xLabel_;
  std::optional<std::string> yLabel_;
};

} // namespace xov::cli
