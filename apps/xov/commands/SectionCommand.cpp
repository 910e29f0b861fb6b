#include "apps/xov/commands/SectionCommand.h"

#include "apps/xov/inputs/Validators.h"
#include "apps/xov/output/RecordNames.h"

#include <XOV_Graphics/seismic/prepare/RecordOrder.h>
#include <XOV_Graphics/seismic/prepare/RecordTexts.h>
#include <XOV_Graphics/views/seismic/MultiSeisView.h>
#include <algorithm>
#include <vector>

namespace xov::cli {

namespace {

// The view's factor at gain 1. It divides: the largest excursion of all then reaches two thirds of a strip's height
// from its zero line, into the strip of its neighbour. A record on its own stays within the frame.
constexpr double kViewGain = 1.5;
constexpr double kViewGainOfOne = 2;

// Labels of picks rise a tenth of a strip above it: beyond the upper edge of a taller view of one record, and into
// the title of a lower one.
constexpr QSizeF kSizeOfOne(900, 480);

struct Order {
  const char* name;
  RecordOrder order;
};

constexpr Order kOrders[] = {
    {"distance", RecordOrder::Distance},
    {"azimuth", RecordOrder::Azimuth},
    {"name", RecordOrder::Name},
};

std::vector<std::string> orderNames() {
  std::vector<std::string> names;
  for (const Order& row : kOrders)
    names.emplace_back(row.name);
  return names;
}

RecordOrder orderNamed(const std::string& name) {
  const auto* row =
      std::find_if(std::begin(kOrders), std::end(kOrders), [&](const Order& o) { return o.name == name; });
  return row == std::end(kOrders) ? RecordOrder::Given : row->order;
}

} // namespace

void SectionCommand::addOptions(const Options& options) {
  inputs_.addOptions(options);
  inputs_.addMemoryOptions(options);
  options.add("--gain", gain_, "Enlarge traces by this factor (default 1)").typeName("G").check(numberAboveZero());
  options.addFlag("--zero-lines", zeroLines_, "Draw a dotted zero line through each trace");
  options.addFlag("--scale-bar", scaleBar_, "Draw a bar that shows the scale of amplitudes, with its unit");
  options.add("--sort", order_, "Order from the bottom up: distance, azimuth or name")
      .typeName("ORDER")
      .check(oneOf(orderNames()));
  pages_.addOptions(options);
  style_.addOptions(options);
  picks_.addOptions(options);
  plot_.addOptions(options);
  timeAxis_.addOptions(options);
  traces_.addOptions(options);
  alignment_.addOptions(options);
  preparation_.addOptions(options);
  output_.addOptions(options, recordFieldNames());
  options.afterParsing([this] { style_.check(); });
}

ExitCode SectionCommand::run() {
  Records found = preparation_.apply(inputs_.read(), &alignment_);
  if (found.records.empty()) return ExitCode::Failed;
  if (alignment_.isWanted()) timeAxis_.preferSeconds();
  RecordPages pages = pages_.pagesOf(style_.placed(std::move(found.records)), [&](SeismogramArray records) {
    records = plot_.prepare(picks_.apply(std::move(records)), alignment_.axes());
    sortRecords(records, orderNamed(order_));
    traces_.keepGroups(records, traces_.groupsOf(records));
    return records;
  });
  for (std::size_t page = 0; page < pages.count(); ++page) {
    if (pages.recordsOn(page) == 1) pages.setSize(page, kSizeOfOne);
  }
  const ExitCode delivered = output_.deliver(pages.plotPages(), [&](const QRectF& frame, std::size_t page) {
    const auto& records = pages.recordsOf(page);
    const bool one = records->size() == 1;
    auto view = std::make_unique<MultiSeisView>(frame);
    view->setWvfrmsArray(records);
    Output::keep(records);
    view->setPlotGainFactor(float((one ? kViewGainOfOne : kViewGain) / gain_));
    view->setShowZeroLine(zeroLines_);
    style_.apply(*view);
    if (view->stripPlacement() == MultiSeisView::StripPlacement::Evenly)
      view->setLineWidth(MultiSeisView::lineWidthOf(records->size(), frame.height()));
    view->setLabelsGiveWay(true);
    view->setShowAmplitudeBar(scaleBar_);
    view->setAmplitudeUnit(amplitudeUnit(*records));
    view->setXLabelString(alignment_.isWanted() ? alignment_.axisLabel() : QStringLiteral("Time (s)"));
    timeAxis_.apply(*view, *records);
    traces_.apply(*view, *records);
    view->setTitle(output_.titleOr(titleOfRecords(*records)));
    view->setSubtitle(preparation_.text());
    return view;
  });
  return std::max(found.status, delivered);
}

} // namespace xov::cli
