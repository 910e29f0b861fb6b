#include "apps/xov/options/Options.h"

#include "apps/xov/options/Choices.h"

#include <CLI/CLI.hpp>

#include <array>
#include <optional>

namespace xov::cli {

namespace {

// Lets the parser tell of what is wrong.
template <typename Do>
void asParserSays(const Do& doIt) {
  try {
    doIt();
  } catch (const UsageError& error) {
    throw CLI::ValidationError(error.option(), error.what());
  }
}

} // namespace

Option Option::typeName(const std::string& name) const {
  option_->type_name(name);
  return *this;
}

Option Option::check(const Check& check) const {
  option_->check(CLI::Validator([wrong = check.wrong](std::string& text) { return wrong(text); }, std::string(),
                                nameOfChoices(check.choices)));
  return *this;
}

Option Option::group(const std::string& name) const {
  option_->group(name);
  return *this;
}

Option Option::required(bool isRequired) const {
  option_->required(isRequired);
  return *this;
}

Option Option::needs(const Option& other) const {
  option_->needs(other.option_);
  return *this;
}

Option Option::excludes(const Option& other) const {
  option_->excludes(other.option_);
  return *this;
}

Option Option::valueMayLack() const {
  option_->expected(0, 1);
  return *this;
}

Option Option::listBetweenCommas() const {
  option_->delimiter(',')->allow_extra_args(false);
  return *this;
}

Option Option::eachTime() const {
  option_->type_size(1)->expected(1)->take_all();
  return *this;
}

// One group of `count` values: the parser takes a group's values without a look at them, while it goes on beyond any
// number of values that it expects one by one, as far as they do not look like options.
Option Option::takesWords(int count) const {
  option_->type_size(count)->expected(1)->allow_extra_args(false);
  return *this;
}

Option Option::takesExactly(int count) const {
  const auto isNoOption = [count](const std::string& text) -> std::string {
    if (!text.starts_with("--")) return {};
    return "found '" + text + "', expected " + std::to_string(count) + " values";
  };
  if (count > 1) option_->delimiter(',');
  return takesWords(count).check({isNoOption, {}});
}

std::size_t Option::count() const { return option_->count(); }

std::vector<std::string> Option::results() const { return option_->results(); }

template <typename Value>
Option Options::add(const std::string& name, Value& value, const std::string& description) const {
  return Option(parser_->add_option(name, value, description));
}

template Option Options::add(const std::string&, double&, const std::string&) const;
template Option Options::add(const std::string&, int&, const std::string&) const;
template Option Options::add(const std::string&, std::string&, const std::string&) const;
template Option Options::add(const std::string&, std::optional<double>&, const std::string&) const;
template Option Options::add(const std::string&, std::optional<int>&, const std::string&) const;
template Option Options::add(const std::string&, std::optional<std::string>&, const std::string&) const;
template Option Options::add(const std::string&, std::array<double, 2>&, const std::string&) const;
template Option Options::add(const std::string&, std::array<int, 2>&, const std::string&) const;
template Option Options::add(const std::string&, std::optional<std::array<double, 4>>&, const std::string&) const;
template Option Options::add(const std::string&, std::optional<std::array<double, 6>>&, const std::string&) const;
template Option Options::add(const std::string&, std::vector<double>&, const std::string&) const;
template Option Options::add(const std::string&, std::vector<int>&, const std::string&) const;
template Option Options::add(const std::string&, std::vector<std::string>&, const std::string&) const;

Option Options::add(const std::string& name, const std::string& description) const {
  return Option(parser_->add_option(name, description));
}

Option Options::addFlag(const std::string& name, bool& value, const std::string& description) const {
  return Option(parser_->add_flag(name, value, description));
}

Option Options::addFlag(const std::string& name, const std::string& description) const {
  return Option(parser_->add_flag(name, description));
}

Option Options::addPair(const std::string& name, std::function<void(const std::array<std::string, 2>&)> take,
                        const std::string& description) const {
  const std::function<void(const std::array<std::string, 2>&)> taken =
      [take = std::move(take)](const std::array<std::string, 2>& words) { asParserSays([&] { take(words); }); };
  return Option(parser_->add_option_function(name, taken, description));
}

Option Options::named(const std::string& name) const { return Option(parser_->get_option(name)); }

void Options::afterParsing(std::function<void()> look) const {
  parser_->parse_complete_callback([look = std::move(look)] { asParserSays(look); });
}

std::vector<Option> Options::given() const {
  std::vector<Option> options;
  for (CLI::Option* const option : parser_->parse_order())
    options.emplace_back(option);
  return options;
}

} // namespace xov::cli
