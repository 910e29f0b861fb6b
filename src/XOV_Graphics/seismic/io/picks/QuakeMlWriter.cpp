#include "XOV_Graphics/seismic/io/picks/QuakeMlPicks.h"

#include <QLocale>
#include <QRegularExpression>
#include <QXmlStreamWriter>

#include <algorithm>

namespace xov {

namespace {

constexpr char kNamespace[] = "http://quakeml.org/xmlns/bed/1.2";
constexpr char kRootNamespace[] = "http://quakeml.org/xmlns/quakeml/1.2";
constexpr double kMetresPerKilometre = 1000;
constexpr int kCoordinateDigits = 9; // what single precision tells apart

QString exactText(double value) { return QString::number(value, 'g', QLocale::FloatingPointShortest); }

QString coordinateText(double value) { return QString::number(value, 'g', kCoordinateDigits); }

// XML has no other characters below the blank than these.
bool isXmlText(const QString& text) {
  return std::ranges::all_of(text,
                             [](QChar c) {
                               return c >= QLatin1Char(' ') ? c != QChar(0xFFFE) && c != QChar(0xFFFF)
                                                            : c == QLatin1Char('\t') || c == QLatin1Char('\n') ||
                                                                  c == QLatin1Char('\r');
                             }) &&
         text.isValidUtf16();
}

class QuakeMlDocument {
public:
  QuakeMlDocument(const PickArray& picks, const Hypocentre* event) : picks_(picks), event_(event) {
    xml_.setAutoFormatting(true);
    xml_.setAutoFormattingIndent(2);
  }

  QByteArray bytes() {
    xml_.writeStartDocument();
    xml_.writeNamespace(QLatin1String(kRootNamespace), QStringLiteral("q"));
    xml_.writeStartElement(QLatin1String(kRootNamespace), QStringLiteral("quakeml"));
    xml_.writeDefaultNamespace(QLatin1String(kNamespace));
    start("eventParameters", idOf("parameters"));
    writeEvent();
    xml_.writeEndElement();
    xml_.writeEndElement();
    xml_.writeEndDocument();
    return bytes_;
  }

private:
  void start(const char* element) { xml_.writeStartElement(QLatin1String(element)); }
  void start(const char* element, const QString& id) {
    start(element);
    xml_.writeAttribute(QStringLiteral("publicID"), id);
  }
  void text(const char* element, const QString& content) { xml_.writeTextElement(QLatin1String(element), content); }
  void textUnlessEmpty(const char* element, const QString& content) {
    if (!content.isEmpty()) text(element, content);
  }
  void value(const char* element, const QString& content) {
    start(element);
    text("value", content);
    xml_.writeEndElement();
  }

  /// What belongs to the event is named after its origin time, else after its first pick: the same in each writing.
  QString idOf(const QString& what) const {
    QString of = QStringLiteral("none");
    if (isOriginKnown()) {
      of = event_->oDate().toUTC().toString(QStringLiteral("yyyyMMddTHHmmsszzz"));
    } else if (!picks_.empty()) {
      of = resourceId(picks_.front().id).section(QLatin1Char('/'), -1);
    }
    return resourceId(QStringLiteral("smi:local/event/") + of + QLatin1Char('/') + what);
  }

  bool isOriginKnown() const { return event_ != nullptr && event_->oDate().isValid(); }

  void writeEvent() {
    start("event", idOf("event"));
    if (isOriginKnown()) {
      text("preferredOriginID", idOf("origin"));
      if (!event_->values().magnitudes.empty()) text("preferredMagnitudeID", idOf(magnitudeName(preferred())));
      writeDescription(event_->values().name);
      writeOrigin(event_->values());
      for (std::size_t i = 0; i < event_->values().magnitudes.size(); ++i)
        writeMagnitude(i);
    }
    for (const Pick& pick : picks_)
      writePick(pick);
    xml_.writeEndElement();
  }

  void writeDescription(const QString& name) {
    if (name.isEmpty()) return;
    start("description");
    text("text", name);
    text("type", QStringLiteral("region name"));
    xml_.writeEndElement();
  }

  static QString magnitudeName(std::size_t index) { return QStringLiteral("magnitude%1").arg(index + 1); }

  std::size_t preferred() const {
    const std::vector<EventMagnitude>& all = event_->values().magnitudes;
    const auto found = std::ranges::find(all, event_->magnitude(), &EventMagnitude::value);
    return found == all.end() ? 0 : std::size_t(found - all.begin());
  }

  void writeMagnitude(std::size_t index) {
    const EventMagnitude& magnitude = event_->values().magnitudes[index];
    start("magnitude", idOf(magnitudeName(index)));
    value("mag", coordinateText(double(magnitude.value)));
    textUnlessEmpty("type", magnitude.type);
    text("originID", idOf("origin"));
    xml_.writeEndElement();
  }

  void writeOrigin(const HypocentreValues& values) {
    start("origin", idOf("origin"));
    value("time", utcText(values.originTime));
    if (isDefined(double(values.longitudeDeg))) value("longitude", coordinateText(double(values.longitudeDeg)));
    if (isDefined(double(values.latitudeDeg))) value("latitude", coordinateText(double(values.latitudeDeg)));
    if (isDefined(double(values.depthKm)))
      value("depth", coordinateText(double(values.depthKm) * kMetresPerKilometre));
    for (const Pick& pick : picks_)
      writeArrival(pick);
    xml_.writeEndElement();
  }

  // An arrival without a phase is none.
  void writeArrival(const Pick& pick) {
    if (pick.phase.isEmpty()) return;
    const QString id = resourceId(pick.id);
    start("arrival", resourceId(id + QStringLiteral("/arrival")));
    text("pickID", id);
    text("phase", pick.phase);
    xml_.writeEndElement();
  }

  void writePick(const Pick& pick) {
    start("pick", resourceId(pick.id));
    start("time");
    text("value", utcText(pick.time));
    if (pick.lowerSeconds) text("lowerUncertainty", exactText(*pick.lowerSeconds));
    if (pick.upperSeconds) text("upperUncertainty", exactText(*pick.upperSeconds));
    xml_.writeEndElement();
    start("waveformID");
    constexpr const char* kCodes[] = {"networkCode", "stationCode", "locationCode", "channelCode"};
    constexpr std::size_t kNeeded = 2; // network and station are written also where they are empty
    for (std::size_t i = 0; i < pick.channel.size(); ++i)
      if (i < kNeeded || !pick.channel[i].isEmpty()) xml_.writeAttribute(QLatin1String(kCodes[i]), pick.channel[i]);
    xml_.writeEndElement();
    textUnlessEmpty("onset", pickWord(pick.onset));
    textUnlessEmpty("phaseHint", pick.phase);
    textUnlessEmpty("polarity", pickWord(pick.polarity));
    textUnlessEmpty("evaluationMode", pickWord(pick.mode));
    if (!pick.comment.isEmpty()) {
      start("comment");
      text("text", pick.comment);
      xml_.writeEndElement();
    }
    xml_.writeEndElement();
  }

  const PickArray& picks_;
  const Hypocentre* event_;
  QByteArray bytes_;
  QXmlStreamWriter xml_{&bytes_};
};

bool isWritable(const Pick& pick) {
  return isXmlText(pick.phase) && isXmlText(pick.comment) && std::ranges::all_of(pick.channel, isXmlText);
}

} // namespace

// The pattern of QuakeML 1.2 (type ResourceReference of its schema).
QString resourceId(const QString& id) {
  static const QRegularExpression pattern(
      QStringLiteral(R"(\A(smi|quakeml):[\w][\w\-.*()_~']{2,}/[\w\-.*()_~'][\w\-.*()+?_~'=,;#/&]*\z)"));
  if (pattern.match(id).hasMatch()) return id;
  QString made = QStringLiteral("smi:local/id_");
  for (const QChar character : id) {
    const bool isPlain =
        character.unicode() < 128 &&
        (character.isLetterOrNumber() || character == QLatin1Char('-') || character == QLatin1Char('.'));
    made +=
        isPlain ? QString(character) : QStringLiteral("~%1").arg(int(character.unicode()), 4, 16, QLatin1Char('0'));
  }
  return made;
}

Result<QByteArray> quakeMlOf(const PickArray& picks, const Hypocentre* event, const QString& name) {
  const auto unwritable = std::ranges::find_if_not(picks, isWritable);
  if (unwritable != picks.end())
    return Error{QStringLiteral("%1: pick %2 holds a character that XML has none of")
                     .arg(name)
                     .arg(unwritable - picks.begin() + 1)};
  if (event != nullptr && !isXmlText(event->values().name))
    return Error{name + ": the event's name holds a character that XML has none of"};
  return QuakeMlDocument(picks, event).bytes();
}

} // namespace xov
