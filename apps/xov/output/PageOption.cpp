#include "apps/xov/output/PageOption.h"

#include "apps/xov/output/RecordNames.h"

#include <XOV_Graphics/seismic/prepare/RecordPicks.h>
#include <XOV_Graphics/seismic/prepare/RecordTexts.h>
#include <XOV_Graphics/seismic/prepare/TimeAxis.h>
#include <algorithm>
#include <cmath>
#include <optional>

namespace xov::cli {

namespace {

constexpr char kStation[] = "station";
constexpr char kEvent[] = "event";
constexpr int kMostOnPage = 1000000;
// Files tell the origin time of one event to the second at worst.
constexpr double kSameOriginSeconds = 1;

std::string checkWord(const std::string& text) {
  if (text == kStation || text == kEvent) return {};
  return "found '" + text + "', expected station or event";
}

std::string checkPage(const std::string& text) {
  if (text == kStation || text == kEvent) return {};
  bool ok = false;
  const int number = QString::fromStdString(text).toInt(&ok);
  if (ok && number >= 1 && number <= kMostOnPage) return {};
  return "found '" + text + "', expected station, event or a number of at least 1";
}

// In UTC where the reference time is known.
std::optional<double> originOf(const SeismogramRecord& record) {
  const std::optional<double> offset = originSeconds(record);
  if (!offset) return {};
  const QDateTime reference = referenceTimeOf(record);
  return reference.isValid() ? double(reference.toMSecsSinceEpoch()) / 1000 + *offset : *offset;
}

bool isSameStation(const SeismogramRecord& a, const SeismogramRecord& b) { return stationText(a) == stationText(b); }

bool isSameEvent(const SeismogramRecord& a, const SeismogramRecord& b) {
  const std::optional<double> first = originOf(a);
  const std::optional<double> second = originOf(b);
  if (!first || !second) return !first && !second;
  return std::abs(*first - *second) < kSameOriginSeconds;
}

} // namespace

const std::shared_ptr<const SeismogramArray>& RecordPages::recordsOf(std::size_t page) {
  shown_ = std::make_shared<const SeismogramArray>(makeReady_ ? makeReady_(pages_[page]) : pages_[page]);
  return shown_;
}

void PageOption::addOptions(const Options& options) {
  const std::string number = things_ != nullptr ? std::string("Pages of so many ") + things_ + ", or one" : "A page";
  options.add("--page", page_, number + " a station or event (default: one page)")
      .typeName("PAGE")
      .check(Check{things_ != nullptr ? checkPage : checkWord, {}});
}

// A unit goes where its first record belongs.
std::vector<SeismogramArray> PageOption::grouped(const SeismogramArray& records) const {
  const auto isSame = page_ == kStation ? isSameStation : isSameEvent;
  std::vector<SeismogramArray> groups;
  for (std::size_t i = 0; i < records.size(); i += unit_) {
    const auto group = std::ranges::find_if(
        groups, [&](const SeismogramArray& known) { return isSame(*known.front(), *records[i]); });
    SeismogramArray& page = group == groups.end() ? groups.emplace_back() : *group;
    for (std::size_t k = i; k < std::min(i + unit_, records.size()); ++k)
      page.push_back(records[k]);
  }
  return groups;
}

RecordPages PageOption::pagesOf(SeismogramArray records, const MakeReady& makeReady) const {
  RecordPages result;
  if (page_ == kStation || page_ == kEvent) {
    result.pages_ = grouped(records);
    result.makeReady_ = makeReady;
  } else {
    const SeismogramArray ready = makeReady(std::move(records));
    const std::size_t most = page_.empty() ? ready.size() : std::size_t(std::stoul(page_)) * unit_;
    for (std::size_t first = 0; first < ready.size(); first += most) {
      const std::size_t last = std::min(first + most, ready.size());
      result.pages_.emplace_back(ready.begin() + std::ptrdiff_t(first), ready.begin() + std::ptrdiff_t(last));
    }
  }
  for (const SeismogramArray& page : result.pages_)
    result.plotPages_.push_back({nameFieldsOf(page), {}});
  return result;
}

} // namespace xov::cli
