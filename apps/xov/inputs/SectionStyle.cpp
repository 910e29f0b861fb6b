#include "apps/xov/inputs/SectionStyle.h"

#include "apps/xov/inputs/Validators.h"
#include "apps/xov/terminal/Messages.h"

#include <QColor>

#include <XOV_Graphics/seismic/Undefined.h>
#include <XOV_Graphics/seismic/prepare/PreparedRecords.h>
#include <XOV_Graphics/views/seismic/MultiSeisView.h>

namespace xov::cli {

namespace {

constexpr char kDegrees[] = "degrees";
constexpr char kKilometres[] = "km";
constexpr char kTrace[] = "trace";
constexpr char kPositive[] = "positive";
constexpr char kNegative[] = "negative";
constexpr char kBoth[] = "both";

// Lobes of one side are black, as the traces; both are told apart by colours that people with colour-vision
// deficiencies see as different, too.
const QColor kOneSide = Qt::black;
const QColor kPositiveOfBoth(213, 94, 0);
const QColor kNegativeOfBoth(0, 114, 178);

Check color() {
  const auto check = [](const std::string& value) {
    return QColor(QString::fromStdString(value)).isValid()
               ? std::string()
               : "expected the name of a colour or #rrggbb, found " + value;
  };
  return Check{check, {}};
}

} // namespace

void SectionStyle::addOptions(const Options& options) {
  const Option distance =
      options
          .add("--distance-axis", distanceAxis_,
               "Let strips stand at their distance along an axis in degrees or km, and overlap there")
          .typeName("UNIT")
          .check(oneOf({kDegrees, kKilometres}));
  options.addFlag("--azimuth-axis", azimuthAxis_, "Let strips stand at their azimuth from the event along an axis")
      .excludes(distance);
  options
      .add("--scaling", scaling_,
           "Scale each trace by its own peak (trace), or all by the greatest (common, the default)")
      .typeName("BY")
      .check(oneOf({kTrace, "common"}));
  const Option fill = options
                          .add("--wiggle-fill", wiggleFill_,
                               "Fill the lobes above the zero line (positive), below it (negative) or both")
                          .typeName("LOBES")
                          .check(oneOf({kPositive, kNegative, kBoth}));
  options
      .add("--wiggle-color", wiggleColors_,
           "Colour of filled lobes, as red or #d55e00; of both: that above and that below")
      .typeName("COLOR[,COLOR]")
      .listBetweenCommas()
      .check(color())
      .needs(fill);
}

void SectionStyle::check() const {
  const std::size_t sides = wiggleFill_ == kBoth ? 2 : 1;
  if (wiggleColors_.size() > sides)
    throw UsageError("--wiggle-color",
                     "expected a colour for each side that is filled, found " + std::to_string(wiggleColors_.size()));
}

SeismogramArray SectionStyle::placed(SeismogramArray records) const {
  if (distanceAxis_.empty() && !azimuthAxis_) return records;
  const QString what = azimuthAxis_ ? QStringLiteral("azimuth") : QStringLiteral("distance");
  SeismogramArray known, unknown;
  for (const auto& record : records) {
    const bool isKnown = isDefined(double(azimuthAxis_ ? record->azimuth() : record->gcarc()));
    (isKnown ? known : unknown).push_back(record);
  }
  if (unknown.empty()) return records;
  if (known.empty()) {
    complain(QStringLiteral("no record knows its %1: the strips stand evenly").arg(what));
    return records;
  }
  complain(QStringLiteral("no %1 of %2 of %3 records; left out: %4")
               .arg(what)
               .arg(unknown.size())
               .arg(records.size())
               .arg(stationsText(unknown)));
  return known;
}

void SectionStyle::apply(MultiSeisView& view) const {
  using Placement = MultiSeisView::StripPlacement;
  if (azimuthAxis_) view.setStripPlacement(Placement::ByAzimuth);
  if (distanceAxis_ == kDegrees) view.setStripPlacement(Placement::ByDistanceDegrees);
  if (distanceAxis_ == kKilometres) view.setStripPlacement(Placement::ByDistanceKm);
  if (scaling_ == kTrace) view.setAmplitudeScaling(MultiSeisView::AmplitudeScaling::EachTrace);

  const bool both = wiggleFill_ == kBoth;
  const auto given = [&](std::size_t index, const QColor& usual) {
    return index < wiggleColors_.size() ? QColor(QString::fromStdString(wiggleColors_[index])) : usual;
  };
  if (both || wiggleFill_ == kPositive) view.setPositiveLobeColor(given(0, both ? kPositiveOfBoth : kOneSide));
  if (both || wiggleFill_ == kNegative)
    view.setNegativeLobeColor(given(both ? 1 : 0, both ? kNegativeOfBoth : kOneSide));
}

} // namespace xov::cli
