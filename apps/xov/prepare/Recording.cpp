#include "apps/xov/prepare/Recording.h"

#include <XOV_Graphics/seismic/prepare/RecordTexts.h>
#include <XOV_Graphics/seismic/prepare/TimeAxis.h>

namespace xov::cli {

namespace {

constexpr qsizetype kChannelsNamed = 3;

} // namespace

std::optional<Recording> readRecording(const RecordInputs& inputs, const Preparation& preparation) {
  Records found = preparation.apply(inputs.read());
  if (found.records.empty()) return {};
  const QStringList channels = channelsOf(found.records);
  if (channels.size() > 1) {
    const bool more = channels.size() > kChannelsNamed;
    complain(QStringLiteral("found %1 channels (%2%3), expected one; --channels chooses")
                 .arg(channels.size())
                 .arg(channels.first(std::min(channels.size(), kChannelsNamed)).join(QStringLiteral(", ")),
                      more ? QStringLiteral(", ...") : QString()));
    return {};
  }
  return Recording{consecutivePieces(std::move(found.records)), found.status};
}

QString titleOfRecording(const SeismogramArray& pieces) {
  const QString channel = channelsOf(pieces).join(QStringLiteral(", "));
  if (pieces.empty() || pieces.front()->oTimeString().isEmpty()) return channel;
  return channel + QStringLiteral("  ") + titleOfRecords(pieces);
}

} // namespace xov::cli
