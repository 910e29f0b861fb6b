#pragma once

#include "XOV_Graphics/seismic/EventOrigin.h"
#include "XOV_Graphics/seismic/FocalMechanism.h"
#include "XOV_Graphics/seismic/Undefined.h"

#include <QString>

#include <memory>
#include <optional>
#include <vector>

namespace xov {

/// One of the magnitudes that a catalogue gives for an event.
struct XOV_EXPORT EventMagnitude {
  QString type;                  ///< as the catalogue writes it, such as "Mww"; empty when it does not say
  float value = kUndefinedValue; ///< on the scale of its type
};

/// What is known of an event. Whatever is left out is unknown.
struct XOV_EXPORT HypocentreValues {
  QDateTime originTime;                 ///< in any zone
  float latitudeDeg = kUndefinedValue;  ///< north is positive
  float longitudeDeg = kUndefinedValue; ///< east is positive
  float depthKm = kUndefinedValue;      ///< below sea level
  float mb = kUndefinedValue;           ///< body-wave magnitude
  float Ms = kUndefinedValue;           ///< surface-wave magnitude
  float Mw = kUndefinedValue;           ///< moment magnitude
  float preferredMagnitude =
      kUndefinedValue;                     ///< of whatever kind; where unset, Mw, Ms or mb stands in, in this order
  QString name;                            ///< region or title, as the catalogue has it
  std::vector<EventMagnitude> magnitudes;  ///< all of them, in the order of the catalogue
  std::optional<FocalMechanism> mechanism; ///< of the source, where the catalogue gives one
  QString id;                              ///< what the catalogue knows the event by; empty where it does not say
};

/// An event held in memory.
class XOV_EXPORT Hypocentre : public EventOrigin {
public:
  /// Holds these values.
  explicit Hypocentre(HypocentreValues values = {});
  ~Hypocentre() override;

  /// The values as given.
  const HypocentreValues& values() const;

  /// The origin time in UTC; never null.
  std::shared_ptr<SeisTime> _origin_time() const override;
  /// The origin time in UTC; invalid when it is not known.
  QDateTime oDate() const override;
  /// The preferred magnitude, else Mw, else Ms, else mb; kUndefinedValue when none is known.
  float magnitude() const override;
  float mb() const override;
  float Ms() const override;
  float Mw() const override;

private:
  HypocentreValues values_;
  std::shared_ptr<SeisTime> originTime_;
};

/// Several events with their coordinates, depths and names.
using HypocentreArray = std::vector<std::shared_ptr<Hypocentre>>;

} // namespace xov
