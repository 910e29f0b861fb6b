#include "apps/xov/options/Choices.h"

#include <CLI/CLI.hpp>

namespace xov::cli {

namespace {

constexpr char kBetweenChoices = '\n';

}

std::string nameOfChoices(const std::vector<std::string>& words) {
  return CLI::detail::join(words, std::string(1, kBetweenChoices));
}

std::vector<std::string> choicesOf(CLI::Option& option) {
  // The parser tells how many checks an option has by throwing.
  for (int i = 0;; ++i) {
    try {
      const std::string& name = option.get_validator(i)->get_name();
      if (!name.empty()) return CLI::detail::split(name, kBetweenChoices);
    } catch (const CLI::OptionNotFound&) {
      return {};
    }
  }
}

} // namespace xov::cli
