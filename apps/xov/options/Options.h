#pragma once

#include <array>
#include <cstddef>
#include <functional>
#include <stdexcept>
#include <string>
#include <vector>

namespace CLI {
class App;
class Option;
} // namespace CLI

namespace xov::cli {

/// What an option's value must be.
struct Check {
  /// Says what is wrong with a text, as "found 'x', expected a number"; nothing when it is right.
  std::function<std::string(const std::string& text)> wrong;
  /// The words that are right, where there are only a few.
  std::vector<std::string> choices;
};

/// Thrown from afterParsing() where options do not go together: names the option, and says what was found or
/// expected.
class UsageError : public std::runtime_error {
public:
  UsageError(const std::string& option, const std::string& what) : std::runtime_error(what), option_(option) {}
  const std::string& option() const { return option_; }

private:
  std::string option_;
};

/// A declared option or argument of a command; a copy is the same option. Those of Options::add() only may be used.
class Option {
public:
  Option() = default;
  explicit Option(CLI::Option* option) : option_(option) {}
  friend bool operator==(const Option& left, const Option& right) { return left.option_ == right.option_; }
  friend bool operator<(const Option& left, const Option& right) {
    return std::less<>()(left.option_, right.option_);
  }

  /// What help texts call its values: "W H". A name that ends in "[,...]" is a list.
  Option typeName(const std::string& name) const;
  Option check(const Check& check) const;
  /// The heading that it stands under in help texts.
  Option group(const std::string& name) const;
  Option required(bool isRequired = true) const;
  Option needs(const Option& other) const;
  Option excludes(const Option& other) const;
  /// The value may be left out.
  Option valueMayLack() const;
  /// Values stand between commas, in one word: file names may stand right behind it.
  Option listBetweenCommas() const;
  /// One value, as often as the option is given; results() has all.
  Option eachTime() const;
  /// Makes it take exactly `count` values, as words of their own or between commas ("0 100" or "0,100"), and nothing
  /// of what follows: file names may stand right behind it. A value may look like a negative number, but not like a
  /// long option, which the user has forgotten a value before.
  Option takesExactly(int count) const;
  /// The same of words as they stand, commas and all.
  Option takesWords(int count) const;

  /// How many values the command line gave it.
  std::size_t count() const;
  /// They as texts, in their order.
  std::vector<std::string> results() const;
  /// Its place among the parser's, for what writes options down.
  CLI::Option* parsed() const { return option_; }

private:
  CLI::Option* option_ = nullptr;
};

/// Where a command declares its options. The one place that knows the parser: its header costs seconds in each file
/// that calls it.
class Options {
public:
  explicit Options(CLI::App& parser) : parser_(&parser) {}

  /// An option such as "--gain" or "-o,--output", or an argument ("FILES"), whose value parsing stores in `value`: a
  /// text, a number, or a std::vector or std::optional of these.
  template <typename Value>
  Option add(const std::string& name, Value& value, const std::string& description) const;
  /// One of two words, which `take` gets; it throws UsageError where they are wrong.
  Option addPair(const std::string& name, std::function<void(const std::array<std::string, 2>& words)> take,
                 const std::string& description) const;
  /// One whose values are asked for with results().
  Option add(const std::string& name, const std::string& description) const;
  Option addFlag(const std::string& name, bool& value, const std::string& description) const;
  Option addFlag(const std::string& name, const std::string& description) const;

  /// The option of that name, which has been added.
  Option named(const std::string& name) const;

  /// `look` is called when all options have their values; it throws UsageError where they do not go together.
  void afterParsing(std::function<void()> look) const;

  /// The options that were given, in their order and as often.
  std::vector<Option> given() const;

private:
  CLI::App* parser_;
};

} // namespace xov::cli
