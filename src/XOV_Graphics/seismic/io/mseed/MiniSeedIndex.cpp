#include "XOV_Graphics/seismic/io/mseed/MiniSeedIndex.h"

#include "XOV_Graphics/seismic/io/mseed/MiniSeed3Record.h"
#include "XOV_Graphics/seismic/io/mseed/MiniSeedSearch.h"

#include <algorithm>
#include <map>

namespace xov {

namespace {

constexpr qint64 kMostFirst = 1 << 20; // records that room is made for before they are found

/// Where the next record begins from `from` on; the file's size when none does.
qint64 nextStart(FileWindow& file, qint64 from) {
  while (from < file.size()) {
    const QByteArrayView view = file.at(from, kLongestMiniSeedRecord);
    const qsizetype start = findMiniSeedStart(view, 0);
    if (start < view.size()) return from + start;
    // A header may be cut by the end of the view.
    if (view.size() < kMiniSeedHeaderBytes) break;
    from += view.size() - (kMiniSeedHeaderBytes - 1);
  }
  return file.size();
}

class Indexer {
public:
  Indexer(FileWindow& file, const ChannelPatterns& patterns, const RecordSink& sink)
      : file_(file),
        patterns_(patterns),
        sink_(sink) {}

  MiniSeedIndex run() {
    qint64 offset = 0;
    while (offset < file_.size() && index_.isReadable && isWanted_)
      offset = step(offset);
    return std::move(index_);
  }

private:
  /// Deals with what is at `offset` and gives the place behind it.
  qint64 step(qint64 offset) {
    const qint64 remaining = file_.size() - offset;
    const QByteArrayView view = file_.at(offset, kMiniSeedChainBytes);
    index_.isReadable = view.size() >= std::min<qint64>(kMiniSeedChainBytes, remaining);
    if (!index_.isReadable) return offset;
    MiniSeedFinding finding = findAnyRecord(view, remaining);
    if (finding.kind == MiniSeedFinding::Kind::Nothing) {
      const qint64 next = nextStart(file_, offset + 1);
      if (const QString problem = impossibleTime(view); problem.isEmpty()) {
        index_.strayBytes.add(offset, QString(), next - offset);
      } else {
        ++index_.recordCount;
        index_.damagedRecords.add(offset, problem);
      }
      return next;
    }
    ++index_.recordCount;
    if (finding.record.format.length > 0) checkWhole(offset, finding);
    if (!index_.isReadable) return offset;
    if (finding.kind == MiniSeedFinding::Kind::Damaged) {
      index_.damagedRecords.add(offset, finding.problem);
      return finding.record.format.length > 0 ? offset + finding.record.format.length : nextStart(file_, offset + 1);
    }
    addRecord(offset, finding.record);
    return offset + finding.record.format.length;
  }

  /// Looks at all of a record's bytes. A length that is too large would hide the records that it covers.
  void checkWhole(qint64 offset, MiniSeedFinding& finding) {
    SampleFormat& format = finding.record.format;
    const QByteArrayView view = file_.at(offset, format.length);
    index_.isReadable = view.size() >= format.length;
    if (!index_.isReadable) return;
    const bool isVersion3 = finding.record.version == 3;
    if (isVersion3) {
      format.isProven = checkValueProblem(view.first(format.length)).isEmpty();
      if (format.isProven) return;
    }
    const qsizetype behind = isVersion3 ? kLongestMiniSeedRecord : 0;
    const qsizetype inside = findRecordInside(finding.record, file_.at(offset, format.length + behind));
    if (inside == 0) return;
    finding.kind = MiniSeedFinding::Kind::Damaged;
    finding.problem = "record length: found " + QString::number(format.length) + ", but another record begins " +
                      QString::number(inside) + " bytes on";
    format.length = int(inside);
  }

  void addRecord(qint64 offset, const MiniSeedRecord& record) {
    if (record.sampleCount == 0 || record.format.encoding == MiniSeedEncoding::Text) return;
    const std::optional<std::uint32_t> channel = selectedChannel(record);
    if (!channel) return;
    const IndexedRecord indexed{offset, {record.startUs, record.rateHz, record.sampleCount}, *channel, record.format};
    if (!sink_)
      keep(indexed);
    else
      isWanted_ = sink_(indexed, file_.at(offset, record.format.length).first(record.format.length), index_);
  }

  void keep(const IndexedRecord& record) {
    // Nearly all files have records of one length.
    if (index_.records.empty())
      index_.records.reserve(
          std::size_t(std::min((file_.size() - record.offset) / record.format.length, kMostFirst)));
    index_.records.push_back(record);
  }

  /// The number of the record's channel if that is selected.
  std::optional<std::uint32_t> selectedChannel(const MiniSeedRecord& record) {
    if (record.source == lastSource_ && record.version == lastVersion_) return lastChannel_;
    const auto [known, isNew] = numbers_.try_emplace(std::make_pair(record.version, record.source));
    if (isNew) known->second = channelNumber(channelCodes(record));
    lastSource_ = record.source;
    lastVersion_ = record.version;
    lastChannel_ = known->second;
    return lastChannel_;
  }

  /// Records of both versions may be of one channel.
  std::optional<std::uint32_t> channelNumber(const ChannelCodes& codes) {
    const auto [known, isNew] = numbersByCodes_.try_emplace(codes);
    if (!isNew) return known->second;
    const bool selected = patterns_.select(codes);
    if (selected) known->second = std::uint32_t(index_.channels.size());
    (selected ? index_.channels : index_.passedOver).push_back(codes);
    return known->second;
  }

  FileWindow& file_;
  const ChannelPatterns& patterns_;
  MiniSeedIndex index_;
  const RecordSink& sink_;
  bool isWanted_ = true;
  std::map<std::pair<int, std::string>, std::optional<std::uint32_t>> numbers_; // by version and source
  std::map<ChannelCodes, std::optional<std::uint32_t>> numbersByCodes_;
  std::string lastSource_; // of the record before, which is mostly of the same channel
  int lastVersion_ = 0;
  std::optional<std::uint32_t> lastChannel_;
};

} // namespace

void LossTally::add(qint64 offset, const QString& problem, qint64 amount) {
  count += amount;
  if (firstOffset >= 0 && firstOffset <= offset) return;
  firstOffset = offset;
  firstProblem = problem;
}

MiniSeedIndex indexMiniSeed(FileWindow& file, const ChannelPatterns& patterns, const RecordSink& sink) {
  return Indexer(file, patterns, sink).run();
}

} // namespace xov
