#pragma once

#include <string>
#include <vector>

namespace CLI {
class Option;
}

namespace xov::cli {

/// The words of a check as one text, which the parser keeps as the check's name and has no use for itself.
std::string nameOfChoices(const std::vector<std::string>& words);

/// The few words that an option takes; none where its checks name none.
std::vector<std::string> choicesOf(CLI::Option& option);

} // namespace xov::cli
