#include "apps/desk/panes/LiveRequests.h"

namespace xov::desk {

namespace {

const QString kSeedLink = QStringLiteral("--seedlink");
const QString kSince = QStringLiteral("--since");
const QString kToday = QStringLiteral("today");

QString valueOf(const QStringList& options, const QString& name, qsizetype number = 1) {
  const qsizetype place = options.indexOf(name);
  return place < 0 ? QString() : options.value(place + number);
}

} // namespace

bool isLive(const PlotRequest& request) { return request.options.contains(kSeedLink); }

LiveSource liveSourceOf(const PlotRequest& request) {
  return {valueOf(request.options, kSeedLink), valueOf(request.options, kSeedLink, 2),
          valueOf(request.options, kSince) == kToday};
}

PlotRequest requestForSource(const QString& kind, const LiveSource& source) {
  PlotRequest request;
  request.kind = kind;
  request.options = {kSeedLink, source.server, source.stations};
  if (source.beginsToday) request.options += {kSince, kToday};
  return request;
}

} // namespace xov::desk
