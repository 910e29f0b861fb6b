#include "apps/xov/commands/PanelsCommand.h"

#include "apps/xov/inputs/RecordPlot.h"
#include "apps/xov/inputs/Validators.h"
#include "apps/xov/output/RecordNames.h"

#include <XOV_Graphics/seismic/prepare/Amplitudes.h>
#include <XOV_Graphics/seismic/prepare/CommonAxis.h>
#include <XOV_Graphics/seismic/prepare/RecordTexts.h>
#include <XOV_Graphics/views/seismic/wvfrmView.h>
#include <algorithm>
#include <cmath>

namespace xov::cli {

namespace {

// Of the view: a panel with the space to the next one, what is above the first panel, and the space at the left.
constexpr double kPanelStep = 84;
constexpr double kColumnStep = 156;
constexpr double kHeader = 52; // and the 12 points between panels
constexpr double kLeft = 12;
// The lowest panel keeps that much of a next one's step: too little for a panel, enough for the axis.
constexpr double kAxis = 56;
constexpr double kNarrowest = 640; // for the header and a title
constexpr std::size_t kMostRows = 6;
constexpr float kTitleSize = 18;
constexpr float kSubtitleSize = 9;
constexpr double kSubtitleDrop = 24; // below the title
constexpr double kScaleDrop = 36;
constexpr int kScaleDigits = 3;
constexpr double kTitleInset = 12; // from the right edge
constexpr double kTitleDrop = 2;
constexpr std::size_t kColumnsBeforeRows = 4; // so many columns before a further row

// Panels with a title in the upper right corner, and below it the subtitle and what the panels' height is: the event
// is written in the left one.
class PanelsView : public wvfrmView {
public:
  using wvfrmView::wvfrmView;

  void drawRect(const QRectF& dirty) override {
    wvfrmView::drawRect(dirty);
    setLabelFontSize(kTitleSize);
    const QRectF b = bounds();
    const auto right = float(b.x() + b.width() - kTitleInset);
    drawStringXYHJustVJust(plotTitle(), right, float(b.y() + b.height() - kTitleDrop), 3, 3);
    setLabelFontSize(kSubtitleSize);
    drawStringXYHJustVJust(subtitle(), right, float(b.y() + b.height() - kSubtitleDrop), 3, 3);
    drawStringXYHJustVJust(scaleText_, right, float(b.y() + b.height() - kScaleDrop), 3, 3);
  }

  void setScaleText(const QString& text) { scaleText_ = text; }

private:
  QString scaleText_;
};

bool isSameBegin(const SeismogramArray& records) {
  const SeismogramRecord& first = *records.front();
  return std::ranges::all_of(
      records, [&](const auto& record) { return std::abs(record->b() - first.b()) <= std::abs(first.delta()) / 2; });
}

} // namespace

QSizeF sizeOfPanels(std::size_t panels) {
  const std::size_t rows =
      std::clamp<std::size_t>((panels + kColumnsBeforeRows - 1) / kColumnsBeforeRows, 1, kMostRows);
  const std::size_t columns = std::max<std::size_t>((panels + rows - 1) / rows, 1);
  return {std::clamp(kLeft + kColumnStep * double(columns), kNarrowest, Output::kLargestSize),
          kHeader + kPanelStep * double(rows) + kAxis};
}

PanelTimes panelTimes(const SeismogramArray& records) {
  if (records.empty()) return {};
  double longest = 0;
  for (const auto& record : records)
    longest = std::max(longest, double(record->delta()) * std::max(record->npts() - 1, 0));
  const bool begins = isSameBegin(records);
  const float min = begins ? records.front()->b() : 0;
  const float max = float(double(min) + longest);
  return {min, min < max && std::isfinite(max) ? max : min + 1, begins};
}

void PanelsCommand::addOptions(const Options& options) {
  inputs_.addOptions(options);
  inputs_.addMemoryOptions(options);
  options.add("--gain", gain_, "Enlarge traces by this factor (default 1)").typeName("G").check(numberAboveZero());
  pages_.addOptions(options);
  picks_.addOptions(options);
  timeAxis_.addOptions(options);
  traces_.addPlainOptions(options);
  preparation_.addOptions(options);
  output_.addOptions(options, recordFieldNames());
}

ExitCode PanelsCommand::run() {
  Records found = preparation_.apply(inputs_.read());
  if (found.records.size() < 2) {
    if (!found.records.empty()) complain(found.files.front() + QStringLiteral(": found one record, expected pairs"));
    return ExitCode::Failed;
  }
  if (found.records.size() % 2 == 1) {
    note(found.files.back() + QStringLiteral(": the last record has no partner; not drawn"));
    found.records.pop_back();
  }
  RecordPages pages = pages_.pagesOf(std::move(found.records), [&](SeismogramArray records) {
    return pairsFromOneStart(onOneAxis(picks_.apply(std::move(records))));
  });
  for (std::size_t page = 0; page < pages.count(); ++page)
    pages.setSize(page, sizeOfPanels(pages.recordsOn(page) / 2));
  const ExitCode delivered = output_.deliver(pages.plotPages(), [&](const QRectF& frame, std::size_t page) {
    const auto& records = pages.recordsOf(page);
    const PanelTimes times = panelTimes(*records);
    auto view = std::make_unique<PanelsView>(frame);
    view->setWvfrmArray(records);
    Output::keep(records);
    view->setLabelsGiveWay(true);
    const double reach = double(largestAmplitude(*records)) / gain_;
    view->setMaxAmplitude(float(reach));
    view->setScaleText(
        QStringLiteral("%1: panels reach ±%2").arg(amplitudeLabel(*records)).arg(reach, 0, 'g', kScaleDigits));
    view->setXLimitsMinMax(times.min, times.max);
    traces_.apply(*view, *records);
    timeAxis_.apply(*view, times.begins ? *records : SeismogramArray());
    view->setTitle(output_.titleOr(QString()));
    view->setSubtitle(preparation_.text());
    return view;
  });
  return std::max(found.status, delivered);
}

} // namespace xov::cli
