#include "XOV_Graphics/seismic/io/mseed/MiniSeedSearch.h"

#include "XOV_Graphics/seismic/io/mseed/MiniSeed3Record.h"

namespace xov {

namespace {

constexpr qsizetype kShortestRecord = 128; // of miniSEED 2
// Beginnings of records within one whose check values are tried: bytes that are made up to hold many cost no more.
constexpr int kMostTried = 16;

qsizetype findVersion2Inside(QByteArrayView bytes) {
  for (qsizetype at = kShortestRecord; at + kMiniSeedHeaderBytes <= bytes.size(); at += kShortestRecord) {
    if (!beginsMiniSeedRecord(bytes.sliced(at))) continue; // as nearly always
    // Its own length does not matter: it may be as wrong as that of the record around it.
    if (findMiniSeedRecord(bytes.sliced(at), kLongestMiniSeedRecord + 1).kind == MiniSeedFinding::Kind::Record)
      return at;
  }
  return 0;
}

// Samples may look like a header by chance, but not with the right check value.
qsizetype findVersion3Inside(QByteArrayView bytes, qsizetype length) {
  int tried = 0;
  for (qsizetype at = bytes.indexOf("MS\x03", kMiniSeed3HeaderBytes); at > 0 && at < length && tried < kMostTried;
       at = bytes.indexOf("MS\x03", at + 1)) {
    const QByteArrayView rest = bytes.sliced(at);
    const MiniSeedFinding finding = findMiniSeed3Record(rest, rest.size());
    if (finding.record.format.length == 0) continue;
    ++tried;
    if (checkValueProblem(rest.first(finding.record.format.length)).isEmpty()) return at;
  }
  return 0;
}

} // namespace

MiniSeedFinding findAnyRecord(QByteArrayView bytes, qint64 remaining) {
  MiniSeedFinding finding = findMiniSeedRecord(bytes, remaining);
  return finding.kind == MiniSeedFinding::Kind::Nothing ? findMiniSeed3Record(bytes, remaining) : finding;
}

qsizetype findMiniSeedStart(QByteArrayView bytes, qsizetype from) {
  for (qsizetype at = from; at + kMiniSeed3HeaderBytes <= bytes.size(); ++at) {
    if (beginsMiniSeedRecord(bytes.sliced(at)) || beginsMiniSeed3Record(bytes.sliced(at))) return at;
  }
  return bytes.size();
}

qsizetype findRecordInside(const MiniSeedRecord& record, QByteArrayView bytes) {
  const qsizetype length = record.format.length;
  return record.version == 3 ? findVersion3Inside(bytes, length) : findVersion2Inside(bytes.first(length));
}

} // namespace xov
