// Whatever the bytes are, the miniSEED reader gives traces that views can draw, or one line of error. The traces of a
// channel have one time axis and come in time order, a selection gives a part of what all channels give, and a
// summary counts the same samples. Taken as samples, the bytes give what libmseed makes of them.

#include "../Claims.h"
#include "XOV_Graphics/seismic/SacSeismogram.h"
#include "XOV_Graphics/seismic/io/mseed/MiniSeed.h"
#include "XOV_Graphics/seismic/io/mseed/MiniSeedOutline.h"
#include "XOV_Graphics/seismic/io/mseed/MiniSeedReader.h"
#include "XOV_Graphics/seismic/io/mseed/MiniSeedSamples.h"

#include <QBuffer>

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdint>

using namespace xov;
using fuzz::require;

namespace {

void checkTrace(SeismogramRecord& trace) {
  require(trace.npts() > 0, "a trace has samples");
  require(trace.delta() > 0 && std::isfinite(trace.delta()), "the interval is finite and above zero");
  require(std::isfinite(trace.b()) && std::isfinite(trace.e()) && trace.e() >= trace.b(),
          "a trace ends after it begins");
  require(trace.b() >= 0, "no trace begins before the reference time");
  float sum = 0;
  for (int i = 0; i < trace.npts(); ++i)
    sum += trace.GetSacSeis()[i];
  (void)sum;
  trace.ComputeExtrema();
  require(trace.smin() <= trace.smax(), "the extremes are in order");
  require(trace.mySeisReferenceTime()->nsDate().isValid(), "the reference time is known");
  const bool isNamed = !(trace.knetwk() + trace.kstnm() + trace.khole() + trace.kcmpnm()).isEmpty();
  require(!isNamed || trace.labelString().count(QLatin1Char('.')) >= 3, "the label has the four codes");
}

// The header of a trace has room for eight letters of a code: what has as many may be longer in the file.
bool mayBeCut(const SeismogramRecord& trace) {
  constexpr qsizetype room = 8;
  return std::max({trace.knetwk().size(), trace.kstnm().size(), trace.khole().size(), trace.kcmpnm().size()}) >= room;
}

bool isSameChannel(const SeismogramRecord& left, const SeismogramRecord& right) {
  return !mayBeCut(left) && left.knetwk() == right.knetwk() && left.kstnm() == right.kstnm() &&
         left.khole() == right.khole() && left.kcmpnm() == right.kcmpnm();
}

// What becomes of samples: their bits, with one value for all that are no numbers, and what is said of them.
struct Outcome {
  std::vector<std::uint32_t> bits;
  QString problem;
  QString doubt;
  bool operator==(const Outcome&) const = default;
};

using Decode = Status (MiniSeedSamples::*)(const SampleFormat&, QByteArrayView, std::span<float>, QString&);

Outcome outcome(Decode decode, const SampleFormat& format, QByteArrayView bytes, std::size_t count) {
  MiniSeedSamples decoder;
  Outcome found;
  std::vector<float> samples(count);
  const Status status = (decoder.*decode)(format, bytes, samples, found.doubt);
  found.problem = status.error();
  if (!status) return found;
  for (const float sample : samples)
    found.bits.push_back(std::isnan(sample) ? 0x7FC00000U : std::bit_cast<std::uint32_t>(sample));
  return found;
}

// The first four bytes choose the encoding, the byte order and the number of samples; the others hold the samples.
void checkDecoding(QByteArrayView bytes) {
  using enum MiniSeedEncoding;
  constexpr MiniSeedEncoding encodings[] = {Int16, Int32, Float32, Float64, Steim1, Steim2};
  constexpr qsizetype chosenBytes = 4;
  constexpr qsizetype least = 64;
  if (bytes.size() < chosenBytes + least) return;
  const auto choice = [&](qsizetype i) { return std::size_t(static_cast<unsigned char>(bytes[i])); };
  const MiniSeedEncoding encoding = encodings[choice(0) % std::size(encodings)];
  const std::size_t dataBytes = std::size_t(bytes.size() - chosenBytes);
  const bool isSteim = encoding == Steim1 || encoding == Steim2;
  const std::size_t width = encoding == Int16 ? 2 : encoding == Float64 ? 8 : 4;
  const std::size_t words = dataBytes / 64 * 15 - 2;
  const std::size_t room = isSteim ? words * (encoding == Steim1 ? 4 : 7) : dataBytes / width;
  const SampleFormat format{int(bytes.size()), int(chosenBytes), encoding, (choice(1) & 1) != 0,
                            (choice(1) & 2) != 0};
  const std::size_t count = 1 + (choice(2) << 8 | choice(3)) % room;
  require(outcome(&MiniSeedSamples::decode, format, bytes, count) ==
              outcome(&MiniSeedSamples::decodeByLibrary, format, bytes, count),
          "samples are those of libmseed");
}

void checkSummary(QByteArrayView bytes, const SeismogramFile& file) {
  QByteArray contents = QByteArray::fromRawData(bytes.data(), bytes.size());
  QBuffer buffer(&contents);
  buffer.open(QIODevice::ReadOnly);
  const Result<SeismogramFileSummary> summary = summarizeMiniSeedDevice(buffer, QStringLiteral("in"), {}, {});
  require(summary && summary->notes == file.notes, "a summary has the notes of a reading");
  require(summary->records.size() == file.records.size(), "a summary has the traces of a reading");
  for (std::size_t i = 0; i < file.records.size(); ++i) {
    const SeismogramSummary& sum = summary->records[i];
    const SeismogramRecord& record = *file.records[i];
    require(sum.samples.count() == record.npts() && sum.samples.min() == record.smin() &&
                sum.samples.max() == record.smax(),
            "a summary sums the samples up");
    require(sum.record->labelString() == record.labelString() && sum.record->b() == record.b() &&
                sum.record->delta() == record.delta(),
            "a summary has the channel and times of a reading");
  }
}

// Headers tell of all channels, and of samples that cannot be decoded, too; they do not see which records that begin
// alike hold something else.
void checkOutline(QByteArrayView bytes) {
  QByteArray contents = QByteArray::fromRawData(bytes.data(), bytes.size());
  QBuffer buffer(&contents);
  buffer.open(QIODevice::ReadOnly);
  const Result<SeismogramOutline> outline = outlineMiniSeedDevice(buffer, QStringLiteral("in"), {});
  require(outline && !outline->channels.empty(), "a file that is read has an outline");
  for (const ChannelOutline& channel : outline->channels) {
    require(channel.sampleCount > 0 && channel.pieceCount > 0, "a channel has samples");
    require(channel.start.isValid() && channel.start <= channel.end, "a channel ends after it begins");
  }
  require(buffer.seek(0), "the buffer begins anew");
  (void)miniSeedEnds(buffer);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const QByteArrayView bytes(reinterpret_cast<const char*>(data), qsizetype(size));
  checkDecoding(bytes);
  const Result<SeismogramFile> file = parseMiniSeed(bytes, QStringLiteral("in"));
  if (!file) {
    fuzz::requireOneLine(file.error());
    return 0;
  }
  for (const QString& note : file->notes)
    fuzz::requireOneLine(note);
  require(!file->records.empty(), "a file that is read holds traces");
  std::size_t samples = 0;
  for (std::size_t i = 0; i < file->records.size(); ++i) {
    SeismogramRecord& trace = *file->records[i];
    checkTrace(trace);
    samples += std::size_t(trace.npts());
    if (i == 0 || !isSameChannel(*file->records[i - 1], trace)) continue;
    const SeismogramRecord& before = *file->records[i - 1];
    require(before.b() <= trace.b(), "pieces come in time order");
    require(before.mySeisReferenceTime()->nsDate() == trace.mySeisReferenceTime()->nsDate(),
            "pieces share a time axis");
  }
  checkSummary(bytes, *file);
  checkOutline(bytes);
  // Steim2 holds seven samples in four bytes at most.
  require(samples <= size * 7 / 4, "there are no more samples than fit");
  const Result<SeismogramFile> part = parseMiniSeed(bytes, QStringLiteral("in"), {{QStringLiteral("BH?")}});
  require(!part || part->records.size() <= file->records.size(), "a selection is a part");
  return 0;
}
