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

constexpr qsizetype kNumbersALine = 5;
constexpr qsizetype kNumberColumns = 15;

/// A line of numbers of the alphanumeric form with one of them taken from another line; the others stay as they are
/// written, in columns or between blanks.
QByteArray withNumberOf(const QByteArray& line, const QByteArray& other, qsizetype place) {
  QList<QByteArray> numbers = line.simplified().split(' ');
  if (numbers.size() != kNumbersALine) {
    numbers.clear();
    for (qsizetype i = 0; i < kNumbersALine; ++i)
      numbers.append(line.mid(i * kNumberColumns, kNumberColumns).trimmed());
  }
  numbers[place] = other.mid(place * kNumberColumns, kNumberColumns).trimmed();
  QByteArray made;
  for (const QByteArray& number : numbers)
    made += number.size() < kNumberColumns ? number.rightJustified(kNumberColumns) : ' ' + number;
  return made;
}

/// The line of the alphanumeric form that a text of the header stands on, counted from 0: behind 14 lines of numbers
/// and 8 of integers one with the station's code and the event's name, which takes two places, then three a line.
qsizetype lineOfText(qsizetype offset) {
  constexpr qsizetype kTextStart = 110 * 4;
  constexpr qsizetype kFirstLine = 22;
  const qsizetype place = (offset - kTextStart) / 8;
  return place < 3 ? kFirstLine : kFirstLine + 1 + (place - 3) / 3;
}

/// The lines on which picks stand are written anew, with the ends that lines have.
Status patchTextPicks(QByteArray& bytes, const SacHeader& header, const QString& source) {
  QBuffer written;
  written.open(QIODevice::WriteOnly);
  const Status status = writeSacAlphanumeric(written, header, {}, source);
  if (!status) return status;
  const QList<QByteArray> fresh = written.data().split('\n');
  QList<QByteArray> lines = bytes.split('\n');
  const auto put = [&lines](qsizetype line, const QByteArray& text) {
    lines[line] = text + (lines[line].endsWith('\r') ? "\r" : "");
  };
  for (const SacPickFields& place : kSacPickFields) {
    const qsizetype number = offsetOf(header, place.time) / qsizetype(sizeof(float));
    const qsizetype line = number / kNumbersALine;
    put(line, withNumberOf(lines[line], fresh[line], number % kNumbersALine));
    put(lineOfText(offsetOf(header, place.label)), fresh[lineOfText(offsetOf(header, place.label))]);
  }
  bytes = lines.join('\n');
  return {};
}

struct PickedHeader {
  SacHeader header;
  SacFooter precise;
  QStringList notes;
};

/// The header with the picks of its channel in place of those that it has.
Result<PickedHeader> picked(const SacHeader& old, const QString& source, const QString& target,
                            const PickArray& picks) {
  const ChannelCodes channel = channelCodesOf(SacSeismogram(old, {}, source));
  std::vector<const Pick*> own;
  for (const Pick& pick : picks)
    if (isPickOf(pick, channel)) own.push_back(&pick);
  PickedHeader made{old, footerFromHeader(old), {}};
  const QDateTime reference = referenceTime(old);
  if (!own.empty() && !reference.isValid())
    return Error{source + ": found no reference time, expected one to count picks from"};
  const std::vector<PlacedPick> placed = placesInHeader(own, old);
  clearPicks(made.header, made.precise);
  for (const PlacedPick& pick : placed)
    setPick(made.header, made.precise, pick, secondsFrom(reference, pick.pick->time));
  if (placed.size() < own.size())
    made.notes.append(QStringLiteral("%1: %2 picks of %3 have no room in A, F and T0 to T9")
                          .arg(target)
                          .arg(own.size() - placed.size())
                          .arg(own.size()));
  return made;
}

Result<QStringList> patchBinary(QByteArray& bytes, const QString& source, const QString& target,
                                const PickArray& picks) {
  QBuffer buffer(&bytes);
  buffer.open(QIODevice::ReadOnly);
  const Result<SacLocation> file = locateSacBinary(buffer, source);
  if (!file) return Error{file.error()};
  buffer.close();
  const Result<PickedHeader> made = picked(file->header, source, target, picks);
  if (!made) return Error{made.error()};
  patchPicks(bytes, *file, made->header, made->precise);
  return made->notes;
}

Result<QStringList> patchText(QByteArray& bytes, const QString& source, const QString& target,
                              const PickArray& picks) {
  QBuffer buffer(&bytes);
  buffer.open(QIODevice::ReadOnly);
  const auto file = readSacAlphanumeric(buffer, source, source);
  if (!file) return Error{file.error()};
  buffer.close();
  const Result<PickedHeader> made = picked(*(*file)->GetSacHeader(), source, target, picks);
  if (!made) return Error{made.error()};
  const Status status = patchTextPicks(bytes, made->header, source);
  return status ? Result<QStringList>(made->notes) : Result<QStringList>(Error{status.error()});
}

Result<QStringList> copyWithPicks(const QString& source, const QString& target, const PickArray& picks) {
  Result<QByteArray> read = readWholeFile(source, kLargestSacFile);
  if (!read) return Error{read.error()};
  QByteArray bytes = std::move(read).value();
  const bool isText = isSacText(bytes.first(std::min<qsizetype>(bytes.size(), kHeadLength)));
  const Result<QStringList> notes =
      isText ? patchText(bytes, source, target, picks) : patchBinary(bytes, source, target, picks);
  if (!notes) return notes;
  QString error;
  if (!writeFileAtomically(target, bytes, &error)) return Error{error};
  return notes;
}

} // namespace

Result<QStringList> writeSacPicks(const QString& source, const QString& target, const PickArray& picks) noexcept {
  return guarded(source, [&] { return copyWithPicks(source, target, picks); });
}

} // namespace xov
