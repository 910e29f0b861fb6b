#include "apps/xov/inputs/TimeAxisOption.h"

#include "apps/xov/inputs/Validators.h"
#include "apps/xov/terminal/Messages.h"

#include <XOV_Graphics/seismic/Undefined.h>
#include <XOV_Graphics/seismic/prepare/CommonAxis.h>
#include <XOV_Graphics/seismic/prepare/TimeAxis.h>
#include <XOV_Graphics/views/seismic/SeismogramView.h>
#include <algorithm>

namespace xov::cli {

namespace {

constexpr char kUtc[] = "utc";
constexpr char kSeconds[] = "seconds";

// Invalid where the records count from several moments, or from none.
QDateTime commonReference(const SeismogramArray& records) {
  return records.empty() || countTimeAxes(records) > 1 ? QDateTime() : referenceTimeOf(*records.front());
}

bool knowsOfAnEvent(const SeismogramArray& records) {
  return std::any_of(records.begin(), records.end(),
                     [](const auto& record) { return isDefined(double(record->originTimeOffset())); });
}

} // namespace

void TimeAxisOption::addOptions(const Options& options) {
  options
      .add("--time-axis", axis_,
           "What the time axis shows (default: utc, but seconds where files know an origin time)")
      .typeName("AXIS")
      .check(oneOf({kUtc, kSeconds}));
}

QDateTime TimeAxisOption::referenceOf(const SeismogramArray& records) const {
  if (axis_ == kSeconds || (axis_.empty() && (prefersSeconds_ || knowsOfAnEvent(records)))) return {};
  const QDateTime reference = commonReference(records);
  if (!reference.isValid() && axis_ == kUtc)
    note(QStringLiteral("the records have no time axis in common: it shows seconds"));
  return reference;
}

void TimeAxisOption::apply(SeismogramView& view, const SeismogramArray& records) const {
  view.setTimeReference(referenceOf(records));
}

} // namespace xov::cli
