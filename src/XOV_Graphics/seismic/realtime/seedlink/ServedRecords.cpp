#include "XOV_Graphics/seismic/realtime/seedlink/ServedRecords.h"

#include "XOV_Graphics/base/InputFile.h"
#include "XOV_Graphics/base/TimeText.h"
#include "XOV_Graphics/seismic/io/mseed/MiniSeedIndex.h"
#include "XOV_Graphics/seismic/io/mseed/MiniSeedNotes.h"
#include "XOV_Graphics/seismic/realtime/seedlink/SeedLinkPacket.h"
#include "XOV_Graphics/seismic/realtime/seedlink/SeedLinkStations.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QXmlStreamWriter>
#include <QtEndian>

#include <algorithm>
#include <map>

namespace xov {

namespace {

constexpr double kMicrosecondsPerSecond = 1e6;
constexpr double kLongestRecordUs = 1e17; // three thousand years
constexpr std::int64_t kMicrosecondsPerMillisecond = 1000;
constexpr char kSoftware[] = "XOV Graphics";

// A record of text, by byte: see MiniSeedRecord.h.
constexpr char kTextHeader[] = "000001D INFO   INFSL";
constexpr qsizetype kYearByte = 20;
constexpr qsizetype kDayByte = 22;
constexpr qsizetype kCountByte = 30;
constexpr qsizetype kBlocketteCountByte = 39;
constexpr qsizetype kDataOffsetByte = 44;
constexpr qsizetype kChainByte = 46;
constexpr qsizetype kFormatBlocketteByte = kMiniSeedHeaderBytes;
constexpr quint16 kFormatBlockette = 1000;
constexpr qsizetype kTextByte = 64;
constexpr quint16 kYear = 2000;
constexpr char kLengthExponent = 9;

QString timeText(std::int64_t us) {
  return utcText(QDateTime::fromMSecsSinceEpoch(us / kMicrosecondsPerMillisecond, Qt::UTC));
}

struct Times {
  std::int64_t firstUs = 0;
  std::int64_t lastUs = 0;
  char format = '2';
};

struct Station {
  std::size_t firstSequence = 0;
  std::size_t lastSequence = 0;
  std::map<std::pair<QByteArray, QByteArray>, Times> streams; // by location and channel
};

std::map<QByteArray, Station> stationsOf(const std::vector<ServedRecord>& records, std::size_t count) {
  std::map<QByteArray, Station> stations;
  for (std::size_t i = 0; i < std::min(count, records.size()); ++i) {
    const ServedRecord& record = records[i];
    Station& station = stations.try_emplace(record.station, Station{i + 1, i + 1, {}}).first->second;
    station.lastSequence = i + 1;
    const Times times{record.startUs, record.endUs, record.format};
    Times& known = station.streams.try_emplace({record.location, record.channel}, times).first->second;
    known.firstUs = std::min(known.firstUs, times.firstUs);
    known.lastUs = std::max(known.lastUs, times.lastUs);
  }
  return stations;
}

QString sequence3(std::size_t sequence) {
  return QStringLiteral("%1").arg(sequence, 6, 16, QLatin1Char('0')).toUpper();
}

} // namespace

Result<std::vector<ServedRecord>> readServedRecords(const QString& path) {
  CheckedFile file(path);
  if (const Status status = openForReading(file); !status) return Error{status.error()};
  FileWindow window(file);
  std::vector<ServedRecord> records;
  const MiniSeedIndex index =
      indexMiniSeed(window, {}, [&](const IndexedRecord& record, QByteArrayView bytes, const MiniSeedIndex& so_far) {
        const ChannelCodes& codes = so_far.channels[record.channel];
        const double lengthUs = record.span.sampleCount / record.span.rateHz * kMicrosecondsPerSecond;
        records.push_back({(codes[0] + '_' + codes[1]).toLatin1(), codes[2].toLatin1(), codes[3].toLatin1(),
                           bytes.startsWith("MS") ? '3' : '2', record.span.startUs,
                           record.span.startUs + std::int64_t(std::min(lengthUs, kLongestRecordUs)),
                           bytes.first(record.format.length).toByteArray()});
        return true;
      });
  if (const Status status = indexStatus(index, file, path); !status) return Error{status.error()};
  if (records.empty()) return Error{path + QStringLiteral(": found no miniSEED records with samples")};
  return records;
}

std::vector<QByteArray> textRecords(const QByteArray& text) {
  constexpr qsizetype kRoom = kSeedLink3RecordBytes - kTextByte;
  std::vector<QByteArray> records;
  for (qsizetype at = 0; at < text.size() || records.empty(); at += kRoom) {
    const QByteArray part = text.mid(at, kRoom);
    QByteArray record(kSeedLink3RecordBytes, '\0');
    record.replace(0, qsizetype(sizeof kTextHeader) - 1, kTextHeader);
    const auto put = [&](qsizetype byte, quint16 number) { qToBigEndian(number, record.data() + byte); };
    put(kYearByte, kYear);
    put(kDayByte, 1);
    put(kCountByte, quint16(part.size()));
    record[kBlocketteCountByte] = 1;
    put(kDataOffsetByte, quint16(kTextByte));
    put(kChainByte, quint16(kFormatBlocketteByte));
    put(kFormatBlocketteByte, kFormatBlockette);
    record[kFormatBlocketteByte + 5] = 1; // big-endian
    record[kFormatBlocketteByte + 6] = kLengthExponent;
    record.replace(kTextByte, part.size(), part);
    records.push_back(record);
  }
  return records;
}

QByteArray recordText(QByteArrayView record) {
  const MiniSeedFinding finding = findMiniSeedRecord(record, record.size());
  if (finding.kind != MiniSeedFinding::Kind::Record || finding.record.format.encoding != MiniSeedEncoding::Text)
    return {};
  const qsizetype from = std::min<qsizetype>(finding.record.format.dataOffset, record.size());
  return record.sliced(from, std::min<qsizetype>(finding.record.sampleCount, record.size() - from)).toByteArray();
}

QByteArray streamsAsXml(const std::vector<ServedRecord>& records, std::size_t count) {
  QByteArray text;
  QXmlStreamWriter xml(&text);
  xml.writeStartDocument();
  xml.writeStartElement(QStringLiteral("seedlink"));
  xml.writeAttribute(QStringLiteral("software"), QLatin1String(kSoftware));
  for (const auto& [id, station] : stationsOf(records, count)) {
    const qsizetype underscore = id.indexOf('_');
    xml.writeStartElement(QStringLiteral("station"));
    xml.writeAttribute(QStringLiteral("name"), QString::fromLatin1(id.sliced(underscore + 1)));
    xml.writeAttribute(QStringLiteral("network"), QString::fromLatin1(id.first(underscore)));
    xml.writeAttribute(QStringLiteral("begin_seq"), sequence3(station.firstSequence));
    xml.writeAttribute(QStringLiteral("end_seq"), sequence3(station.lastSequence));
    for (const auto& [codes, times] : station.streams) {
      xml.writeEmptyElement(QStringLiteral("stream"));
      xml.writeAttribute(QStringLiteral("location"), QString::fromLatin1(codes.first));
      xml.writeAttribute(QStringLiteral("seedname"), QString::fromLatin1(codes.second));
      xml.writeAttribute(QStringLiteral("type"), QStringLiteral("D"));
      xml.writeAttribute(QStringLiteral("begin_time"), timeText(times.firstUs));
      xml.writeAttribute(QStringLiteral("end_time"), timeText(times.lastUs));
    }
    xml.writeEndElement();
  }
  xml.writeEndDocument();
  return text;
}

QByteArray streamsAsJson(const std::vector<ServedRecord>& records, std::size_t count) {
  QJsonArray stations;
  for (const auto& [id, station] : stationsOf(records, count)) {
    QJsonArray streams;
    for (const auto& [codes, times] : station.streams) {
      streams.append(QJsonObject{{"id", QString::fromLatin1(seedLink4StreamId(codes.first, codes.second))},
                                 {"format", QString(QLatin1Char(times.format))},
                                 {"subformat", "D"},
                                 {"start_time", timeText(times.firstUs)},
                                 {"end_time", timeText(times.lastUs)}});
    }
    stations.append(QJsonObject{{"id", QString::fromLatin1(id)},
                                {"start_seq", qint64(station.firstSequence)},
                                {"end_seq", qint64(station.lastSequence)},
                                {"stream", streams}});
  }
  return QJsonDocument(QJsonObject{{"software", kSoftware}, {"station", stations}}).toJson(QJsonDocument::Compact);
}

} // namespace xov
