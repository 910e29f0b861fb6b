#include "XOV_Graphics/seismic/io/events/QuakeMlMechanism.h"

#include "XOV_Graphics/seismic/io/events/EventNumbers.h"

#include <cmath>
#include <iterator>

namespace xov {

namespace {

class MechanismParser {
public:
  explicit MechanismParser(XmlElements& xml) : xml_(xml) {}

  QuakeMlMechanism run() {
    found_.id = xml_.attribute("publicID");
    xml_.readEach([&](QStringView element) {
      if (element == QLatin1String("nodalPlanes")) {
        readPlanes();
      } else if (element == QLatin1String("momentTensor")) {
        readMomentTensor();
      } else {
        return false;
      }
      return true;
    });
    return std::move(found_);
  }

private:
  template <typename Value>
  void takeText(const EventNumber& number, const QString& text, double factor, Value& value) {
    const QString problem = takeEventNumber(number, text, factor, value);
    if (found_.problem.isEmpty()) found_.problem = problem;
  }

  /// The number in the element <value> of the current one.
  template <typename Value>
  void takeValue(const EventNumber& number, Value& value) {
    xml_.readChildren("value", [&] { takeText(number, xml_.elementText(), 1, value); });
  }

  // A preferred plane comes first, as the plane that slipped.
  void readPlanes() {
    const bool secondIsPreferred = xml_.attribute("preferredPlane") == QLatin1String("2");
    xml_.readEach([&](QStringView element) {
      const bool isFirst = element == QLatin1String("nodalPlane1");
      if (!isFirst && element != QLatin1String("nodalPlane2")) return false;
      readPlane(found_.mechanism.planes[isFirst == secondIsPreferred ? 1 : 0]);
      return true;
    });
  }

  void readPlane(NodalPlane& plane) {
    xml_.readEach([&](QStringView element) {
      if (element == QLatin1String("strike")) {
        takeValue(kStrikeDeg, plane.strikeDeg);
      } else if (element == QLatin1String("dip")) {
        takeValue(kDipDeg, plane.dipDeg);
      } else if (element == QLatin1String("rake")) {
        takeValue(kRakeDeg, plane.rakeDeg);
      } else {
        return false;
      }
      return true;
    });
  }

  void readMomentTensor() {
    xml_.readEach([&](QStringView element) {
      if (element == QLatin1String("derivedOriginID")) {
        found_.derivedOrigin = xml_.elementText();
      } else if (element == QLatin1String("scalarMoment")) {
        takeValue(kMomentNm, found_.mechanism.scalarMomentNm);
      } else if (element == QLatin1String("tensor")) {
        readTensor();
      } else if (element == QLatin1String("sourceTimeFunction")) {
        xml_.readChildren("duration",
                          [&] { takeText(kHalfDurationS, xml_.elementText(), 0.5, found_.mechanism.halfDurationS); });
      } else {
        return false;
      }
      return true;
    });
  }

  // All six elements, or none: a tensor that lacks one would be another.
  void readTensor() {
    struct Element {
      const char* name;
      double MomentTensor::*element;
    };
    static constexpr Element kElements[] = {{"Mrr", &MomentTensor::Mrr}, {"Mtt", &MomentTensor::Mtt},
                                            {"Mpp", &MomentTensor::Mpp}, {"Mrt", &MomentTensor::Mrt},
                                            {"Mrp", &MomentTensor::Mrp}, {"Mtp", &MomentTensor::Mtp}};
    MomentTensor tensor;
    bool isKnown[std::size(kElements)] = {};
    xml_.readEach([&](QStringView name) {
      for (std::size_t i = 0; i < std::size(kElements); ++i) {
        if (name != QLatin1String(kElements[i].name)) continue;
        double value = std::nan("");
        takeValue(kMomentNm, value);
        isKnown[i] = !std::isnan(value);
        tensor.*kElements[i].element = value;
        return true;
      }
      return false;
    });
    for (const bool known : isKnown) {
      if (known) continue;
      if (found_.problem.isEmpty())
        found_.problem = QStringLiteral("a moment tensor without all of its six elements");
      return;
    }
    found_.mechanism.tensor = tensor;
  }

  XmlElements& xml_;
  QuakeMlMechanism found_;
};

} // namespace

QuakeMlMechanism readQuakeMlMechanism(XmlElements& xml) { return MechanismParser(xml).run(); }

} // namespace xov
