#include "XOV_Graphics/seismic/io/sac/SacBinary.h"

#include "XOV_Graphics/base/FiniteSum.h"
#include "XOV_Graphics/base/InputFile.h"
#include "XOV_Graphics/base/LargePages.h"
#include "XOV_Graphics/base/SampleIndex.h"
#include "XOV_Graphics/seismic/io/sac/SacChecks.h"

#include <QtEndian>

#include <array>
#include <cstring>

namespace xov {

namespace {

constexpr qint64 kHeaderBytes = sizeof(SacHeader);
constexpr qint64 kFooterBytes = sizeof(SacFooter);
constexpr qint64 kSampleBytes = sizeof(float);
constexpr qsizetype kWordCount = kSacFloatCount + kSacIntegerCount;
constexpr qsizetype kVersionOffset = offsetof(SacHeader, nvhdr);

static_assert(kWordCount * kSacWordBytes == offsetof(SacHeader, kstnm));

using HeaderBytes = std::array<char, sizeof(SacHeader)>;
using FooterBytes = std::array<char, sizeof(SacFooter)>;

/// Turns words of `Size` bytes in place from one byte order to that of this machine, or back.
template <int Size>
void convert(void* words, qsizetype count, QSysInfo::Endian order) {
  if (order != QSysInfo::ByteOrder) qbswap<Size>(words, count, words);
}

bool isVersion(std::int32_t value) { return value >= kSacOldestVersion && value <= kSacVersion7; }

QString hexText(QByteArrayView bytes) { return QString::fromLatin1(bytes.toByteArray().toHex(' ')); }

/// Reads the header and makes sure that all its claims hold but those on size.
Result<SacHeader> readHeader(QIODevice& device, const QString& name, QSysInfo::Endian& order) {
  HeaderBytes raw;
  const qint64 size = device.size();
  if (size == 0) return Error{name + ": the file is empty, expected a SAC header of 632 bytes"};
  if (size < kHeaderBytes || !readFully(device, raw))
    return sacError(name, "header", QString::number(size) + " bytes", QString::number(kHeaderBytes));
  const std::optional<QSysInfo::Endian> found = sacByteOrder({raw.data(), qsizetype(raw.size())});
  if (!found)
    return sacError(name, sacPlace("nvhdr", std::size_t(kVersionOffset), SacPlaces::Bytes),
                    "bytes " + hexText({raw.data() + kVersionOffset, kSacWordBytes}), "6 or 7 in either byte order");
  order = *found;
  convert<kSacWordBytes>(raw.data(), kWordCount, order);
  SacHeader header;
  std::memcpy(&header, raw.data(), raw.size());
  if (Status status = checkSacHeader(header, name, SacPlaces::Bytes); !status) return Error{status.error()};
  return header;
}

/// Makes sure that the file is as long as its header says.
Status checkSize(const SacHeader& header, qint64 size, const QString& name) {
  const qint64 dataBytes = size - kHeaderBytes;
  if (header.npts > dataBytes / kSampleBytes)
    return Error{name + ": " + sacPlace("npts", offsetof(SacHeader, npts), SacPlaces::Bytes) + ": found " +
                 QString::number(header.npts) + ", but the file holds " + QString::number(dataBytes / kSampleBytes) +
                 " samples"};
  const qint64 footerOffset = kHeaderBytes + header.npts * kSampleBytes;
  if (header.nvhdr == kSacVersion7 && size - footerOffset < kFooterBytes)
    return sacError(name, "footer at byte " + QString::number(footerOffset),
                    QString::number(size - footerOffset) + " bytes", QString::number(kFooterBytes));
  return {};
}

std::optional<SacFooter> readFooter(QIODevice& device, QSysInfo::Endian order) {
  FooterBytes raw;
  if (!readFully(device, raw)) return {};
  convert<sizeof(double)>(raw.data(), qsizetype(raw.size() / sizeof(double)), order);
  SacFooter footer;
  std::memcpy(&footer, raw.data(), raw.size());
  return footer;
}

/// Checks delta and b where they count: in the footer, if it sets them, else in the header.
Status checkTimes(const SacHeader& header, const std::optional<SacFooter>& footer, const QString& name) {
  const double unset = kUndefinedValue;
  const std::size_t footerOffset = std::size_t(kHeaderBytes + header.npts * kSampleBytes);
  double delta = header.delta;
  double b = header.b;
  QString deltaPlace = sacPlace("delta", offsetof(SacHeader, delta), SacPlaces::Bytes);
  QString bPlace = sacPlace("b", offsetof(SacHeader, b), SacPlaces::Bytes);
  if (footer && footer->delta != unset) {
    delta = footer->delta;
    deltaPlace = sacPlace("footer delta", footerOffset + offsetof(SacFooter, delta), SacPlaces::Bytes);
  }
  if (footer && footer->b != unset) {
    b = footer->b;
    bPlace = sacPlace("footer b", footerOffset + offsetof(SacFooter, b), SacPlaces::Bytes);
  }
  return checkSacTimes(delta, deltaPlace, b, bPlace, name);
}

bool writeFully(QIODevice& device, const void* bytes, std::size_t count) {
  return device.write(static_cast<const char*>(bytes), qint64(count)) == qint64(count);
}

bool writeSamples(QIODevice& device, std::span<const float> samples, QSysInfo::Endian order) {
  if (order == QSysInfo::ByteOrder) return writeFully(device, samples.data(), samples.size_bytes());
  constexpr std::size_t kChunk = 16384; // 64 KiB: fits the processor's caches
  std::vector<float> chunk(std::min(kChunk, samples.size()));
  while (!samples.empty()) {
    const std::size_t count = std::min(kChunk, samples.size());
    qbswap<kSampleBytes>(samples.data(), qsizetype(count), chunk.data());
    if (!writeFully(device, chunk.data(), count * sizeof(float))) return false;
    samples = samples.subspan(count);
  }
  return true;
}

} // namespace

std::optional<QSysInfo::Endian> sacByteOrder(QByteArrayView head) {
  if (head.size() < kVersionOffset + kSacWordBytes) return {};
  const char* const version = head.data() + kVersionOffset;
  if (isVersion(qFromLittleEndian<std::int32_t>(version))) return QSysInfo::LittleEndian;
  if (isVersion(qFromBigEndian<std::int32_t>(version))) return QSysInfo::BigEndian;
  return {};
}

namespace {

// What is read together: what there is to find out of it is found while it is in the processor's caches.
constexpr std::size_t kStretch = 1 << 18; // 1 MiB

bool readSamples(QIODevice& device, std::span<float> samples, QSysInfo::Endian order) {
  if (!readFully(device, {reinterpret_cast<char*>(samples.data()), samples.size_bytes()})) return false;
  convert<sizeof(float)>(samples.data(), std::ssize(samples), order);
  return true;
}

/// Samples, and what is known of them.
struct TakenSamples {
  std::vector<float> samples;
  SampleIndex index;
  FiniteSum sum;

  bool take(QIODevice& device, std::size_t count, QSysInfo::Endian order) {
    samples.reserve(count);
    askForLargePages(samples.data(), count * sizeof(float));
    for (std::size_t done = 0; done < count; done = samples.size()) {
      samples.resize(std::min(count, done + kStretch));
      const auto stretch = std::span(samples).subspan(done);
      if (!readSamples(device, stretch, order)) return false;
      index.appended(samples, std::ssize(stretch));
      addFinite(stretch, sum);
    }
    return true;
  }
};

/// Reads header and footer of a file; `takeSamples` deals with what lies between them.
template <typename TakeSamples>
Result<SacLocation> readAroundSamples(QIODevice& device, const QString& name, const TakeSamples& takeSamples) {
  QSysInfo::Endian order = QSysInfo::ByteOrder;
  const Result<SacHeader> header = readHeader(device, name, order);
  if (!header) return Error{header.error()};
  if (Status status = checkSize(*header, device.size(), name); !status) return Error{status.error()};

  bool readable = takeSamples(std::size_t(header->npts), order);
  std::optional<SacFooter> footer;
  if (readable && header->nvhdr == kSacVersion7) {
    footer = readFooter(device, order);
    readable = footer.has_value();
  }
  if (!readable) return Error{name + ": cannot be read: " + device.errorString()};
  if (Status status = checkTimes(*header, footer, name); !status) return Error{status.error()};
  return SacLocation{*header, footer, order, kHeaderBytes};
}

/// The same; `takeSamples` makes the trace's samples of what lies between.
template <typename TakeSamples>
Result<std::shared_ptr<SacSeismogram>> readAround(QIODevice& device, const QString& name, const QString& path,
                                                  TakeSamples takeSamples) {
  TakenSamples taken;
  const Result<SacLocation> found = readAroundSamples(
      device, name, [&](std::size_t count, QSysInfo::Endian order) { return takeSamples(count, order, taken); });
  if (!found) return Error{found.error()};
  return std::make_shared<SacSeismogram>(found->header, std::move(taken.samples), std::move(taken.index), taken.sum,
                                         path, found->footer);
}

} // namespace

Result<std::shared_ptr<SacSeismogram>> readSacBinary(QIODevice& device, const QString& name, const QString& path) {
  return readAround(device, name, path, [&device](std::size_t count, QSysInfo::Endian order, TakenSamples& taken) {
    return taken.take(device, count, order);
  });
}

Result<SacLocation> locateSacBinary(QIODevice& device, const QString& name) {
  return readAroundSamples(device, name, [&device](std::size_t count, QSysInfo::Endian) {
    return device.seek(device.pos() + qint64(count) * kSampleBytes);
  });
}

Result<SeismogramSummary> summarizeSacBinary(QIODevice& device, const QString& name, const QString& path) {
  SeismogramSummary summary;
  const auto sumUp = [&](std::size_t count, QSysInfo::Endian order, TakenSamples&) {
    std::vector<float> stretch(std::min(count, kStretch));
    while (count > 0) {
      stretch.resize(std::min(count, kStretch));
      if (!readSamples(device, stretch, order)) return false;
      summary.samples.add(stretch);
      count -= stretch.size();
    }
    return true;
  };
  const Result<std::shared_ptr<SacSeismogram>> trace = readAround(device, name, path, sumUp);
  if (!trace) return Error{trace.error()};
  summary.record = *trace;
  return summary;
}

QString excessNote(QIODevice& device, const SacHeader& header, const QString& name) {
  const qint64 excess = (device.size() - device.pos()) / kSampleBytes;
  if (excess <= 0) return {};
  return QStringLiteral("%1: %2: found %3, but the file holds %4 samples; the rest is left out")
      .arg(name, sacPlace("npts", offsetof(SacHeader, npts), SacPlaces::Bytes))
      .arg(header.npts)
      .arg(header.npts + excess);
}

Status writeSacBinary(QIODevice& device, const SacHeader& header, std::span<const float> samples,
                      const SacFooter& footer, QSysInfo::Endian order, const QString& name) {
  HeaderBytes headerBytes;
  std::memcpy(headerBytes.data(), &header, headerBytes.size());
  convert<kSacWordBytes>(headerBytes.data(), kWordCount, order);
  FooterBytes footerBytes;
  std::memcpy(footerBytes.data(), &footer, footerBytes.size());
  convert<sizeof(double)>(footerBytes.data(), qsizetype(footerBytes.size() / sizeof(double)), order);

  const bool written = writeFully(device, headerBytes.data(), headerBytes.size()) &&
                       writeSamples(device, samples, order) &&
                       (header.nvhdr != kSacVersion7 || writeFully(device, footerBytes.data(), footerBytes.size()));
  if (!written) return Error{name + ": cannot be written: " + device.errorString()};
  return {};
}

} // namespace xov
