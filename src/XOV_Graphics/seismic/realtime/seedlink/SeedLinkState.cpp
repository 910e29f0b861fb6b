#include "XOV_Graphics/seismic/realtime/seedlink/SeedLinkState.h"

#include "XOV_Graphics/base/InputFile.h"
#include "XOV_Graphics/base/TextLines.h"
#include "XOV_Graphics/base/WholeFile.h"

#include <QFileInfo>

#include <optional>

namespace xov {

namespace {

constexpr qint64 kLargestFile = qint64(16) << 20;

struct Line {
  QByteArray id;
  SeedLinkPlace place;
};

std::optional<Line> parseLine(QByteArrayView text) {
  QByteArrayView rest = text;
  Line line;
  line.id = takeWord(rest).toByteArray();
  bool isSequence = false, isTime = false;
  line.place.sequence = takeWord(rest).toByteArray().toULongLong(&isSequence);
  line.place.timeUs = takeWord(rest).toByteArray().toLongLong(&isTime);
  if (!line.id.contains('_') || !isSequence || !isTime || !rest.isEmpty()) return {};
  return line;
}

} // namespace

Result<SeedLinkPlaces> readSeedLinkState(const QString& path) {
  SeedLinkPlaces places;
  if (!QFileInfo::exists(path)) return places;
  const Result<QByteArray> bytes = readWholeFile(path, kLargestFile);
  if (!bytes) return Error{bytes.error()};
  TextLines lines(*bytes);
  while (const std::optional<QByteArrayView> text = lines.next()) {
    const std::optional<Line> line = parseLine(*text);
    if (!line)
      return Error{QStringLiteral("%1: line %2: expected a station, a sequence number and a time, as 'GE_WLF 4711 "
                                  "1700000000000000'")
                       .arg(path)
                       .arg(lines.number())};
    places[line->id] = line->place;
  }
  return places;
}

Status writeSeedLinkState(const SeedLinkPlaces& places, const QString& path) {
  QByteArray text;
  for (const auto& [id, place] : places)
    text += id + ' ' + QByteArray::number(qulonglong(place.sequence)) + ' ' +
            QByteArray::number(qlonglong(place.timeUs)) + '\n';
  QString error;
  if (!writeFileAtomically(path, text, &error)) return Error{error};
  return {};
}

} // namespace xov
