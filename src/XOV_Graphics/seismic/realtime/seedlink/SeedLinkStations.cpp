#include "XOV_Graphics/seismic/realtime/seedlink/SeedLinkStations.h"

#include <algorithm>

namespace xov {

namespace {

constexpr qsizetype kChannelCharacters = 3;
constexpr qsizetype kLocationCharacters = 2;
constexpr qsizetype kLongestCode = 8;

bool isCodeCharacter(char c) {
  return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9') || c == '*' || c == '?';
}

bool isCode(const QByteArray& code) {
  return !code.isEmpty() && code.size() <= kLongestCode && std::ranges::all_of(code, isCodeCharacter);
}

QByteArray withoutExclamation(const QByteArray& pattern) {
  return pattern.startsWith('!') ? pattern.mid(1) : pattern;
}

// "BHZ", with or without two characters of a location, which may be blank ("--").
bool isChannelPattern(const QByteArray& pattern) {
  const QByteArray codes = withoutExclamation(pattern);
  if (codes == "*") return true;
  const bool hasLocation = codes.size() == kLocationCharacters + kChannelCharacters;
  if (codes.size() != kChannelCharacters && !hasLocation) return false;
  const qsizetype channelAt = codes.size() - kChannelCharacters;
  const QByteArray location = codes.first(channelAt);
  return std::ranges::all_of(codes.sliced(channelAt), isCodeCharacter) &&
         (location == "--" || std::ranges::all_of(location, isCodeCharacter));
}

Error wrong(const QString& found, const char* expected) {
  return {QStringLiteral("found '%1', expected %2").arg(found, QLatin1String(expected))};
}

Result<SeedLinkStation> parseStation(const QString& text) {
  const qsizetype colon = text.indexOf(':');
  const QByteArray id = (colon < 0 ? text : text.first(colon)).toUtf8().trimmed();
  const qsizetype underscore = id.indexOf('_');
  SeedLinkStation station;
  station.network = id.first(std::max<qsizetype>(underscore, 0));
  station.station = id.sliced(underscore + 1);
  if (underscore < 0 || !isCode(station.network) || !isCode(station.station))
    return wrong(text.trimmed(), "a network and a station as GE_WLF");
  if (colon < 0) return station;
  for (const QByteArray& pattern : text.sliced(colon + 1).toUtf8().simplified().split(' ')) {
    if (!isChannelPattern(pattern)) return wrong(QString::fromUtf8(pattern), "a channel as BHZ, 00BHZ or HH?");
    station.channels.push_back(pattern);
  }
  return station;
}

} // namespace

bool SeedLinkStation::hasWildcards() const {
  const QByteArray codes = id();
  return codes.contains('*') || codes.contains('?');
}

Result<std::vector<SeedLinkStation>> parseSeedLinkStations(const QString& text) {
  std::vector<SeedLinkStation> stations;
  for (const QString& part : text.split(',')) {
    Result<SeedLinkStation> station = parseStation(part);
    if (!station) return Error{station.error()};
    stations.push_back(std::move(station).value());
  }
  return stations;
}

QByteArray seedLink4StreamId(QByteArrayView location, QByteArrayView channel) {
  QByteArray id = location.toByteArray();
  for (const char c : channel) {
    id += '_';
    id += c;
  }
  return id;
}

QByteArray seedLink4Selector(const QByteArray& channels) {
  const QByteArray codes = withoutExclamation(channels);
  const QByteArray sign = channels.first(channels.size() - codes.size());
  if (codes == "*") return sign + '*';
  const qsizetype channelAt = codes.size() - kChannelCharacters;
  QByteArray location = codes.first(channelAt);
  if (location.isEmpty()) location = "*";
  if (location == "--") location.clear();
  return sign + seedLink4StreamId(location, codes.sliced(channelAt));
}

bool matchesWildcards(QByteArrayView pattern, QByteArrayView text) {
  // Where the last '*' stands, and the text that it has taken so far: the place to go on from after a miss.
  qsizetype p = 0, t = 0, star = -1, taken = 0;
  while (t < text.size()) {
    if (p < pattern.size() && pattern[p] == '*') {
      star = p++;
      taken = t;
    } else if (p < pattern.size() && (pattern[p] == '?' || pattern[p] == text[t])) {
      ++p;
      ++t;
    } else if (star >= 0) {
      p = star + 1;
      t = ++taken;
    } else {
      return false;
    }
  }
  while (p < pattern.size() && pattern[p] == '*')
    ++p;
  return p == pattern.size();
}

bool selectsChannel(const std::vector<QByteArray>& patterns, QByteArrayView location, QByteArrayView channel) {
  const auto matches = [&](const QByteArray& pattern) {
    const QByteArray codes = withoutExclamation(pattern);
    if (codes == "*") return true;
    const qsizetype channelAt = std::max<qsizetype>(codes.size() - kChannelCharacters, 0);
    const QByteArray place = codes.first(channelAt);
    if (!matchesWildcards(codes.sliced(channelAt), channel)) return false;
    return place.isEmpty() || (place == "--" ? location.isEmpty() : matchesWildcards(place, location));
  };
  const auto isExclusion = [](const QByteArray& pattern) { return pattern.startsWith('!'); };
  bool isSelected = std::ranges::all_of(patterns, isExclusion);
  for (const QByteArray& pattern : patterns) {
    if (!matches(pattern)) continue;
    if (isExclusion(pattern)) return false;
    isSelected = true;
  }
  return isSelected;
}

} // namespace xov
