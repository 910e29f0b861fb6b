#include "apps/xov/commands/CommandTable.h"
#include "apps/xov/options/Options.h"

#include <CLI/CLI.hpp>
#include <gtest/gtest.h>

#include <algorithm>
#include <set>

namespace xov::cli {
namespace {

using Words = std::vector<std::string>;

constexpr char kFile[] = "behind.SAC";

std::string joined(const Words& words, char with) {
  std::string text;
  for (const std::string& word : words)
    text += text.empty() ? word : with + word;
  return text;
}

bool takesAnyNumber(const CLI::Option& option) {
  return option.get_items_expected_max() >= CLI::detail::expected_max_vector_size;
}

// A command whose line can be parsed once.
struct Parser {
  explicit Parser(const CommandRow& row) : command(row.make()) {
    command->addOptions(Options(app));
    app.allow_extras();
  }

  /// What is left for the FILES of a command, or over where it takes none.
  Words files() const {
    for (const CLI::Option* option : app.get_options()) {
      if (option->get_positional()) return option->results();
    }
    return app.remaining();
  }

  CLI::App app;
  std::unique_ptr<Command> command;
};

// Those whose values may stand between commas: all but --seedlink, of which one value holds commas itself.
Words optionsOfSeveralValues(const CommandRow& row) {
  Parser parser(row);
  Words names;
  for (const CLI::Option* option : parser.app.get_options()) {
    if (option->get_items_expected_max() > 1 && !option->get_positional() && !takesAnyNumber(*option) &&
        option->get_delimiter() == ',')
      names.push_back(option->get_name());
  }
  return names;
}

// The words that the option's line must begin with: those that it, or the command, makes no sense without.
Words linePrefix(const CLI::App& command, const CLI::Option& option) {
  Words prefix;
  const auto add = [&](const CLI::Option& needed) {
    const bool isFile = needed.get_name() != "--remove-response";
    prefix.insert(prefix.end(), {needed.get_name(), isFile ? "needed.txt" : "vel"});
  };
  for (const CLI::Option* needed : option.get_needs()) {
    add(*needed);
    for (const CLI::Option* further : needed->get_needs())
      add(*further);
  }
  for (const CLI::Option* other : command.get_options()) {
    if (other->get_required() && !other->get_positional()) add(*other);
  }
  return prefix;
}

// Values that rise, as ends of ranges have to.
Words values(int count) {
  Words words;
  for (int i = 1; i <= count; ++i)
    words.push_back(std::to_string(i));
  return words;
}

TEST(OptionValues, areThoseOfTheOptionAndNoFileBehindThem) {
  std::set<std::string> seen;
  for (const CommandRow& row : commandTable()) {
    for (const std::string& name : optionsOfSeveralValues(row)) {
      seen.insert(name);
      const Parser sample(row);
      const CLI::Option& option = *sample.app.get_option(name);
      const Words given = values(option.get_items_expected_max());
      Words asWords = {name};
      asWords.insert(asWords.end(), given.begin(), given.end());
      Words withEquals = asWords;
      withEquals.erase(withEquals.begin());
      withEquals[0] = name + "=" + withEquals[0];
      const Words forms[] = {asWords, {name, joined(given, ',')}, withEquals, {name + "=" + joined(given, ',')}};
      for (const Words& form : forms) {
        SCOPED_TRACE(std::string(row.name) + " " + joined(form, ' '));
        Words line = linePrefix(sample.app, option);
        line.insert(line.end(), form.begin(), form.end());
        line.emplace_back(kFile);
        std::reverse(line.begin(), line.end()); // as the parser wants it
        Parser parser(row);
        ASSERT_NO_THROW(parser.app.parse(line));
        EXPECT_EQ(parser.app.get_option(name)->results(), given);
        EXPECT_EQ(parser.files(), Words{kFile});
      }
    }
  }
  // None is overlooked.
  EXPECT_EQ(seen,
            (std::set<std::string>{"--band", "--columns", "--components", "--db-range", "--extent", "--fixed-x",
                                   "--fixed-y", "--pre-filter", "--region", "--size", "--station-columns", "--tensor",
                                   "--topo-extent", "--topo-size", "--vector-columns", "--window"}));
}

TEST(OptionValues, mayBeNegativeButNoOptions) {
  const auto stack =
      std::ranges::find_if(commandTable(), [](const CommandRow& row) { return std::string(row.name) == "stack"; });
  Parser negative(*stack);
  negative.app.parse(Words{kFile, ".5", "-.5", "--fixed-y"});
  EXPECT_EQ(negative.app.get_option("--fixed-y")->results(), (Words{"-.5", ".5"}));

  Parser forgotten(*stack);
  EXPECT_THROW(forgotten.app.parse(Words{kFile, "2", "1", "--fixed-y", "0", "--fixed-x"}), CLI::ValidationError);

  Parser tooFew(*stack);
  EXPECT_THROW(tooFew.app.parse(Words{"0", "--fixed-x"}), CLI::ParseError);

  Parser many(*stack);
  EXPECT_THROW(many.app.parse(Words{kFile, "1,2,3", "--fixed-x"}), CLI::ParseError);
}

} // namespace
} // namespace xov::cli
