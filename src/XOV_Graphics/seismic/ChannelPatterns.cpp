#include "XOV_Graphics/seismic/ChannelPatterns.h"

#include <algorithm>

namespace xov {

namespace {

constexpr qsizetype kPartCount = std::tuple_size_v<ChannelCodes>;

QRegularExpression partExpression(const QString& part) {
  if (part == QLatin1String("--")) return QRegularExpression(QStringLiteral("\\A\\z"));
  return QRegularExpression(QRegularExpression::wildcardToRegularExpression(part),
                            QRegularExpression::CaseInsensitiveOption);
}

} // namespace

QString channelName(const ChannelCodes& codes) {
  return QStringList(codes.begin(), codes.end()).join(QLatin1Char('.'));
}

Result<ChannelPatterns> ChannelPatterns::parse(const QStringList& patterns) {
  ChannelPatterns parsed;
  for (const QString& pattern : patterns) {
    QStringList parts = pattern.trimmed().split(QLatin1Char('.'));
    if (parts.size() > kPartCount)
      return Error{"channel pattern \"" + pattern + "\": found " + QString::number(parts.size()) +
                   " parts, expected NETWORK.STATION.LOCATION.CHANNEL"};
    while (parts.size() < kPartCount)
      parts.prepend(QStringLiteral("*"));
    std::array<QRegularExpression, kPartCount> expressions;
    std::transform(parts.begin(), parts.end(), expressions.begin(), partExpression);
    if (!std::ranges::all_of(expressions, &QRegularExpression::isValid))
      return Error{"channel pattern \"" + pattern + "\": found a set that is not closed, expected [...]"};
    parsed.patterns_.push_back(std::move(expressions));
  }
  return parsed;
}

bool ChannelPatterns::select(const ChannelCodes& codes) const {
  const auto matches = [&](const std::array<QRegularExpression, kPartCount>& pattern) {
    return std::ranges::equal(pattern, codes, [](const QRegularExpression& part, const QString& code) {
      return part.match(code).hasMatch();
    });
  };
  return patterns_.empty() || std::ranges::any_of(patterns_, matches);
}

} // namespace xov
