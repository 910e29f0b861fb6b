#include "apps/xov/inputs/TraceStyle.h"

#include "apps/xov/inputs/ColorList.h"
#include "apps/xov/inputs/NamedValue.h"
#include "apps/xov/inputs/Validators.h"

#include <QSet>

#include <XOV_Graphics/colour/CategoryColors.h>
#include <XOV_Graphics/seismic/prepare/RecordGroups.h>
#include <XOV_Graphics/views/seismic/SeismogramView.h>

namespace xov::cli {

namespace {

constexpr double kThinnestLine = 0.05;
constexpr double kThickestLine = 20;

constexpr NamedValue<GroupBy> kGroups[] = {
    {"component", GroupBy::Component},
    {"station", GroupBy::Station},
    {"network", GroupBy::Network},
    {"file", GroupBy::File},
};

constexpr NamedValue<LegendPlace> kPlaces[] = {
    {"best", LegendPlace::Best},
    {"top-right", LegendPlace::TopRight},
    {"top-left", LegendPlace::TopLeft},
    {"bottom-right", LegendPlace::BottomRight},
    {"bottom-left", LegendPlace::BottomLeft},
};

} // namespace

void LineWidthOption::addOptions(const Options& options) {
  options.add("--line-width", points_, "Width of the lines that show data, in points")
      .typeName("POINTS")
      .check(numberFromTo(kThinnestLine, kThickestLine));
}

void LineWidthOption::apply(XOVView& view) const {
  if (points_) view.setLineWidth(*points_);
}

void TraceStyle::addPlainOptions(const Options& options) {
  isPlain_ = true;
  addColorList(options, "--colors", colors_, "Colours of the traces in turn: names as red, or numbers as '#336699'");
  width_.addOptions(options);
}

void TraceStyle::addOptions(const Options& options) {
  addPlainOptions(options);
  isPlain_ = false;
  options.add("--color-by", groups_, "Give one colour to all traces of a component, station, network or file")
      .typeName("GROUP")
      .check(oneOf(namesOf(kGroups)));
  options
      .add("--legend", legend_,
           "Say what the colours stand for, in the corner where it covers least (best) or in another one")
      .typeName("[CORNER]")
      .check(oneOf(namesOf(kPlaces)));
}

std::vector<std::size_t> TraceStyle::groupsOf(const SeismogramArray& records) {
  RecordGroups groups = xov::groupsOf(records, valueNamed(kGroups, groups_, GroupBy::Trace));
  std::vector<std::size_t> numbers; // of the groups of these records
  QStringList unused = names_;      // those of one name are told apart by their order
  for (const QString& name : groups.names) {
    qsizetype number = unused.indexOf(name);
    if (number < 0) {
      number = names_.size();
      names_.append(name);
      unused.append(QString());
    } else {
      unused[number].clear();
    }
    numbers.push_back(std::size_t(number));
  }
  for (std::size_t& group : groups.groupOf)
    group = numbers[group];
  return groups.groupOf;
}

void TraceStyle::keepGroups(const SeismogramArray& records, const std::vector<std::size_t>& groups) {
  for (std::size_t i = 0; i < records.size(); ++i)
    groupOf_.insert(records[i].get(), groups[i]);
}

void TraceStyle::apply(SeismogramView& view, const SeismogramArray& records) const {
  width_.apply(view);
  const std::vector<QColor> given = colorsNamed(colors_);
  if (isPlain_) return view.setTraceColors(given);
  if (!isWanted()) return;
  std::vector<QColor> colors;
  std::vector<LegendEntry> entries;
  QSet<std::size_t> named;
  for (const auto& record : records) {
    const std::size_t group = groupOf_.value(record.get());
    colors.push_back(given.empty() ? QColor(QRgb(categoryColor(group))) : given[group % given.size()]);
    if (legend_.empty() || named.contains(group)) continue;
    named.insert(group);
    entries.push_back({names_.value(qsizetype(group)), colors.back()});
  }
  view.setTraceColors(colors);
  view.setLegend(entries);
  view.setLegendPlace(valueNamed(kPlaces, legend_, LegendPlace::Best));
}

} // namespace xov::cli
