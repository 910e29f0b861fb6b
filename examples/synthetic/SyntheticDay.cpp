#include "examples/synthetic/SyntheticDay.h"

#include "examples/synthetic/LocalEvent.h"
#include "examples/synthetic/SiteNoise.h"
#include "examples/synthetic/SyntheticEvent.h"

#include <QLocale>

#include <XOV_Graphics/seismic/Geodesy.h>
#include <algorithm>
#include <cmath>
#include <numbers>
#include <string_view>

namespace xov::synthetic {

namespace {

constexpr double kRateHz = 20.0;
constexpr double kHourS = 3600.0;
constexpr double kDayS = 24.0 * kHourS;
constexpr std::size_t kDaySamples = std::size_t(kDayS * kRateHz);
constexpr double kGapStartS = 9.0 * kHourS + 31.0 * 60.0;
constexpr double kGapEndS = kGapStartS + 12.0 * 60.0 + 20.0;

constexpr double kStationLatitudeDeg = 38.60;
constexpr double kStationLongitudeDeg = 21.90;
constexpr double kNoiseNmPerS = 380.0;
constexpr std::uint64_t kNoiseSeed = 1913;
constexpr std::uint64_t kEventSeed = 5000;
constexpr std::uint64_t kSeedsPerEvent = 16;

// Traffic is least at night and strongest in the early afternoon, local time.
constexpr double kLocalMinusUtcS = 2.0 * kHourS;
constexpr double kBusiestLocalS = 14.0 * kHourS;
constexpr double kQuietestActivity = 0.6;
constexpr double kBusiestActivity = 8.0;

constexpr double kTeleseismStrikeDeg = 320.0;
constexpr double kTeleseismLengthS = 6000.0;

constexpr double at(double hour, double minute, double second) { return hour * kHourS + minute * 60.0 + second; }

constexpr DayEvent kEvents[] = {
    {at(1, 12, 44.21), 38.42, 22.07, 9.3, 2.6, "ml"},   {at(4, 38, 9.87), 38.75, 21.48, 11.0, 3.1, "ml"},
    {at(4, 51, 30.05), 38.76, 21.50, 10.2, 2.3, "ml"},  {at(7, 5, 51.62), 37.91, 21.12, 17.5, 3.4, "ml"},
    {at(11, 27, 18.33), 38.33, 22.31, 8.1, 2.8, "ml"},  {at(13, 48, 2.90), 1.85, 97.25, 31.0, 7.1, "mww"},
    {at(17, 22, 36.48), 37.52, 20.62, 14.8, 4.3, "mb"}, {at(17, 40, 57.19), 37.55, 20.66, 13.1, 3.2, "ml"},
    {at(21, 54, 12.75), 39.28, 22.46, 12.4, 2.9, "ml"},
};

double activity(double timeS) {
  const double phase = 2.0 * std::numbers::pi * (timeS + kLocalMinusUtcS - kBusiestLocalS) / kDayS;
  return kQuietestActivity + (kBusiestActivity - kQuietestActivity) * 0.5 * (1.0 + std::cos(phase));
}

bool isDistant(const DayEvent& event) { return std::string_view(event.magnitudeType) == "mww"; }

void addTeleseism(std::span<double> day, const DayEvent& event, const GreatCircle& way, std::uint64_t seed) {
  const SyntheticEvent distant(Source(event.magnitude, event.depthKm, kTeleseismStrikeDeg, seed));
  // Its samples are those of the day: the window starts at the first sample after the origin time.
  const auto first = std::size_t(std::ceil(event.timeS * kRateHz));
  const TimeWindow window = {double(first) / kRateHz - event.timeS, kRateHz,
                             std::min(std::size_t(kTeleseismLengthS * kRateHz), day.size() - first)};
  const GroundMotion motion = distant.groundMotion({way.distanceDeg, way.azimuthDeg}, window);
  for (std::size_t i = 0; i < window.count; ++i)
    day[first + i] += motion[Vertical][i];
}

void addEvent(std::span<double> day, const DayEvent& event, std::uint64_t seed) {
  const GreatCircle way =
      greatCircle(event.latitudeDeg, event.longitudeDeg, kStationLatitudeDeg, kStationLongitudeDeg);
  if (isDistant(event)) {
    addTeleseism(day, event, way, seed);
  } else {
    const double distanceKm = std::hypot(way.distanceDeg * kKmPerDegree, event.depthKm);
    addLocalEvent(day, kRateHz, {event.timeS, distanceKm, event.magnitude, seed});
  }
}

std::vector<double> wholeDay() {
  std::vector<double> day(kDaySamples);
  SiteNoise noise(Sensor::Vertical, kNoiseNmPerS, kRateHz, kNoiseSeed);
  for (std::size_t i = 0; i < day.size(); ++i)
    day[i] = noise.next(activity(double(i) / kRateHz));
  std::uint64_t seed = kEventSeed;
  for (const DayEvent& event : kEvents)
    addEvent(day, event, seed += kSeedsPerEvent);
  return day;
}

// The code of the SAC format for a reference time at midnight.
constexpr std::int32_t kSacMidnight = 10;
// ... and for velocity in nm/s.
constexpr std::int32_t kSacVelocity = 7;

std::shared_ptr<SacSeismogram> piece(const std::vector<double>& day, double fromS, double toS) {
  SacHeader header;
  header.delta = float(1.0 / kRateHz);
  header.b = float(fromS);
  header.idep = kSacVelocity;
  header.iztype = kSacMidnight;
  header.lpspol = header.lovrok = 1;
  setReferenceTime(header, dayMidnight());
  header.stla = float(kStationLatitudeDeg);
  header.stlo = float(kStationLongitudeDeg);
  header.stel = header.stdp = header.cmpaz = header.cmpinc = 0;
  header.knetwk = "XX";
  header.kstnm = "DRUM";
  header.kcmpnm = "BHZ";
  const auto first = day.begin() + std::ptrdiff_t(fromS * kRateHz);
  const auto last = day.begin() + std::ptrdiff_t(toS * kRateHz);
  return std::make_shared<SacSeismogram>(header, std::vector<float>(first, last));
}

} // namespace

std::span<const DayEvent> dayEvents() { return kEvents; }

QDateTime dayMidnight() { return QDateTime(QDate(2025, 3, 12), QTime(0, 0), Qt::UTC); }

std::vector<std::shared_ptr<SacSeismogram>> dayTraces() {
  const std::vector<double> day = wholeDay();
  std::vector<std::shared_ptr<SacSeismogram>> pieces;
  pieces.push_back(piece(day, 0, kGapStartS));
  pieces.push_back(piece(day, kGapEndS, kDayS));
  return pieces;
}

QByteArray dayCatalogue() {
  QByteArray text = "time,latitude,longitude,depth,magnitude,type\n";
  for (const DayEvent& event : kEvents) {
    const QDateTime time = dayMidnight().addMSecs(std::llround(event.timeS * 1000.0));
    const QByteArrayList fields = {QLocale::c().toString(time, QStringLiteral("yyyy-MM-ddTHH:mm:ss.zzzZ")).toLatin1(),
                                   QByteArray::number(event.latitudeDeg, 'f', 2),
                                   QByteArray::number(event.longitudeDeg, 'f', 2),
                                   QByteArray::number(event.depthKm, 'f', 1),
                                   QByteArray::number(event.magnitude, 'f', 1),
                                   event.magnitudeType};
    text += fields.join(',') + '\n';
  }
  return text;
}

} // namespace xov::synthetic
