#pragma once

#include "XOV_Graphics/seismic/Hypocentre.h"

#include <QByteArray>
#include <QStringList>

namespace xov::test {

/// A catalogue in FDSN's text with an event a word: "a:07:5.5" is event "a" at 12:07:00 with Mw 5.5.
inline QByteArray eventText(const QByteArray& events) {
  QByteArray text = "#EventID|Time|Latitude|Longitude|Depth/km|Author|Catalog|Contributor|ContributorID|MagType|"
                    "Magnitude|MagAuthor|EventLocationName\n";
  for (const QByteArray& event : events.split(' ')) {
    if (event.isEmpty()) continue;
    const QList<QByteArray> parts = event.split(':');
    text += parts[0] + "|2020-09-13T12:" + parts[1] + ":00|1|2|10|||||Mw|" + parts[2] + "||SOMEWHERE\n";
  }
  return text;
}

/// Events the other way round: "a:07:5.5 b:09:4.0".
template <typename Events>
QString eventWords(const Events& events) {
  QStringList words;
  for (const auto& event : events) {
    const auto& values = dynamic_cast<const Hypocentre&>(*event).values();
    words.append(values.id + values.originTime.toString(QStringLiteral(":mm:")) +
                 QString::number(double(values.Mw), 'f', 1));
  }
  return words.join(' ');
}

} // namespace xov::test
