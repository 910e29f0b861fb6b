#include "XOV_Graphics/seismic/picks/Pick.h"

#include <QUuid>

#include <algorithm>
#include <iterator>

namespace xov {

namespace {

template <typename Value>
struct PickWord {
  Value value;
  const char* word;
};

constexpr PickWord<PickPolarity> kPolarities[] = {{PickPolarity::Unknown, ""},
                                                  {PickPolarity::Positive, "positive"},
                                                  {PickPolarity::Negative, "negative"},
                                                  {PickPolarity::Undecidable, "undecidable"}};
constexpr PickWord<PickOnset> kOnsets[] = {{PickOnset::Unknown, ""},
                                           {PickOnset::Impulsive, "impulsive"},
                                           {PickOnset::Emergent, "emergent"},
                                           {PickOnset::Questionable, "questionable"}};
constexpr PickWord<PickMode> kModes[] = {
    {PickMode::Unknown, ""}, {PickMode::Manual, "manual"}, {PickMode::Automatic, "automatic"}};

template <typename Value, std::size_t N>
QString wordOf(const PickWord<Value> (&words)[N], Value value) {
  const auto* const found = std::ranges::find(words, value, &PickWord<Value>::value);
  return found == std::end(words) ? QString() : QString::fromLatin1(found->word);
}

template <typename Value, std::size_t N>
std::optional<Value> valueOf(const PickWord<Value> (&words)[N], QStringView text) {
  const auto* const found = std::ranges::find_if(words, [&](const PickWord<Value>& known) {
    return text.trimmed().compare(QLatin1String(known.word), Qt::CaseInsensitive) == 0;
  });
  return found == std::end(words) ? std::nullopt : std::optional(found->value);
}

} // namespace

QString pickWord(PickPolarity polarity) { return wordOf(kPolarities, polarity); }
QString pickWord(PickOnset onset) { return wordOf(kOnsets, onset); }
QString pickWord(PickMode mode) { return wordOf(kModes, mode); }

std::optional<PickPolarity> pickPolarity(QStringView word) { return valueOf(kPolarities, word); }
std::optional<PickOnset> pickOnset(QStringView word) { return valueOf(kOnsets, word); }
std::optional<PickMode> pickMode(QStringView word) { return valueOf(kModes, word); }

QString newPickId() { return QStringLiteral("smi:local/pick/") + QUuid::createUuid().toString(QUuid::WithoutBraces); }

bool isPickOf(const Pick& pick, const ChannelCodes& channel) {
  constexpr std::size_t kStation = 1;
  if (pick.channel[kStation] != channel[kStation]) return false;
  for (std::size_t i = 0; i < channel.size(); ++i)
    if (!pick.channel[i].isEmpty() && !channel[i].isEmpty() && pick.channel[i] != channel[i]) return false;
  return true;
}

} // namespace xov
