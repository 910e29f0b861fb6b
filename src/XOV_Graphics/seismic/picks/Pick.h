#pragma once

#include "XOV_Graphics/base/Export.h"
#include "XOV_Graphics/base/TimeText.h"
#include "XOV_Graphics/seismic/ChannelPatterns.h"

#include <QStringView>

#include <cstdint>
#include <optional>
#include <vector>

namespace xov {

/// The direction of the first motion.
enum class PickPolarity : std::uint8_t {
  Unknown,     ///< nobody looked
  Positive,    ///< up
  Negative,    ///< down
  Undecidable, ///< it cannot be told
};

/// How an arrival sets in.
enum class PickOnset : std::uint8_t { Unknown, Impulsive, Emergent, Questionable };

/// Who set a pick.
enum class PickMode : std::uint8_t { Unknown, Manual, Automatic };

/// The moment at which a phase was seen on a channel.
struct XOV_EXPORT Pick {
  QString id;            ///< tells picks of a document apart; a resource identifier such as "smi:local/pick/…"
  QString phase;         ///< such as "P" or "pPKiKP"
  UtcNanoseconds time{}; ///< of the onset
  ChannelCodes channel;  ///< network, station, location, channel; empty where unknown
  std::optional<double> lowerSeconds;            ///< how much earlier it may be; not negative
  std::optional<double> upperSeconds;            ///< how much later
  PickPolarity polarity = PickPolarity::Unknown; ///< first motion
  PickOnset onset = PickOnset::Unknown;          ///< how sharp it is
  PickMode mode = PickMode::Unknown;             ///< who set it
  QString comment;                               ///< free text

  bool operator==(const Pick&) const = default;
};

/// Several picks, as readers return them and writers take them.
using PickArray = std::vector<Pick>;

/// The words of QuakeML for these: "positive", "impulsive", "manual"; empty where unknown.
XOV_EXPORT QString pickWord(PickPolarity polarity);
/// The word for an onset.
XOV_EXPORT QString pickWord(PickOnset onset);
/// The word for a mode.
XOV_EXPORT QString pickWord(PickMode mode);

/// What such a word says, whatever its case; an empty one is Unknown. Nothing for any other text.
XOV_EXPORT std::optional<PickPolarity> pickPolarity(QStringView word);
/// As pickPolarity().
XOV_EXPORT std::optional<PickOnset> pickOnset(QStringView word);
/// As pickPolarity().
XOV_EXPORT std::optional<PickMode> pickMode(QStringView word);

/// Uncertainties above a day are none of a pick.
inline constexpr double kLargestPickUncertainty = 86400;

/// An identifier that no other pick has.
XOV_EXPORT QString newPickId();

/// Whether a pick is one of that channel: stations are the same, and of the other codes those that both know.
XOV_EXPORT bool isPickOf(const Pick& pick, const ChannelCodes& channel);

} // namespace xov
