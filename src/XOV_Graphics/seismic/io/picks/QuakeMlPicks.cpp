#include "XOV_Graphics/seismic/io/picks/QuakeMlPicks.h"

#include "XOV_Graphics/base/XmlElements.h"
#include "XOV_Graphics/seismic/io/picks/PickDraft.h"

#include <QHash>

namespace xov {

namespace {

struct DraftOnLine {
  PickDraft draft;
  qint64 line = 0;
};

class QuakeMlPickParser {
public:
  QuakeMlPickParser(QByteArrayView text, const QString& name) : xml_(text), name_(name), picks_(name) {}

  Result<PickFile> run() {
    xml_.readRoot("quakeml", "QuakeML", [&] {
      xml_.readChildren("eventParameters", [&] { xml_.readChildren("event", [&] { readEvent(); }); });
    });
    if (xml_.hasError()) return Error{name_ + ": " + xml_.faultText()};
    return picks_.result();
  }

private:
  void readEvent() {
    std::vector<DraftOnLine> drafts;
    QHash<QString, QString> phases; // of arrivals, by the picks that they refer to
    xml_.readEach([&](QStringView element) {
      if (element == QLatin1String("pick")) {
        const qint64 line = xml_.lineNumber();
        drafts.push_back({readPick(), line});
      } else if (element == QLatin1String("origin")) {
        xml_.readChildren("arrival", [&] { readArrival(phases); });
      } else {
        return false;
      }
      return true;
    });
    if (xml_.hasError()) return;
    for (DraftOnLine& found : drafts) {
      Pick& pick = found.draft.pick;
      if (pick.phase.isEmpty()) pick.phase = phases.value(pick.id);
      picks_.add(std::move(found.draft), found.line);
    }
  }

  void readArrival(QHash<QString, QString>& phases) {
    QString pick;
    QString phase;
    xml_.readEach([&](QStringView element) {
      if (element == QLatin1String("pickID")) {
        pick = xml_.elementText();
      } else if (element == QLatin1String("phase")) {
        phase = xml_.elementText();
      } else {
        return false;
      }
      return true;
    });
    if (!pick.isEmpty() && !phases.contains(pick)) phases.insert(pick, phase);
  }

  PickDraft readPick() {
    PickDraft draft;
    draft.pick.id = xml_.attribute("publicID");
    bool hasTime = false;
    xml_.readEach([&](QStringView element) {
      if (element == QLatin1String("time")) {
        hasTime = true;
        readTime(draft);
      } else if (element == QLatin1String("waveformID")) {
        draft.pick.channel = {xml_.attribute("networkCode"), xml_.attribute("stationCode"),
                              xml_.attribute("locationCode"), xml_.attribute("channelCode")};
        return false;
      } else if (element == QLatin1String("phaseHint")) {
        draft.pick.phase = xml_.elementText();
      } else if (element == QLatin1String("onset")) {
        draft.takeOnset(xml_.elementText());
      } else if (element == QLatin1String("polarity")) {
        draft.takePolarity(xml_.elementText());
      } else if (element == QLatin1String("evaluationMode")) {
        draft.takeMode(xml_.elementText());
      } else if (element == QLatin1String("comment") && draft.pick.comment.isEmpty()) {
        xml_.readChildren("text", [&] { draft.pick.comment = xml_.elementText(); });
      } else {
        return false;
      }
      return true;
    });
    if (!hasTime) draft.takeTime(QString());
    return draft;
  }

  void readTime(PickDraft& draft) {
    QString time;
    QString both;
    QString lower;
    QString upper;
    xml_.readEach([&](QStringView element) {
      if (element == QLatin1String("value")) {
        time = xml_.elementText();
      } else if (element == QLatin1String("uncertainty")) {
        both = xml_.elementText();
      } else if (element == QLatin1String("lowerUncertainty")) {
        lower = xml_.elementText();
      } else if (element == QLatin1String("upperUncertainty")) {
        upper = xml_.elementText();
      } else {
        return false;
      }
      return true;
    });
    draft.takeTime(time);
    draft.takeUncertainty(lower.isEmpty() ? both : lower, &Pick::lowerSeconds);
    draft.takeUncertainty(upper.isEmpty() ? both : upper, &Pick::upperSeconds);
  }

  XmlElements xml_;
  QString name_;
  PickList picks_;
};

} // namespace

Result<PickFile> readQuakeMlPicks(QByteArrayView text, const QString& name) {
  return QuakeMlPickParser(text, name).run();
}

} // namespace xov
