#pragma once

namespace xov::cli {

/// What Qt's application objects get of the command line, and keep references to: the program's name alone, since the
/// rest is not their own.
struct ProgramName {
  ProgramName() = default;
  ProgramName(const ProgramName&) = delete;
  ProgramName& operator=(const ProgramName&) = delete;

  int count = 1;
  char name[4] = "xov";
  char* words[2] = {name, nullptr};
};

} // namespace xov::cli
