#include "XOV_Graphics/seismic/MagnitudeScale.h"

#include <algorithm>

namespace xov {

namespace {

struct TypeRow {
  const char* prefix;
  MagnitudeScale scale;
};

// The first row whose prefix a type begins with, in lower case, decides.
constexpr TypeRow kTypes[] = {
    {"mw", MagnitudeScale::Moment},   //
    {"mblg", MagnitudeScale::Other},  //
    {"mb_lg", MagnitudeScale::Other}, //
    {"mb", MagnitudeScale::Body},     //
    {"ms", MagnitudeScale::Surface},  //
    {"mlg", MagnitudeScale::Other},   //
    {"ml", MagnitudeScale::Local},    //
    {"md", MagnitudeScale::Duration}, //
    {"mc", MagnitudeScale::Duration},
};

constexpr MagnitudeScale kOrderOfPreference[] = {MagnitudeScale::Moment,   MagnitudeScale::Surface,
                                                 MagnitudeScale::Body,     MagnitudeScale::Local,
                                                 MagnitudeScale::Duration, MagnitudeScale::Other};

} // namespace

MagnitudeScale magnitudeScale(const QString& type) {
  const QString lower = type.trimmed().toLower();
  const auto row = std::ranges::find_if(
      kTypes, [&](const TypeRow& known) { return lower.startsWith(QLatin1String(known.prefix)); });
  return row == std::end(kTypes) ? MagnitudeScale::Other : row->scale;
}

void setMagnitudes(HypocentreValues& values, std::vector<EventMagnitude> magnitudes,
                   std::optional<std::size_t> preferred) {
  const auto represent = [&](MagnitudeScale scale) {
    const auto belongs = [&](const EventMagnitude& magnitude) { return magnitudeScale(magnitude.type) == scale; };
    if (preferred && belongs(magnitudes[*preferred])) return magnitudes[*preferred].value;
    const auto first = std::ranges::find_if(magnitudes, belongs);
    return first == magnitudes.end() ? kUndefinedValue : first->value;
  };
  values.Mw = represent(MagnitudeScale::Moment);
  values.Ms = represent(MagnitudeScale::Surface);
  values.mb = represent(MagnitudeScale::Body);
  values.preferredMagnitude = preferred ? magnitudes[*preferred].value : kUndefinedValue;
  for (const MagnitudeScale scale : kOrderOfPreference) {
    if (!isDefined(values.preferredMagnitude)) values.preferredMagnitude = represent(scale);
  }
  values.magnitudes = std::move(magnitudes);
}

} // namespace xov
