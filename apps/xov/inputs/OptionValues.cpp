#include "apps/xov/inputs/OptionValues.h"

#include <CLI/CLI.hpp>

namespace xov::cli {

CLI::Option* takesExactly(CLI::Option* option, int count) {
  const auto isNoOption = [count](const std::string& text) -> std::string {
    if (!text.starts_with("--")) return {};
    return "found '" + text + "', expected " + std::to_string(count) + " values";
  };
  // One group of `count` values: the parser takes a group's values without a look at them, while it goes on beyond
  // any number of values that it expects one by one, as far as they do not look like options.
  option->type_size(count)->expected(1)->allow_extra_args(false);
  if (count > 1) option->delimiter(',');
  return option->check(CLI::Validator(isNoOption, std::string()));
}

} // namespace xov::cli
