#include "apps/xov/commands/Suggestion.h"

#include <algorithm>
#include <cstddef>
#include <vector>

namespace xov::cli {

namespace {

constexpr std::size_t kLettersPerSlip = 3;
constexpr std::size_t kLongestWord = 100; // longer ones are no slips of anything

// The smallest number of slips between two words.
std::size_t slipsBetween(const std::string& a, const std::string& b) {
  // slips[i][j]: between the first i letters of a and the first j of b.
  std::vector<std::vector<std::size_t>> slips(a.size() + 1, std::vector<std::size_t>(b.size() + 1));
  for (std::size_t i = 0; i <= a.size(); ++i) {
    for (std::size_t j = 0; j <= b.size(); ++j) {
      if (i == 0 || j == 0) {
        slips[i][j] = i + j;
        continue;
      }
      const std::size_t wrong = a[i - 1] == b[j - 1] ? 0 : 1;
      slips[i][j] = std::min({slips[i - 1][j] + 1, slips[i][j - 1] + 1, slips[i - 1][j - 1] + wrong});
      if (i > 1 && j > 1 && a[i - 1] == b[j - 2] && a[i - 2] == b[j - 1])
        slips[i][j] = std::min(slips[i][j], slips[i - 2][j - 2] + 1);
    }
  }
  return slips[a.size()][b.size()];
}

// "--" begins every option: a word has to have something of its own to be the beginning of one.
bool hasLetters(const std::string& word) { return word.find_first_not_of('-') != std::string::npos; }

} // namespace

std::optional<std::string> nearestWord(const std::string& word, std::span<const std::string> known) {
  if (!hasLetters(word) || word.size() > kLongestWord) return {};
  const auto isBegun = [&](const std::string& candidate) { return candidate.starts_with(word); };
  if (std::ranges::count_if(known, isBegun) == 1) return *std::ranges::find_if(known, isBegun);
  std::optional<std::string> nearest;
  std::size_t fewest = std::max<std::size_t>(word.size() / kLettersPerSlip, 1) + 1;
  for (const std::string& candidate : known) {
    const std::size_t slips = slipsBetween(word, candidate);
    if (slips >= fewest) continue;
    fewest = slips;
    nearest = candidate;
  }
  return nearest;
}

std::string suggestionFor(const std::string& word, std::span<const std::string> known) {
  const std::optional<std::string> nearest = nearestWord(word, known);
  return nearest ? "; did you mean '" + *nearest + "'?" : std::string();
}

} // namespace xov::cli
