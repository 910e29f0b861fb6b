#pragma once

#include <optional>
#include <span>
#include <string>

namespace xov::cli {

/// The one of the known words that the user most likely meant by `word`: the one that begins with it, if only one
/// does, else the first of those with the fewest slips between them. A slip is a letter too many, too few or wrong,
/// or two letters in the wrong order; with more than one in three letters it is another word. None when nothing is
/// near.
std::optional<std::string> nearestWord(const std::string& word, std::span<const std::string> known);

/// What follows a complaint about an unknown word: "; did you mean 'section'?", or nothing when nothing is near.
std::string suggestionFor(const std::string& word, std::span<const std::string> known);

} // namespace xov::cli
