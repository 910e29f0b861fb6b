#include "XOV_Graphics/seismic/realtime/seedlink/LiveRecord.h"

#include "XOV_Graphics/seismic/io/mseed/MiniSeed3Record.h"
#include "XOV_Graphics/seismic/io/mseed/MiniSeedSamples.h"
#include "XOV_Graphics/seismic/io/mseed/MiniSeedSearch.h"

namespace xov {

namespace {

constexpr double kMicrosecondsPerSecond = 1e6;

template <std::size_t N>
SacText<N> sacText(const QString& code) {
  const QByteArray bytes = code.toLatin1();
  return SacText<N>(std::string_view(bytes.data(), std::size_t(bytes.size())));
}

} // namespace

double LiveRecord::startSeconds() const { return double(startUs) / kMicrosecondsPerSecond; }

ChannelArrival LiveRecord::arrival() const {
  const double behind = samples.empty() ? 0 : double(std::ssize(samples) - 1) * deltaSeconds();
  return {startSeconds() + behind, arrivalSeconds};
}

SacHeader LiveRecord::header() const {
  SacHeader header;
  header.knetwk = sacText<8>(codes[0]);
  header.kstnm = sacText<8>(codes[1]);
  header.khole = sacText<8>(codes[2]);
  header.kcmpnm = sacText<8>(codes[3]);
  return header;
}

QByteArray LiveRecord::station() const { return (codes[0] + '_' + codes[1]).toUtf8(); }

LiveRecordReader::LiveRecordReader() : samples_(std::make_unique<MiniSeedSamples>()) {}
LiveRecordReader::~LiveRecordReader() = default;

Result<LiveRecord> LiveRecordReader::read(QByteArrayView bytes) {
  const MiniSeedFinding finding = findAnyRecord(bytes, bytes.size());
  if (finding.kind == MiniSeedFinding::Kind::Nothing) return Error{QStringLiteral("found no miniSEED record")};
  if (finding.kind == MiniSeedFinding::Kind::Damaged) return Error{finding.problem};
  const MiniSeedRecord& found = finding.record;
  const qsizetype length = found.format.length > 0 ? qsizetype(found.format.length) : bytes.size();
  if (length > bytes.size()) return Error{QStringLiteral("the record ends too early")};
  const QByteArrayView whole = bytes.first(length);
  if (found.version == 3) {
    if (const QString problem = checkValueProblem(whole); !problem.isEmpty()) return Error{problem};
  }
  LiveRecord record{channelCodes(found), found.startUs, found.rateHz, {}, 0};
  if (found.format.encoding == MiniSeedEncoding::Text || found.sampleCount == 0) return record;
  record.samples.resize(std::size_t(found.sampleCount));
  QString doubt;
  if (const Status status = samples_->decode(found.format, whole, record.samples, doubt); !status)
    return Error{status.error()};
  return record;
}

} // namespace xov
