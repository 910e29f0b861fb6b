#include "apps/xov/commands/StackCommand.h"

#include "apps/xov/inputs/Validators.h"
#include "apps/xov/output/RecordNames.h"

#include <XOV_Graphics/seismic/prepare/RecordTexts.h>
#include <XOV_Graphics/views/seismic/SeisView01.h>
#include <XOV_Graphics/views/seismic/SeisView02.h>
#include <algorithm>

namespace xov::cli {

namespace {

constexpr char kBands[] = "bands";
constexpr double kFarthestLimit = 1e30; // beyond, the width of a range may be too large for single precision

Option addRange(const Options& options, const char* name, std::vector<double>& range, const char* what) {
  Option option =
      options.add(name, range, what).typeName("MIN MAX").check(numberFromTo(-kFarthestLimit, kFarthestLimit));
  return option.takesExactly(2);
}

// Compared as the view will see them.
void checkRange(const char* name, const std::vector<double>& range) {
  if (!range.empty() && !(float(range[0]) < float(range[1]))) throw UsageError(name, "expected MIN below MAX");
}

} // namespace

void StackCommand::addOptions(const Options& options) {
  inputs_.addOptions(options);
  options.add("--style", style_, "Traces over each other (overlay, the default) or in a band each (bands)")
      .typeName("STYLE")
      .check(oneOf({"overlay", kBands}));
  options.addFlag("--fill", fill_, "Fill what overlaid traces enclose");
  options.addFlag("--scale-bar", scaleBar_, "Draw a bar that shows the scale of amplitudes of bands, with its unit");
  addRange(options, "--fixed-x", fixedX_, "Ends of the time axis in seconds (default: those of the records)");
  addRange(options, "--fixed-y", fixedY_, "Ends of the amplitude axis (default: the extremes of the records)");
  pages_.addOptions(options);
  plot_.addOptions(options);
  timeAxis_.addOptions(options);
  traces_.addOptions(options);
  alignment_.addOptions(options);
  preparation_.addOptions(options);
  output_.addOptions(options, recordFieldNames());
  options.afterParsing([this] { checkOptions(); });
}

void StackCommand::checkOptions() const {
  checkRange("--fixed-x", fixedX_);
  checkRange("--fixed-y", fixedY_);
  if (fill_ && style_ == kBands) throw UsageError("--fill", "works with --style overlay only");
  if (scaleBar_ && style_ != kBands) throw UsageError("--scale-bar", "works with --style bands only");
}

std::unique_ptr<StackedSeisView> StackCommand::makeView(const QRectF& frame) const {
  if (style_ == kBands) {
    auto view = std::make_unique<SeisView02>(frame);
    view->setplotStyle(SeisView02::kBands);
    return view;
  }
  auto view = std::make_unique<SeisView01>(frame);
  view->setFillPositive(fill_);
  return view;
}

ExitCode StackCommand::run() {
  Records found = preparation_.apply(inputs_.read(), &alignment_);
  if (found.records.empty()) return ExitCode::Failed;
  RecordPages pages = pages_.pagesOf(std::move(found.records), [&](SeismogramArray records) {
    records = plot_.prepare(std::move(records), alignment_.axes());
    const std::vector<std::size_t> groups = traces_.groupsOf(records); // files have other names as captions
    records = captionedByChannel(std::move(records));
    traces_.keepGroups(records, groups);
    return records;
  });
  if (!fixedX_.empty() || alignment_.isWanted()) timeAxis_.preferSeconds();
  const ExitCode delivered = output_.deliver(pages.plotPages(), [&](const QRectF& frame, std::size_t page) {
    const auto& records = pages.recordsOf(page);
    auto view = makeView(frame);
    view->setWvfrmsArray(records);
    Output::keep(records);
    view->setLabelsGiveWay(true);
    view->setShowAmplitudeBar(scaleBar_);
    view->setAmplitudeUnit(amplitudeUnit(*records));
    if (!fixedX_.empty()) {
      view->setXLimitsMinMax(float(fixedX_[0]), float(fixedX_[1]));
      view->set_fixedXAxisRange(true);
    }
    if (!fixedY_.empty()) {
      view->setYLimitsMinMax(float(fixedY_[0]), float(fixedY_[1]));
      view->set_fixedYAxisRange(true);
    }
    view->setXLabelString(alignment_.isWanted() ? alignment_.axisLabel() : QStringLiteral("Time (s)"));
    timeAxis_.apply(*view, *records);
    traces_.apply(*view, *records);
    view->setYLabelString(amplitudeLabel(*records));
    view->setTitle(output_.titleOr(titleOfRecords(*records)));
    view->setSubtitle(preparation_.text());
    return view;
  });
  return std::max(found.status, delivered);
}

} // namespace xov::cli
