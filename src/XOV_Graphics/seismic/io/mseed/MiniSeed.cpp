#include "XOV_Graphics/seismic/io/mseed/MiniSeed.h"

#include "XOV_Graphics/seismic/io/mseed/MiniSeedAssembly.h"
#include "XOV_Graphics/seismic/io/mseed/MiniSeedNotes.h"
#include "XOV_Graphics/seismic/io/mseed/MiniSeedSearch.h"
#include "XOV_Graphics/seismic/io/mseed/MiniSeedSums.h"

namespace xov {

namespace {

bool isFullSeed(QByteArrayView head) { return head.startsWith("000001V "); }

bool isMiniSeed3(QByteArrayView head) { return head.startsWith(QByteArrayView("MS\x03")); }

} // namespace

bool isMiniSeed(QByteArrayView head) {
  return isFullSeed(head) || isMiniSeed3(head) || findMiniSeedStart(head, 0) < head.size();
}

namespace {

/// An open device, what is wanted of it and what was found.
class Reading {
public:
  Reading(QIODevice& device, const QString& name, const QString& path)
      : device_(device),
        file_(device),
        name_(name),
        path_(path) {}

  Status index(const ChannelPatterns& patterns, const RecordSink& sink = {}) {
    index_ = indexMiniSeed(file_, patterns, sink);
    return indexStatus(index_, device_, name_);
  }

  void assemble(Samples samples) { traces_ = assembleTraces(file_, index_, path_, samples); }
  /// False when the records have to be assembled.
  bool sumUp(RunningSums& sums) {
    std::optional<MiniSeedTraces> traces = sums.take(index_, path_);
    if (!traces) return false;
    traces_ = *std::move(traces);
    return true;
  }

  /// What is to be said of the traces, unless there are none where there should be.
  Result<QStringList> notes() const {
    const bool isEmpty = traces_.records.empty() && traces_.located.empty();
    if (isEmpty && !isPassedOver(index_)) return nothingRead(index_, name_);
    return miniSeedNotes(index_, isEmpty, name_);
  }

  MiniSeedTraces& traces() { return traces_; }

private:
  QIODevice& device_;
  FileWindow file_;
  QString name_;
  QString path_;
  MiniSeedIndex index_;
  MiniSeedTraces traces_;
};

} // namespace

Result<SeismogramFile> readMiniSeedDevice(QIODevice& device, const QString& name, const QString& path,
                                          const SeismogramReadOptions& options) {
  const Result<ChannelPatterns> patterns = ChannelPatterns::parse(options.channels);
  if (!patterns) return Error{patterns.error()};
  Reading reading(device, name, path);
  if (Status status = reading.index(*patterns); !status) return Error{status.error()};
  reading.assemble(Samples::Kept);
  const Result<QStringList> notes = reading.notes();
  if (!notes) return Error{notes.error()};
  return SeismogramFile{std::move(reading.traces().records), *notes};
}

Result<SeismogramFileSummary> summarizeMiniSeedDevice(QIODevice& device, const QString& name, const QString& path,
                                                      const SeismogramReadOptions& options) {
  const Result<ChannelPatterns> patterns = ChannelPatterns::parse(options.channels);
  if (!patterns) return Error{patterns.error()};
  Reading reading(device, name, path);
  RunningSums sums;
  const RecordSink addToSums = [&sums](const IndexedRecord& record, QByteArrayView bytes, MiniSeedIndex& index) {
    return sums.add(record, bytes, index);
  };
  if (Status status = reading.index(*patterns, addToSums); !status) return Error{status.error()};
  if (!reading.sumUp(sums)) {
    if (Status status = reading.index(*patterns); !status) return Error{status.error()};
    reading.assemble(Samples::SummedUp);
  }
  const Result<QStringList> notes = reading.notes();
  if (!notes) return Error{notes.error()};
  SeismogramFileSummary summary{{}, *notes};
  for (std::size_t i = 0; i < reading.traces().records.size(); ++i)
    summary.records.push_back({reading.traces().records[i], reading.traces().tallies[i]});
  return summary;
}

Result<ArchiveContents> locateMiniSeedDevice(QIODevice& device, const QString& name) {
  Reading reading(device, name, QString());
  if (Status status = reading.index(ChannelPatterns()); !status) return Error{status.error()};
  reading.assemble(Samples::Located);
  const Result<QStringList> notes = reading.notes();
  if (!notes) return Error{notes.error()};
  return ArchiveContents{SampleStorage::MiniSeed, std::move(reading.traces().located), *notes};
}

} // namespace xov
