#include "XOV_Graphics/seismic/Hypocentre.h"

#include "XOV_Graphics/seismic/UtcTime.h"

namespace xov {

Hypocentre::Hypocentre(HypocentreValues values)
    : values_(std::move(values)),
      originTime_(std::make_shared<UtcTime>(values_.originTime)) {}

Hypocentre::~Hypocentre() = default;

const HypocentreValues& Hypocentre::values() const { return values_; }

std::shared_ptr<SeisTime> Hypocentre::_origin_time() const { return originTime_; }

QDateTime Hypocentre::oDate() const { return originTime_->nsDate(); }

float Hypocentre::magnitude() const {
  for (const float candidate : {values_.preferredMagnitude, values_.Mw, values_.Ms, values_.mb}) {
    if (isDefined(candidate)) return candidate;
  }
  return kUndefinedValue;
}

float Hypocentre::mb() const { return values_.mb; }

float Hypocentre::Ms() const { return values_.Ms; }

float Hypocentre::Mw() const { return values_.Mw; }

} // namespace xov
