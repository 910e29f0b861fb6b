#include "XOV_Graphics/seismic/io/picks/SacPicks.h"

#include "XOV_Graphics/base/Guarded.h"
#include "XOV_Graphics/base/InputFile.h"
#include "XOV_Graphics/base/WholeFile.h"
#include "XOV_Graphics/seismic/SacSeismogram.h"
#include "XOV_Graphics/seismic/StationInventory.h"
#include "XOV_Graphics/seismic/io/sac/SacAlphanumeric.h"
#include "XOV_Graphics/seismic/io/sac/SacBinary.h"
#include "XOV_Graphics/seismic/picks/SacPickPlaces.h"

#include <QBuffer>
#include <QtEndian>

#include <cstring>

namespace xov {

namespace {

constexpr qint64 kLargestSacFile = qint64(4) << 30;
constexpr qint64 kHeadLength = 128;

/// Puts a number into bytes of that order.
template <typename Word, typename Number>
void putWord(char* place, Number number, QSysInfo::Endian order) {
  Word word;
  std::memcpy(&word, &number, sizeof(word));
  if (order != QSysInfo::ByteOrder) word = qbswap(word);
  std::memcpy(place, &word, sizeof(word));
}

/// Where a member lies in the bytes of a header or footer.
template <typename Block, typename Member>
qsizetype offsetOf(const Block& block, Member Block::*member) {
  return reinterpret_cast<const char*>(&(block.*member)) - reinterpret_cast<const char*>(&block);
}

void patchPicks(QByteArray& bytes, const SacLocation& file, const SacHeader& header, const SacFooter& footer) {
  const qsizetype footerStart = qsizetype(sizeof(SacHeader)) + qsizetype(file.header.npts) * qsizetype(sizeof(float));
  for (const SacPickFields& place : kSacPickFields) {
    char* const head = bytes.data();
    putWord<quint32>(head + offsetOf(header, place.time), header.*place.time, file.order);
    const SacText<8>& label = header.*place.label;
    std::memcpy(head + offsetOf(header, place.label), label.bytes, sizeof(label.bytes));
    if (file.footer)
      putWord<quint64>(head + footerStart + offsetOf(footer, place.precise), footer.*place.precise, file.order);
  }
}

Result<QStringList> copyWithPicks(const QString& source, const QString& target, const PickArray& picks) {
  Result<QByteArray> read = readWholeFile(source, kLargestSacFile);
  if (!read) return Error{read.error()};
  QByteArray bytes = std::move(read).value();
  if (isSacText(bytes.first(std::min<qsizetype>(bytes.size(), kHeadLength))))
    return Error{source + ": found the alphanumeric form, expected a binary SAC file to write picks into"};
  QBuffer buffer(&bytes);
  buffer.open(QIODevice::ReadOnly);
  const Result<SacLocation> file = locateSacBinary(buffer, source);
  if (!file) return Error{file.error()};
  buffer.close();

  const SacSeismogram record(file->header, {}, source);
  const ChannelCodes channel = channelCodesOf(record);
  std::vector<const Pick*> own;
  for (const Pick& pick : picks)
    if (isPickOf(pick, channel)) own.push_back(&pick);
  SacHeader header = file->header;
  const QDateTime reference = referenceTime(header);
  if (!own.empty() && !reference.isValid())
    return Error{source + ": found no reference time, expected one to count picks from"};
  const std::vector<PlacedPick> placed = placesInHeader(own, header);
  SacFooter precise = footerFromHeader(header);
  clearPicks(header, precise);
  for (const PlacedPick& pick : placed)
    setPick(header, precise, pick, secondsFrom(reference, pick.pick->time));
  patchPicks(bytes, *file, header, precise);

  QString error;
  if (!writeFileAtomically(target, bytes, &error)) return Error{error};
  if (placed.size() == own.size()) return QStringList();
  return QStringList{QStringLiteral("%1: %2 picks of %3 have no room in A, F and T0 to T9")
                         .arg(target)
                         .arg(own.size() - placed.size())
                         .arg(own.size())};
}

} // namespace

Result<QStringList> writeSacPicks(const QString& source, const QString& target, const PickArray& picks) noexcept {
  return guarded(source, [&] { return copyWithPicks(source, target, picks); });
}

} // namespace xov
