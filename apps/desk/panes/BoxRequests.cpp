#include "apps/desk/panes/BoxRequests.h"

#include "apps/desk/panes/PaneKinds.h"

#include <XOV_Graphics/seismic/StationInventory.h>
#include <XOV_Graphics/seismic/prepare/TimeAxis.h>
#include <XOV_Graphics/views/seismic/MultiSeisView.h>
#include <XOV_Graphics/views/seismic/StackedSeisView.h>
#include <algorithm>
#include <limits>

namespace xov::desk {

namespace {

constexpr int kDegreeDecimals = 3;
constexpr int kSecondDecimals = 3;
constexpr std::size_t kFewestOfArray = 3;
constexpr double kMsOfSecond = 1000;
constexpr qsizetype kRegionWords = 5; // with its four edges

// Codes that are missing are of any kind, but for locations, which have a sign for it.
QString patternOfRecord(const SeismogramRecord& record) {
  ChannelCodes codes = channelCodesOf(record);
  if (codes[2].isEmpty()) codes[2] = QStringLiteral("--");
  for (QString& code : codes)
    if (code.isEmpty()) code = QLatin1Char('*');
  return channelName(codes);
}

// What all records have, on the axis of the first one.
AxisSpan commonSeconds(const SeismogramArray& records) {
  const QDateTime first = referenceTimeOf(*records.front());
  AxisSpan common{-std::numeric_limits<double>::infinity(), std::numeric_limits<double>::infinity()};
  for (const auto& record : records) {
    const QDateTime reference = referenceTimeOf(*record);
    const bool isDated = first.isValid() && reference.isValid();
    const double begin = (isDated ? double(first.msecsTo(reference)) / kMsOfSecond : 0) + double(record->b());
    common.begin = std::max(common.begin, begin);
    common.end = std::min(common.end, begin + double(record->npts()) * double(record->delta()));
  }
  return common;
}

template <typename View>
std::optional<BoxedRecords> recordsHeld(const View& view, const QRectF& box) {
  const auto records = view.wvfrmsArray();
  const std::optional<AxisSpan> seconds = view.timesIn(box);
  if (!records || !seconds) return {};
  BoxedRecords boxed{{}, *seconds};
  for (const std::size_t index : view.recordsIn(box))
    boxed.records.push_back((*records)[index]);
  return boxed.records.empty() ? std::nullopt : std::optional(boxed);
}

} // namespace

PlotRequest requestForRegion(const PlotRequest& map, const MapBox& box) {
  PlotRequest request = map.withoutProperties();
  const QString option = QStringLiteral("--region");
  if (const qsizetype before = request.options.indexOf(option); before >= 0)
    request.options.remove(before, std::min(kRegionWords, request.options.size() - before));
  request.options.append(option);
  for (const double edge : {box.westDeg, box.eastDeg, box.southDeg, box.northDeg})
    request.options.append(QString::number(edge, 'f', kDegreeDecimals));
  return request;
}

SeismogramArray recordsOf(const XOVView& view) {
  std::shared_ptr<const SeismogramArray> records;
  if (const auto* const section = qobject_cast<const MultiSeisView*>(&view)) records = section->wvfrmsArray();
  if (const auto* const stack = qobject_cast<const StackedSeisView*>(&view)) records = stack->wvfrmsArray();
  return records ? *records : SeismogramArray();
}

std::optional<BoxedRecords> recordsInBoxOf(const XOVView& view, const QRectF& box) {
  if (const auto* const section = qobject_cast<const MultiSeisView*>(&view)) return recordsHeld(*section, box);
  if (const auto* const stack = qobject_cast<const StackedSeisView*>(&view)) return recordsHeld(*stack, box);
  return {};
}

std::optional<PlotRequest> requestForBeam(const PlotRequest& seismograms, const BoxedRecords& boxed) {
  if (boxed.records.size() < kFewestOfArray) return {};
  const AxisSpan common = commonSeconds(boxed.records);
  const double from = std::max(boxed.seconds.begin, common.begin);
  const double to = std::min(boxed.seconds.end, common.end);
  if (!(from < to)) return {};
  PlotRequest request = requestOfKind(*paneKindOf(QStringLiteral("fk")), seismograms);
  request.isRaw = seismograms.isRaw;
  QStringList channels;
  for (const auto& record : boxed.records)
    channels.append(patternOfRecord(*record));
  channels.removeDuplicates();
  const QString option = QStringLiteral("--channels");
  if (const qsizetype before = request.options.indexOf(option); before >= 0) request.options.remove(before, 2);
  request.options += {option, channels.join(QLatin1Char(',')), QStringLiteral("--window")};
  for (const double seconds : {from, to})
    request.options.append(QString::number(seconds - common.begin, 'f', kSecondDecimals));
  return request;
}

} // namespace xov::desk
