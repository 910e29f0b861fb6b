// Whatever a server sends: the packets are the same however the bytes arrive, none is larger than allowed, and what
// is wrong is said in one line. Whatever a client sends, a server answers in lines or packets.

#include "../Claims.h"
#include "XOV_Graphics/seismic/realtime/seedlink/LiveRecord.h"
#include "XOV_Graphics/seismic/realtime/seedlink/SeedLinkHandshake.h"
#include "XOV_Graphics/seismic/realtime/seedlink/SeedLinkPacket.h"
#include "XOV_Graphics/seismic/realtime/seedlink/SeedLinkSession.h"
#include "XOV_Graphics/seismic/realtime/seedlink/SeedLinkStreams.h"

#include <cstdint>

using namespace xov;

namespace {

void requireOneLineText(const QString& text) {
  fuzz::require(!text.isEmpty() && text.size() < 600, "an error is a short line", text);
}

// The packets' payloads and lines, and the error, one behind the other.
QByteArray walk(QByteArrayView bytes, qsizetype atOnce, LiveRecordReader* reader) {
  SeedLinkInput input;
  QByteArray all;
  for (qsizetype at = 0; at < bytes.size(); at += atOnce) {
    input.append(bytes.sliced(at, std::min(atOnce, bytes.size() - at)));
    for (;;) {
      const Result<std::optional<SeedLinkInput::Item>> item = input.takeItem();
      if (!item) {
        requireOneLineText(item.error());
        return all + "!";
      }
      if (!*item) break;
      const SeedLinkInput::Item& found = **item;
      all += found.line + '|';
      if (!found.packet) return all;
      fuzz::require(found.packet->payload.size() <= kLargestSeedLinkPayload, "a payload is bounded");
      all += found.packet->payload;
      if (reader == nullptr) continue;
      const Result<LiveRecord> record = reader->read(found.packet->payload);
      if (!record) requireOneLineText(record.error());
      if (record && !record->samples.empty()) fuzz::require(record->rateHz > 0, "samples have a rate");
      (void)recordText(found.packet->payload);
    }
  }
  return all;
}

void shakeHands(QByteArrayView bytes) {
  SeedLinkRequest request;
  request.stations = parseSeedLinkStations(QStringLiteral("GE_WLF:BHZ,GR_*:!LOG")).value();
  request.places["GR_A"] = {7, 1600000000000000};
  SeedLinkHandshake handshake(request);
  SeedLinkInput input;
  input.append(bytes);
  while (!handshake.isDone()) {
    const Result<std::optional<QByteArray>> line = input.takeLine();
    if (!line || !*line) return;
    const Result<QByteArray> next = handshake.takeLine(**line);
    if (!next) return requireOneLineText(next.error());
  }
}

void serve(QByteArrayView bytes) {
  const SeedLinkServerSettings settings;
  std::vector<ServedRecord> records(2);
  records[0] = {"GE_WLF", "00", "BHZ", '2', 0, 1000000, QByteArray(512, 'r')};
  records[1] = {"GR_A", "", "HHZ", '3', 500000, 1500000, QByteArray(100, 'r')};
  SeedLinkSession session(settings);
  SeedLinkInput input;
  input.append(bytes);
  for (;;) {
    const Result<std::optional<QByteArray>> line = input.takeLine();
    if (!line || !*line || session.isOver()) return;
    const QByteArray answer = session.answer(**line, records, records.size());
    fuzz::require(answer.isEmpty() || answer.endsWith('\n') || answer.startsWith("S"),
                  "an answer is a line or packet");
    (void)session.packets(records, records.size(), 1 << 16);
  }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const QByteArrayView bytes(reinterpret_cast<const char*>(data), qsizetype(size));
  LiveRecordReader reader;
  const QByteArray whole = walk(bytes, std::max<qsizetype>(bytes.size(), 1), &reader);
  fuzz::require(whole == walk(bytes, 7, nullptr), "packets do not depend on how they arrive");
  shakeHands(bytes);
  serve(bytes);
  const QByteArray text = bytes.toByteArray();
  if (const auto streams = parseStreamsXml(text); !streams) requireOneLineText(streams.error());
  if (const auto streams = parseStreamsJson(text); !streams && !streams.error().isEmpty())
    requireOneLineText(streams.error());
  if (const auto stations = parseSeedLinkStations(QString::fromUtf8(text.left(500))); !stations)
    fuzz::require(!stations.error().isEmpty(), "a wrong list has an error");
  return 0;
}
