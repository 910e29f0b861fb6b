#pragma once

#include <QString>
#include <QStringView>

namespace xov {

/// A number that events have, and the values it can have.
struct EventNumber {
  const char* name;
  double lowest;
  double highest;
};

inline constexpr EventNumber kEventLatitude = {"latitude", -90, 90};
inline constexpr EventNumber kEventLongitude = {"longitude", -360, 360};
inline constexpr EventNumber kEventDepthKm = {"depth in km", -100,
                                              6371}; // from a high mountain to the Earth's centre
inline constexpr EventNumber kEventMagnitude = {"magnitude", -10, 15};

inline constexpr EventNumber kStrikeDeg = {"strike", -360, 360};
inline constexpr EventNumber kDipDeg = {"dip", 0, 90};
inline constexpr EventNumber kRakeDeg = {"rake", -360, 360};
inline constexpr EventNumber kMomentNm = {"moment in N m", -1e33, 1e33}; // of magnitudes to 15
inline constexpr EventNumber kHalfDurationS = {"half duration in s", 0, 3600};

/// Reads such a number, after multiplication by `factor`; what is wrong with it, if anything. An empty text leaves
/// `value` as it is.
QString takeEventNumber(const EventNumber& number, QStringView text, double factor, float& value);
QString takeEventNumber(const EventNumber& number, QStringView text, double factor, double& value);

} // namespace xov
