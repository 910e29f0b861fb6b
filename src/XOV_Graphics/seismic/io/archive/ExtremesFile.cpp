#include "XOV_Graphics/seismic/io/archive/ExtremesFile.h"

#include "XOV_Graphics/base/SampleIndex.h"
#include "XOV_Graphics/seismic/io/mseed/Crc32c.h"

#include <QtEndian>

#include <bit>
#include <cmath>
#include <cstring>
#include <limits>
#include <type_traits>

namespace xov {

namespace {

constexpr char kLetters[] = {'X', 'O', 'V', 'I', 'N', 'D', 'E', 'X'};
constexpr std::uint32_t kVersion = 1;
constexpr qsizetype kSumOffset = 12;
constexpr qsizetype kSummedFrom = 16;
constexpr qsizetype kIdentityBytes = 65536;
constexpr qsizetype kHeaderWords = 110; // floats and integers before the texts
constexpr qsizetype kWordBytes = 4;
constexpr std::int64_t kMostSamples = std::numeric_limits<int>::max();

template <typename Number>
using BitsOf = std::conditional_t<sizeof(Number) == sizeof(std::uint64_t), std::uint64_t, std::uint32_t>;

/// Turns the numbers of a header or footer into those of this format, or back.
template <int Size>
void convert(char* numbers, qsizetype count) {
  if constexpr (std::endian::native != std::endian::little) qbswap<Size>(numbers, count, numbers);
}

class Writer {
public:
  template <typename Number>
  void add(Number value) {
    const auto bits = qToLittleEndian(std::bit_cast<BitsOf<Number>>(value));
    bytes_.append(reinterpret_cast<const char*>(&bits), sizeof bits);
  }
  void add(const QByteArray& text) {
    add(std::uint32_t(text.size()));
    bytes_.append(text);
  }
  void add(const ArchivedTrace& trace) {
    const qsizetype at = bytes_.size();
    bytes_.append(reinterpret_cast<const char*>(&trace.header), sizeof trace.header);
    convert<kWordBytes>(bytes_.data() + at, kHeaderWords);
    bytes_.append(reinterpret_cast<const char*>(&trace.precise), sizeof trace.precise);
    convert<sizeof(double)>(bytes_.data() + at + qsizetype(sizeof trace.header),
                            sizeof trace.precise / sizeof(double));
    add(std::int64_t(trace.places.size()));
    add(trace.sum.sum);
    add(trace.sum.count);
    for (const SamplePlace& place : trace.places) {
      add(place.offset);
      add(place.count);
    }
    for (std::size_t k = 0; k < trace.lowest.size(); ++k) {
      add(trace.lowest[k]);
      add(trace.highest[k]);
    }
  }

  QByteArray take() {
    const std::uint32_t sum = qToLittleEndian(crc32c(QByteArrayView(bytes_).sliced(kSummedFrom)));
    std::memcpy(bytes_.data() + kSumOffset, &sum, sizeof sum);
    return std::move(bytes_);
  }

private:
  QByteArray bytes_{kLetters, sizeof kLetters};
};

/// What is left of the bytes to read. Numbers beyond the end are 0, and from then on it is broken.
class Reader {
public:
  explicit Reader(QByteArrayView bytes) : rest_(bytes) {}

  bool isBroken() const { return isBroken_; }
  qsizetype left() const { return rest_.size(); }

  template <typename Number>
  Number take() {
    BitsOf<Number> bits = 0;
    const QByteArrayView some = takeBytes(sizeof bits);
    if (!some.isEmpty()) std::memcpy(&bits, some.data(), sizeof bits);
    return std::bit_cast<Number>(qFromLittleEndian(bits));
  }
  QByteArrayView takeBytes(qsizetype count) {
    if (count < 0 || count > rest_.size()) {
      isBroken_ = true;
      return {};
    }
    const QByteArrayView some = rest_.first(count);
    rest_ = rest_.sliced(count);
    return some;
  }
  /// As many as `Item` of that size may follow.
  std::int64_t takeCount(std::int64_t wanted, qsizetype itemBytes) {
    if (wanted >= 0 && wanted <= rest_.size() / itemBytes) return wanted;
    isBroken_ = true;
    return 0;
  }

private:
  QByteArrayView rest_;
  bool isBroken_ = false;
};

template <typename Block, int wordBytes>
void takeBlock(Reader& reader, Block& block, qsizetype words) {
  const QByteArrayView bytes = reader.takeBytes(sizeof block);
  if (bytes.isEmpty()) return;
  std::memcpy(&block, bytes.data(), sizeof block);
  convert<wordBytes>(reinterpret_cast<char*>(&block), words);
}

/// Whether places and their samples lie in a file of that size: a record has no more samples than bits.
bool fits(const SamplePlace& place, SampleStorage storage, std::int64_t size) {
  constexpr std::int64_t kBitsAByte = 8;
  if (place.offset < 0 || place.offset >= size || place.count < 1) return false;
  const std::int64_t room = size - place.offset;
  return storage == SampleStorage::MiniSeed ? (place.count - 1) / kBitsAByte < room
                                            : place.count <= room / std::int64_t(sizeof(float));
}

bool isAnExtreme(float low, float high) {
  return (std::isnan(low) && std::isnan(high)) || (std::isfinite(low) && std::isfinite(high) && low <= high);
}

bool takeTrace(Reader& reader, SampleStorage storage, std::int64_t fileSize, ArchivedTrace& trace) {
  takeBlock<SacHeader, kWordBytes>(reader, trace.header, kHeaderWords);
  takeBlock<SacFooter, sizeof(double)>(reader, trace.precise, sizeof trace.precise / sizeof(double));
  const auto wanted = reader.take<std::int64_t>();
  trace.sum.sum = reader.take<double>();
  trace.sum.count = reader.take<std::int64_t>();
  trace.places.resize(std::size_t(reader.takeCount(wanted, sizeof(SamplePlace))));
  for (SamplePlace& place : trace.places) {
    place.offset = reader.take<std::int64_t>();
    place.count = reader.take<std::int64_t>();
    if (!fits(place, storage, fileSize) || place.count > kMostSamples - trace.sampleCount) return false;
    trace.sampleCount += place.count;
  }
  const bool hasSum = std::isfinite(trace.sum.sum) && trace.sum.count >= 0 && trace.sum.count <= trace.sampleCount;
  const std::int64_t blocks = reader.takeCount(trace.sampleCount / SampleIndex::kBlock, 2 * sizeof(float));
  if (reader.isBroken() || !hasSum || trace.sampleCount < 1) return false;
  for (std::int64_t k = 0; k < blocks; ++k) {
    trace.lowest.push_back(reader.take<float>());
    trace.highest.push_back(reader.take<float>());
    if (!isAnExtreme(trace.lowest.back(), trace.highest.back())) return false;
  }
  return true;
}

Error damaged() { return {QStringLiteral("the index is damaged")}; }

} // namespace

ArchiveIdentity identityOf(QIODevice& device, std::int64_t modifiedMs) {
  ArchiveIdentity identity{device.size(), modifiedMs, 0};
  device.seek(0);
  identity.beginSum = crc32c(device.read(kIdentityBytes));
  device.seek(0);
  return identity;
}

QByteArray extremesFileBytes(const ArchiveContents& contents, const ArchiveIdentity& identity) {
  Writer writer;
  writer.add(kVersion);
  writer.add(std::uint32_t(0)); // the sum, in the end
  writer.add(identity.size);
  writer.add(identity.modifiedMs);
  writer.add(identity.beginSum);
  writer.add(std::uint32_t(contents.storage));
  writer.add(std::uint32_t(contents.notes.size()));
  for (const QString& note : contents.notes)
    writer.add(note.toUtf8());
  writer.add(std::uint32_t(contents.traces.size()));
  for (const ArchivedTrace& trace : contents.traces)
    writer.add(trace);
  return writer.take();
}

Result<ArchiveContents> parseExtremesFile(QByteArrayView bytes, const ArchiveIdentity& identity) {
  Reader reader(bytes);
  if (reader.takeBytes(sizeof kLetters) != QByteArrayView(kLetters, sizeof kLetters)) return damaged();
  if (const auto version = reader.take<std::uint32_t>(); version != kVersion)
    return Error{QStringLiteral("the index is of version %1, expected %2").arg(version).arg(kVersion)};
  const auto sum = reader.take<std::uint32_t>();
  if (reader.isBroken() || crc32c(bytes.sliced(kSummedFrom)) != sum) return damaged();
  ArchiveIdentity found;
  found.size = reader.take<std::int64_t>();
  found.modifiedMs = reader.take<std::int64_t>();
  found.beginSum = reader.take<std::uint32_t>();
  if (!(found == identity)) return Error{QStringLiteral("the file has changed since its index was made")};
  ArchiveContents contents;
  const auto storage = reader.take<std::uint32_t>();
  if (storage > std::uint32_t(SampleStorage::BigEndianSac)) return damaged();
  contents.storage = SampleStorage(storage);
  const std::int64_t notes = reader.takeCount(reader.take<std::uint32_t>(), sizeof(std::uint32_t));
  for (std::int64_t i = 0; i < notes; ++i)
    contents.notes.append(QString::fromUtf8(reader.takeBytes(reader.take<std::uint32_t>())));
  const std::int64_t traces = reader.takeCount(reader.take<std::uint32_t>(), sizeof(SacHeader));
  for (std::int64_t i = 0; i < traces && !reader.isBroken(); ++i) {
    if (!takeTrace(reader, contents.storage, identity.size, contents.traces.emplace_back())) return damaged();
  }
  if (reader.isBroken() || reader.left() > 0) return damaged();
  return contents;
}

} // namespace xov
