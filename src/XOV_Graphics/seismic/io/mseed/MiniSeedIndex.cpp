#include "XOV_Graphics/seismic/io/mseed/MiniSeedIndex.h"

#include <map>

namespace xov {

namespace {

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
  Indexer(FileWindow& file, const ChannelPatterns& patterns) : file_(file), patterns_(patterns) {}

  MiniSeedIndex run() {
    qint64 offset = 0;
    while (offset < file_.size() && index_.isReadable)
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
    MiniSeedFinding finding = findMiniSeedRecord(view, remaining);
    if (finding.kind == MiniSeedFinding::Kind::Nothing) {
      const qint64 next = nextStart(file_, offset + 1);
      index_.strayBytes.add(offset, QString(), next - offset);
      return next;
    }
    ++index_.recordCount;
    checkInside(offset, finding);
    if (finding.kind == MiniSeedFinding::Kind::Damaged) {
      index_.damagedRecords.add(offset, finding.problem);
      return finding.record.format.length > 0 ? offset + finding.record.format.length : nextStart(file_, offset + 1);
    }
    addRecord(offset, finding.record);
    return offset + finding.record.format.length;
  }

  /// A length that is too large would hide the records that it covers.
  void checkInside(qint64 offset, MiniSeedFinding& finding) {
    int& length = finding.record.format.length;
    if (length == 0) return;
    const QByteArrayView view = file_.at(offset, length);
    if (view.size() < length) {
      index_.isReadable = false;
      return;
    }
    const qsizetype inside = findRecordInside(view.first(length));
    if (inside == 0) return;
    finding.kind = MiniSeedFinding::Kind::Damaged;
    finding.problem = "record length: found " + QString::number(length) + ", but another record begins " +
                      QString::number(inside) + " bytes on";
    length = int(inside);
  }

  void addRecord(qint64 offset, const MiniSeedRecord& record) {
    if (!index_.isReadable || record.sampleCount == 0 || record.format.encoding == MiniSeedEncoding::Text) return;
    const std::optional<std::uint32_t> channel = selectedChannel(record);
    if (!channel) return;
    index_.records.push_back({offset, {record.startUs, record.rateHz, record.sampleCount}, *channel, record.format});
  }

  /// The number of the record's channel if that is selected.
  std::optional<std::uint32_t> selectedChannel(const MiniSeedRecord& record) {
    const auto [known, isNew] = numbers_.try_emplace(record.codes);
    if (isNew) {
      const ChannelCodes codes = channelCodes(record);
      const bool selected = patterns_.select(codes);
      if (selected) known->second = std::uint32_t(index_.channels.size());
      (selected ? index_.channels : index_.passedOver).push_back(codes);
    }
    return known->second;
  }

  FileWindow& file_;
  const ChannelPatterns& patterns_;
  MiniSeedIndex index_;
  std::map<std::array<char, 12>, std::optional<std::uint32_t>> numbers_;
};

} // namespace

void LossTally::add(qint64 offset, const QString& problem, qint64 amount) {
  count += amount;
  if (firstOffset >= 0 && firstOffset <= offset) return;
  firstOffset = offset;
  firstProblem = problem;
}

MiniSeedIndex indexMiniSeed(FileWindow& file, const ChannelPatterns& patterns) {
  return Indexer(file, patterns).run();
}

} // namespace xov
