#include "apps/xov/prepare/StepWords.h"

#include <QRegularExpression>
#include <QString>

#include <algorithm>
#include <array>

namespace xov::cli {

namespace {

bool isNumber(const std::string& word) {
  bool ok = false;
  QString::fromStdString(word).toDouble(&ok);
  return ok;
}

bool isShareOrSeconds(const std::string& word) {
  return isNumber(word) || (word.ends_with('s') && isNumber(word.substr(0, word.size() - 1)));
}

bool isMotion(const std::string& word) { return word == "disp" || word == "vel" || word == "acc"; }

bool isScale(const std::string& word) { return word == "record" || word == "section"; }

bool isCorner(const std::string& word) {
  return word == "best" || word.starts_with("top-") || word.starts_with("bottom-");
}

bool isTrend(const std::string& word) { return word == "mean" || word == "linear" || isNumber(word); }

/// An option with a first word, and at most so many numbers behind it.
struct Many {
  const char* option;
  std::size_t numbers;
};

constexpr std::array<Many, 3> kMany = {{{"--filter", 2}, {"--around", 2}, {"--rotate", 1}}};

/// An option whose value may be missing.
struct Optional {
  const char* option;
  bool (*isValue)(const std::string& word);
  const char* fallback;
};

constexpr std::array<Optional, 5> kOptional = {{{"--detrend", isTrend, "linear"},
                                                {"--taper", isShareOrSeconds, "0.05"},
                                                {"--normalize", isScale, "record"},
                                                {"--remove-response", isMotion, "vel"},
                                                {"--legend", isCorner, "best"}}};

/// The value of "--option=value"; nothing where the word is anything else.
bool isWithValue(const std::string& word, const char* option, std::string& value) {
  const std::string start = std::string(option) + "=";
  if (!word.starts_with(start) || word.size() == start.size()) return false;
  value = word.substr(start.size());
  return true;
}

class Joiner {
public:
  explicit Joiner(const std::vector<std::string>& words) : words_(words) {}

  std::vector<std::string> run() {
    while (at_ < words_.size() && words_[at_] != "--") {
      if (!takeMany() && !takeOptional()) joined_.push_back(words_[at_++]);
    }
    joined_.insert(joined_.end(), words_.begin() + std::ptrdiff_t(at_), words_.end());
    return joined_;
  }

private:
  bool takeMany() {
    for (const Many& row : kMany) {
      std::string value;
      const bool isAlone = words_[at_] == row.option && at_ + 1 < words_.size();
      if (!isAlone && !isWithValue(words_[at_], row.option, value)) continue;
      if (isAlone) value = words_[++at_];
      ++at_;
      // A value in quotes is whole already.
      const bool isWhole = value.find_first_of(" ,") != std::string::npos;
      const std::size_t most = value.starts_with("lowpass") || value.starts_with("highpass") ? 1 : row.numbers;
      for (std::size_t i = 0; !isWhole && i < most && at_ < words_.size() && isNumber(words_[at_]); ++i)
        value += " " + words_[at_++];
      joined_.emplace_back(row.option);
      joined_.push_back(value);
      return true;
    }
    return false;
  }

  bool takeOptional() {
    for (const Optional& row : kOptional) {
      if (words_[at_] != row.option) continue;
      joined_.push_back(words_[at_++]);
      const bool hasValue = at_ < words_.size() && row.isValue(words_[at_]);
      joined_.emplace_back(hasValue ? words_[at_++] : row.fallback);
      return true;
    }
    return false;
  }

  const std::vector<std::string>& words_;
  std::size_t at_ = 0;
  std::vector<std::string> joined_;
};

} // namespace

std::vector<std::string> withStepValues(const std::vector<std::string>& words) { return Joiner(words).run(); }

} // namespace xov::cli
