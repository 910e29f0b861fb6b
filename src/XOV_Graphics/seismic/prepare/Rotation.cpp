#include "XOV_Graphics/seismic/prepare/Rotation.h"

#include "XOV_Graphics/base/Guarded.h"
#include "XOV_Graphics/base/Numbers.h"
#include "XOV_Graphics/seismic/Undefined.h"
#include "XOV_Graphics/seismic/prepare/CommonPiece.h"
#include "XOV_Graphics/seismic/prepare/RecordSamples.h"
#include "XOV_Graphics/seismic/prepare/TimeAxis.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <map>
#include <numbers>

namespace xov {

namespace {

constexpr double kLeastAngle = 1;  // degrees between horizontal components
constexpr double kNoShare = 1e-12; // what rounding leaves of cos 90°

constexpr std::size_t kVertical = 0;
constexpr std::size_t kFirst = 1; // horizontal component, as kSecond
constexpr std::size_t kSecond = 2;

double cosine(double degrees) { return std::cos(degrees * std::numbers::pi / 180); }
double sine(double degrees) { return std::sin(degrees * std::numbers::pi / 180); }

/// What share each of the given components has in a new one.
using Shares = std::array<double, 3>;

/// What a new component is.
struct NewComponent {
  char letter = 'Z';
  std::size_t like = kVertical; ///< the given component whose header it gets
  double azimuthDeg = 0;
  double inclinationDeg = 0; ///< from upward vertical, as SacHeader::cmpinc has it
  Shares shares{};           ///< of up, north and east
};

std::array<NewComponent, 3> newComponents(WaveAxes axes, double backAzimuthDeg, double incidenceDeg) {
  const double north = cosine(backAzimuthDeg);
  const double east = sine(backAzimuthDeg);
  const double away = std::fmod(backAzimuthDeg + 180, 360);
  const double right = std::fmod(backAzimuthDeg + 270, 360);
  const double up = cosine(incidenceDeg);
  const double flat = sine(incidenceDeg);
  const NewComponent transverse{'T', kSecond, right, 90, {0, east, -north}};
  if (axes == WaveAxes::ZRT)
    return {NewComponent{'Z', kVertical, 0, 0, {1, 0, 0}}, {'R', kFirst, away, 90, {0, -north, -east}}, transverse};
  return {NewComponent{'L', kVertical, away, incidenceDeg, {up, -flat * north, -flat * east}},
          {'Q', kFirst, std::fmod(away + 180, 360), 90 - incidenceDeg, {flat, up * north, up * east}},
          transverse};
}

/// The shares that the given components have in up, north and east.
Result<std::array<Shares, 3>> sharesInGround(const ThreeComponents& components) {
  const Result<double> first = componentAzimuth(*components[kFirst]);
  if (!first) return Error{first.error()};
  const Result<double> second = componentAzimuth(*components[kSecond]);
  if (!second) return Error{second.error()};
  const double angle = sine(*second - *first);
  if (std::abs(angle) < sine(kLeastAngle))
    return errorOf(*components[kFirst],
                   QStringLiteral("found components with the azimuths %1 and %2, expected an angle")
                       .arg(numberText(*first), numberText(*second)));
  return std::array<Shares, 3>{Shares{1, 0, 0},
                               {0, sine(*second) / angle, -sine(*first) / angle},
                               {0, -cosine(*second) / angle, cosine(*first) / angle}};
}

Shares product(const Shares& shares, const std::array<Shares, 3>& ground) {
  Shares product{};
  for (std::size_t k = 0; k < 3; ++k) {
    for (std::size_t axis = 0; axis < 3; ++axis)
      product[k] += shares[axis] * ground[axis][k];
    if (std::abs(product[k]) < kNoShare) product[k] = 0;
  }
  return product;
}

std::vector<double> mixed(const ThreeComponents& components, const CommonPiece& piece, const Shares& shares) {
  std::vector<double> sums(piece.count);
  for (std::size_t k = 0; k < components.size(); ++k) {
    if (shares[k] == 0) continue;
    const std::span<const float> samples = samplesOf(*components[k]).subspan(piece.first[k], piece.count);
    for (std::size_t i = 0; i < sums.size(); ++i)
      sums[i] += shares[k] * double(samples[i]);
  }
  return sums;
}

std::shared_ptr<SacSeismogram> newRecord(const SeismogramRecord& like, std::size_t first,
                                         const NewComponent& component, std::span<const double> samples) {
  SacHeader header = headerOf(like);
  const QString code = like.kcmpnm().chopped(like.kcmpnm().isEmpty() ? 0 : 1) + QLatin1Char(component.letter);
  header.kcmpnm = code.toLatin1().constData();
  header.cmpaz = float(component.azimuthDeg);
  header.cmpinc = float(component.inclinationDeg);
  SacFooter precise = preciseValuesOf(like);
  precise.b += double(first) * precise.delta;
  return copyWithSamples(like, samples, {.header = header, .precise = precise});
}

} // namespace

Result<ThreeComponents> rotated(const ThreeComponents& components, WaveAxes axes,
                                const WaveDirection& direction) noexcept {
  return guarded({}, [&]() -> Result<ThreeComponents> {
    if (!components[kFirst] || !components[kSecond] || (axes == WaveAxes::LQT && !components[kVertical])) {
      const SeismogramArray present = presentComponents(components);
      return Error{QStringLiteral("%1found %2 of the components, expected %3")
                       .arg(present.empty() ? QString() : present.front()->labelString() + QStringLiteral(": "))
                       .arg(present.size())
                       .arg(axes == WaveAxes::LQT ? QStringLiteral("a vertical and two horizontal ones")
                                                  : QStringLiteral("two horizontal ones"))};
    }
    const SeismogramRecord& reference = *components[kFirst];
    const double backAzimuth = direction.backAzimuthDeg.value_or(double(reference.backazimuth()));
    if (!isDefined(backAzimuth))
      return errorOf(reference, QStringLiteral("found no back azimuth, expected the places of station and event"));
    const Result<std::array<Shares, 3>> ground = sharesInGround(components);
    if (!ground) return Error{ground.error()};
    const Result<CommonPiece> piece = commonPiece(components);
    if (!piece) return Error{piece.error()};
    ThreeComponents turned;
    const std::array<NewComponent, 3> wanted = newComponents(axes, backAzimuth, direction.incidenceDeg);
    for (std::size_t k = 0; k < wanted.size(); ++k) {
      const NewComponent& component = wanted[k];
      if (!components[component.like]) continue;
      const std::vector<double> samples = mixed(components, *piece, product(component.shares, *ground));
      turned[k] = newRecord(*components[component.like], piece->first[component.like], component, samples);
    }
    return turned;
  });
}

namespace {

/// Records of one band and instrument of a station, by their components.
using Channel = std::array<std::vector<std::size_t>, 3>;

std::optional<std::size_t> placeOfComponent(const SeismogramRecord& record) {
  switch (componentLetter(record).unicode()) {
  case u'Z':
    return kVertical;
  case u'N':
  case u'1':
    return kFirst;
  case u'E':
  case u'2':
    return kSecond;
  default:
    return {};
  }
}

QString channelOf(const SeismogramRecord& record) {
  const QString code = record.kcmpnm();
  return QStringList{record.knetwk(), record.kstnm(), record.khole(), code.chopped(code.isEmpty() ? 0 : 1)}.join(
             u'.') +
         u'?';
}

bool overlap(const SeismogramRecord& left, const SeismogramRecord& right) {
  const bool isUtc = startSeconds(left) && startSeconds(right);
  const auto endOf = [&](const SeismogramRecord& record) {
    return startOnAxis(record, isUtc) + double(samplesOf(record).size()) * intervalSeconds(record);
  };
  return startOnAxis(left, isUtc) < endOf(right) && startOnAxis(right, isUtc) < endOf(left);
}

class Turner {
public:
  Turner(const SeismogramArray& records, WaveAxes axes, const WaveDirection& direction)
      : records_(records),
        axes_(axes),
        direction_(direction),
        placed_(records.size()),
        used_(records.size()) {}

  RotatedRecords turn() {
    std::map<QString, Channel> channels;
    for (std::size_t i = 0; i < records_.size(); ++i) {
      if (const auto place = placeOfComponent(*records_[i])) channels[channelOf(*records_[i])][*place].push_back(i);
    }
    for (const auto& [name, channel] : channels)
      turnChannel(name, channel);
    RotatedRecords result{{}, std::move(notes_)};
    for (std::size_t i = 0; i < records_.size(); ++i) {
      if (!used_[i]) result.records.push_back(records_[i]);
      result.records.insert(result.records.end(), placed_[i].begin(), placed_[i].end());
    }
    return result;
  }

private:
  void turnChannel(const QString& name, const Channel& channel) {
    const auto before = notes_.size();
    bool isTurned = false;
    for (const std::size_t first : channel[kFirst]) {
      for (const std::size_t second : channel[kSecond]) {
        if (overlap(*records_[first], *records_[second])) isTurned |= turnPair(channel, first, second);
      }
    }
    if (!isTurned && notes_.size() == before)
      notes_.append(
          QStringLiteral("%1: found no components of one time to rotate, expected %2")
              .arg(name, axes_ == WaveAxes::LQT ? QStringLiteral("Z, N and E") : QStringLiteral("N and E")));
  }

  bool turnPair(const Channel& channel, std::size_t first, std::size_t second) {
    if (axes_ == WaveAxes::ZRT) return turnSet({}, first, second);
    bool isTurned = false;
    for (const std::size_t vertical : channel[kVertical]) {
      if (overlap(*records_[vertical], *records_[first])) isTurned |= turnSet(vertical, first, second);
    }
    return isTurned;
  }

  bool turnSet(std::optional<std::size_t> vertical, std::size_t first, std::size_t second) {
    const ThreeComponents components{vertical ? records_[*vertical] : nullptr, records_[first], records_[second]};
    const Result<ThreeComponents> turned = rotated(components, axes_, direction_);
    if (!turned) {
      if (!notes_.contains(turned.error())) notes_.append(turned.error());
      return false;
    }
    if (vertical) place(*vertical, (*turned)[kVertical]);
    place(first, (*turned)[kFirst]);
    place(second, (*turned)[kSecond]);
    return true;
  }

  void place(std::size_t where, const std::shared_ptr<SeismogramRecord>& record) {
    placed_[where].push_back(record);
    used_[where] = true;
  }

  const SeismogramArray& records_;
  WaveAxes axes_;
  WaveDirection direction_;
  std::vector<SeismogramArray> placed_; // what comes in the place of each record
  std::vector<bool> used_;
  QStringList notes_;
};

} // namespace

RotatedRecords rotatedRecords(const SeismogramArray& records, WaveAxes axes, const WaveDirection& direction) {
  return Turner(records, axes, direction).turn();
}

} // namespace xov
