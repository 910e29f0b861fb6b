#include "XOV_Graphics/seismic/io/events/QuakeMl.h"

#include "XOV_Graphics/base/TimeText.h"
#include "XOV_Graphics/base/XmlElements.h"
#include "XOV_Graphics/seismic/io/events/EventDraft.h"
#include "XOV_Graphics/seismic/io/events/QuakeMlMechanism.h"
#include "XOV_Graphics/seismic/mechanism/SourceGeometry.h"

#include <algorithm>

namespace xov {

namespace {

constexpr double kKilometresPerMetre = 1e-3;

struct Origin {
  QString id;
  QDateTime time;
  float latitudeDeg = kUndefinedValue;
  float longitudeDeg = kUndefinedValue;
  float depthKm = kUndefinedValue;
  QString problem; ///< the first; empty when the origin can be used
};

struct Magnitude {
  QString id;
  EventMagnitude magnitude;
};

struct Event {
  QString id;
  QString preferredOrigin;
  QString preferredMagnitude;
  std::vector<Origin> origins;
  std::vector<Magnitude> magnitudes;
  QString preferredMechanism;
  std::vector<QuakeMlMechanism> mechanisms;
  QString name;
  bool isNamedAfterRegion = false;
  QString problem;
};

class QuakeMlParser {
public:
  QuakeMlParser(QIODevice& device, const QString& name)
      : xml_(device),
        name_(name),
        events_(name),
        mechanisms_(name, "focal mechanism") {}

  Result<EventFile> run() {
    xml_.readRoot("quakeml", "QuakeML", [&] {
      xml_.readChildren("eventParameters", [&] { xml_.readChildren("event", [&] { readEvent(); }); });
    });
    if (xml_.hasError()) return Error{name_ + ": " + xml_.faultText()};
    Result<EventFile> found = events_.result();
    if (!found) return found;
    EventFile file = std::move(found).value();
    file.notes += mechanisms_.notes();
    return file;
  }

private:
  /// The text of the element <value> in the current one.
  QString value() {
    QString found;
    xml_.readChildren("value", [&] { found = xml_.elementText(); });
    return found;
  }

  void readEvent() {
    const qint64 line = xml_.lineNumber();
    Event event;
    event.id = xml_.attribute("publicID");
    while (xml_.readNextStartElement()) {
      const QStringView element = xml_.name();
      if (element == QLatin1String("preferredOriginID")) {
        event.preferredOrigin = xml_.elementText();
      } else if (element == QLatin1String("preferredMagnitudeID")) {
        event.preferredMagnitude = xml_.elementText();
      } else if (element == QLatin1String("description")) {
        readDescription(event);
      } else if (element == QLatin1String("origin")) {
        event.origins.push_back(readOrigin());
      } else if (element == QLatin1String("magnitude")) {
        readMagnitude(event);
      } else if (element == QLatin1String("preferredFocalMechanismID")) {
        event.preferredMechanism = xml_.elementText();
      } else if (element == QLatin1String("focalMechanism")) {
        readMechanism(event);
      } else {
        xml_.skip();
      }
    }
    if (!xml_.hasError()) addEvent(std::move(event), line);
  }

  void readDescription(Event& event) {
    QString described;
    QString type;
    while (xml_.readNextStartElement()) {
      if (xml_.name() == QLatin1String("text")) {
        described = xml_.elementText();
      } else if (xml_.name() == QLatin1String("type")) {
        type = xml_.elementText();
      } else {
        xml_.skip();
      }
    }
    const bool isRegion = type == QLatin1String("region name") || type == QLatin1String("Flinn-Engdahl region");
    if (described.isEmpty() || !(event.name.isEmpty() || (isRegion && !event.isNamedAfterRegion))) return;
    event.name = described;
    event.isNamedAfterRegion = isRegion;
  }

  Origin readOrigin() {
    Origin origin;
    origin.id = xml_.attribute("publicID");
    const auto note = [&](const QString& problem) {
      if (origin.problem.isEmpty()) origin.problem = problem;
    };
    while (xml_.readNextStartElement()) {
      const QStringView element = xml_.name();
      if (element == QLatin1String("time")) {
        const QString written = value();
        if (const auto time = parseUtcTime(written)) {
          origin.time = *time;
        } else {
          note(unreadableTime(written));
        }
      } else if (element == QLatin1String("latitude")) {
        note(takeEventNumber(kEventLatitude, value(), 1, origin.latitudeDeg));
      } else if (element == QLatin1String("longitude")) {
        note(takeEventNumber(kEventLongitude, value(), 1, origin.longitudeDeg));
      } else if (element == QLatin1String("depth")) {
        note(takeEventNumber(kEventDepthKm, value(), kKilometresPerMetre, origin.depthKm));
      } else {
        xml_.skip();
      }
    }
    if (!origin.time.isValid()) note(QStringLiteral("an origin without a time"));
    return origin;
  }

  void readMagnitude(Event& event) {
    Magnitude found{xml_.attribute("publicID"), {}};
    while (xml_.readNextStartElement()) {
      if (xml_.name() == QLatin1String("mag")) {
        const QString problem = takeEventNumber(kEventMagnitude, value(), 1, found.magnitude.value);
        if (event.problem.isEmpty()) event.problem = problem;
      } else if (xml_.name() == QLatin1String("type")) {
        found.magnitude.type = xml_.elementText();
      } else {
        xml_.skip();
      }
    }
    if (isDefined(found.magnitude.value)) event.magnitudes.push_back(found);
  }

  /// One that cannot be read leaves the event without it.
  void readMechanism(Event& event) {
    const qint64 line = xml_.lineNumber();
    QuakeMlMechanism found = readQuakeMlMechanism(xml_);
    mechanisms_.count(line, found.problem);
    if (found.problem.isEmpty()) event.mechanisms.push_back(std::move(found));
  }

  /// The preferred mechanism, else the first one that tells how the source radiates, with the centroid at the origin
  /// that came out with it.
  static std::optional<FocalMechanism> bestMechanism(const Event& event) {
    const std::vector<QuakeMlMechanism>& all = event.mechanisms;
    auto best = std::ranges::find(all, event.preferredMechanism, &QuakeMlMechanism::id);
    if (event.preferredMechanism.isEmpty() || best == all.end()) {
      best = std::ranges::find_if(
          all, [](const QuakeMlMechanism& found) { return radiatingTensorOf(found.mechanism).has_value(); });
    }
    if (best == all.end()) return {};
    FocalMechanism mechanism = best->mechanism;
    const auto centroid = std::ranges::find(event.origins, best->derivedOrigin, &Origin::id);
    if (best->derivedOrigin.isEmpty() || centroid == event.origins.end() || !centroid->problem.isEmpty())
      return mechanism;
    mechanism.centroidTime = centroid->time;
    mechanism.centroidLatitudeDeg = centroid->latitudeDeg;
    mechanism.centroidLongitudeDeg = centroid->longitudeDeg;
    mechanism.centroidDepthKm = centroid->depthKm;
    return mechanism;
  }

  /// The preferred origin, else the first without a problem, else the first; null when there is none.
  static const Origin* bestOrigin(const Event& event) {
    const std::vector<Origin>& origins = event.origins;
    const auto preferred = std::ranges::find(origins, event.preferredOrigin, &Origin::id);
    if (!event.preferredOrigin.isEmpty() && preferred != origins.end()) return &*preferred;
    const auto sound = std::ranges::find_if(origins, &QString::isEmpty, &Origin::problem);
    if (sound != origins.end()) return &*sound;
    return origins.empty() ? nullptr : &origins.front();
  }

  void addEvent(Event event, qint64 line) {
    EventDraft draft;
    draft.note(event.problem);
    if (const Origin* const origin = bestOrigin(event)) {
      draft.note(origin->problem);
      draft.values.originTime = origin->time;
      draft.values.latitudeDeg = origin->latitudeDeg;
      draft.values.longitudeDeg = origin->longitudeDeg;
      draft.values.depthKm = origin->depthKm;
    } else {
      draft.problem = QStringLiteral("an event without an origin");
    }
    draft.values.id = event.id;
    draft.values.name = event.name;
    draft.values.mechanism = bestMechanism(event);
    const auto preferred = std::ranges::find(event.magnitudes, event.preferredMagnitude, &Magnitude::id);
    std::ranges::transform(event.magnitudes, std::back_inserter(draft.magnitudes), &Magnitude::magnitude);
    if (!event.preferredMagnitude.isEmpty() && preferred != event.magnitudes.end())
      draft.preferred = std::size_t(preferred - event.magnitudes.begin());
    events_.add(std::move(draft), line);
  }

  XmlElements xml_;
  QString name_;
  EventList events_;
  LeftOut mechanisms_;
};

} // namespace

Result<EventFile> readQuakeMl(QIODevice& device, const QString& name) { return QuakeMlParser(device, name).run(); }

} // namespace xov
