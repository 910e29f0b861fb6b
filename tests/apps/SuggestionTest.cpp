#include "apps/xov/commands/Suggestion.h"

#include <gtest/gtest.h>

#include <vector>

namespace xov::cli {
namespace {

const std::vector<std::string> kKnown = {"section", "stack", "scatter", "map", "--zero-lines", "--gain", "-o"};

TEST(Suggestion, findsWordsWithAFewSlips) {
  EXPECT_EQ(nearestWord("sektion", kKnown), "section"); // a wrong letter
  EXPECT_EQ(nearestWord("setcion", kKnown), "section"); // two letters in the wrong order
  EXPECT_EQ(nearestWord("sction", kKnown), "section");  // one too few
  EXPECT_EQ(nearestWord("mapp", kKnown), "map");        // one too many
  EXPECT_EQ(nearestWord("zero-lines", kKnown), "--zero-lines");
  EXPECT_EQ(nearestWord("pam", kKnown), std::nullopt); // two slips in three letters
}

TEST(Suggestion, findsTheBeginningOfOneWord) {
  EXPECT_EQ(nearestWord("se", kKnown), "section");
  EXPECT_EQ(nearestWord("--z", kKnown), "--zero-lines");
  EXPECT_EQ(nearestWord("s", kKnown), std::nullopt); // of three
}

TEST(Suggestion, hasNoneForOtherWords) {
  for (const char* word : {"", "--", "helicorder", "--bogus"})
    EXPECT_EQ(nearestWord(word, kKnown), std::nullopt) << word;
  EXPECT_EQ(nearestWord(std::string(100000, 's'), kKnown), std::nullopt);
}

TEST(Suggestion, isAskedInOneClause) {
  EXPECT_EQ(suggestionFor("sektion", kKnown), "; did you mean 'section'?");
  EXPECT_EQ(suggestionFor("helicorder", kKnown), "");
}

} // namespace
} // namespace xov::cli
