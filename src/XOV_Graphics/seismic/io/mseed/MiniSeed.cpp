#include "XOV_Graphics/seismic/io/mseed/MiniSeed.h"

#include "XOV_Graphics/seismic/io/mseed/MiniSeedIndex.h"
#include "XOV_Graphics/seismic/io/mseed/MiniSeedSamples.h"

#include <QHashFunctions>

#include <algorithm>
#include <limits>
#include <set>
#include <utility>

namespace xov {

namespace {

constexpr std::int64_t kMicrosecondsPerMillisecond = 1000;
constexpr float kLargestExactInteger = 16777216; // of single precision, that all smaller ones are exact to
constexpr qsizetype kSequenceBytes = 6;          // at the start of a record
constexpr qsizetype kMostNamedChannels = 8;      // in a note

/// An unbroken piece of a channel: its records, in time order, and their samples one after the other.
struct Piece {
  std::vector<std::size_t> records;
  std::size_t sampleCount = 0;
  std::vector<float> samples;
};

/// Where the samples of a record go.
struct Place {
  static constexpr std::uint32_t kNowhere = std::numeric_limits<std::uint32_t>::max();

  std::size_t first = 0;
  std::uint32_t piece = kNowhere; ///< of a record that the file holds twice it is nowhere
  bool isFilled = false;
};

/// What becomes of samples.
enum class Samples : std::uint8_t {
  Kept,     ///< in the traces
  SummedUp, ///< tallies take their place: traces have none
};

std::int64_t millisecondsBefore(std::int64_t us) {
  return us / kMicrosecondsPerMillisecond - (us % kMicrosecondsPerMillisecond < 0 ? 1 : 0);
}

SacText<8> sacText(const QString& text) { return SacText<8>(std::string_view(text.toStdString())); }

/// Turns the records of an index into traces.
class Assembly {
public:
  Assembly(FileWindow& file, MiniSeedIndex& index, QString path, Samples samples)
      : file_(file),
        index_(index),
        path_(std::move(path)),
        samples_(samples),
        places_(index.records.size()),
        tallies_(samples == Samples::SummedUp ? index.records.size() : 0) {}

  SeismogramArray run() {
    std::vector<std::vector<std::size_t>> recordsOf(index_.channels.size());
    for (std::size_t i = 0; i < index_.records.size(); ++i)
      recordsOf[record(i).channel].push_back(i);
    for (std::vector<std::size_t>& records : recordsOf)
      plan(inOrder(std::exchange(records, {})));
    decode();
    SeismogramArray traces;
    auto piece = pieces_.begin();
    for (std::size_t channel = 0; channel < index_.channels.size(); ++channel) {
      std::vector<Stretch> stretches;
      for (; piece != pieces_.end() && channelOf(*piece) == channel; ++piece)
        appendStretches(*piece, stretches);
      appendTraces(channel, stretches, traces);
    }
    return traces;
  }

  qint64 repeatedCount() const { return repeatedCount_; }

  /// What the samples of each trace amount to, where they are summed up.
  const std::vector<SampleTally>& tallies() const { return traceTallies_; }

private:
  const IndexedRecord& record(std::size_t i) const { return index_.records[i]; }
  std::size_t channelOf(const Piece& piece) const { return record(piece.records.front()).channel; }

  /// The records of a channel in time order, each of those that are there more than once just once.
  std::vector<std::size_t> inOrder(std::vector<std::size_t> order) {
    const auto startAndLength = [&](std::size_t i) {
      return std::make_pair(record(i).span.startUs, record(i).format.length);
    };
    if (!std::ranges::is_sorted(order, {}, startAndLength)) std::ranges::stable_sort(order, {}, startAndLength);
    const auto isAlike = [&](std::size_t left, std::size_t right) {
      return startAndLength(left) == startAndLength(right);
    };
    if (std::ranges::adjacent_find(order, isAlike) != order.end()) order = withoutRepeated(order, isAlike);
    const auto startAndNumber = [&](std::size_t i) { return std::make_pair(record(i).span.startUs, i); };
    if (!std::ranges::is_sorted(order, {}, startAndNumber)) std::ranges::sort(order, {}, startAndNumber);
    return order;
  }

  /// Leaves out those of records alike that hold the same bytes but for the sequence number. Few files have such
  /// records, so that reading them once more for it costs less than looking at all.
  template <typename IsAlike>
  std::vector<std::size_t> withoutRepeated(const std::vector<std::size_t>& order, IsAlike isAlike) {
    std::vector<std::size_t> kept;
    for (auto first = order.begin(); first != order.end();) {
      const auto last = std::find_if_not(first, order.end(), [&](std::size_t i) { return isAlike(*first, i); });
      if (last - first == 1) {
        kept.push_back(*first++);
        continue;
      }
      std::set<std::size_t> known;
      for (; first != last; ++first) {
        if (known.insert(contentsHash(*first)).second)
          kept.push_back(*first);
        else
          ++repeatedCount_;
      }
    }
    return kept;
  }

  /// Of everything but the sequence number.
  std::size_t contentsHash(std::size_t i) {
    const qsizetype length = record(i).format.length;
    const QByteArrayView bytes = file_.at(record(i).offset, length);
    if (bytes.size() < length) return i; // decoding it says so
    return qHashBits(bytes.data() + kSequenceBytes, std::size_t(length - kSequenceBytes));
  }

  /// Plans the pieces of a channel.
  void plan(const std::vector<std::size_t>& order) {
    std::vector<RecordSpan> spans;
    spans.reserve(order.size());
    for (const std::size_t i : order)
      spans.push_back(record(i).span);
    for (const std::vector<std::size_t>& joined : joinRecords(spans)) {
      Piece piece;
      std::size_t count = 0;
      for (const std::size_t ordinal : joined) {
        const std::size_t i = order[ordinal];
        piece.records.push_back(i);
        places_[i] = {count, std::uint32_t(pieces_.size()), false};
        count += std::size_t(record(i).span.sampleCount);
      }
      piece.sampleCount = count;
      pieces_.push_back(std::move(piece));
    }
  }

  /// Fills the samples of all pieces in one walk through the file.
  void decode() {
    if (samples_ == Samples::Kept) {
      for (Piece& piece : pieces_)
        piece.samples.resize(piece.sampleCount);
    }
    MiniSeedSamples samples;
    for (std::size_t i = 0; i < places_.size(); ++i) {
      if (places_[i].piece == Place::kNowhere) continue;
      QString doubt;
      const Status status = decodeRecord(samples, i, doubt);
      places_[i].isFilled = bool(status);
      if (!status) index_.damagedRecords.add(record(i).offset, status.error());
      if (!doubt.isEmpty()) index_.doubtfulRecords.add(record(i).offset, doubt);
    }
  }

  Status decodeRecord(MiniSeedSamples& samples, std::size_t i, QString& doubt) {
    const IndexedRecord& indexed = record(i);
    const qsizetype length = indexed.format.length;
    const QByteArrayView view = file_.at(indexed.offset, length);
    if (view.size() < length) return Error{QStringLiteral("the file has become shorter while it was read")};
    const auto count = std::size_t(indexed.span.sampleCount);
    if (samples_ == Samples::Kept) {
      std::vector<float>& all = pieces_[places_[i].piece].samples;
      return samples.decode(indexed.format, view.first(length), std::span(all).subspan(places_[i].first, count),
                            doubt);
    }
    oneRecord_.resize(count);
    Status status = samples.decode(indexed.format, view.first(length), oneRecord_, doubt);
    if (!status) return status;
    SampleTally& tally = tallies_[i];
    tally.add(oneRecord_);
    const bool isLarge = std::max(-tally.min(), tally.max()) > kLargestExactInteger;
    tally.setRounded(isLarge && indexed.format.encoding != MiniSeedEncoding::Float32);
    return status;
  }

  /// A stretch of a piece without a record that could not be decoded.
  struct Stretch {
    std::vector<RecordSpan> records;
    std::vector<float> samples;
    SampleTally tally;
  };

  /// Takes the piece's samples.
  void appendStretches(Piece& piece, std::vector<Stretch>& all) {
    const auto isFilled = [&](std::size_t i) { return places_[i].isFilled; };
    if (samples_ == Samples::Kept && std::ranges::all_of(piece.records, isFilled)) {
      Stretch& stretch = all.emplace_back();
      for (const std::size_t i : piece.records)
        stretch.records.push_back(record(i).span);
      stretch.samples = std::move(piece.samples);
      return;
    }
    bool open = false;
    for (const std::size_t i : piece.records) {
      if (isFilled(i)) {
        Stretch& stretch = open ? all.back() : all.emplace_back();
        stretch.records.push_back(record(i).span);
        if (samples_ == Samples::SummedUp) {
          stretch.tally.add(tallies_[i]);
        } else {
          const auto first = piece.samples.begin() + std::ptrdiff_t(places_[i].first);
          stretch.samples.insert(stretch.samples.end(), first, first + record(i).span.sampleCount);
        }
      }
      open = isFilled(i);
    }
  }

  SacHeader channelHeader(std::size_t channel) const {
    const auto& [network, station, location, component] = index_.channels[channel];
    SacHeader header;
    header.knetwk = sacText(network);
    header.kstnm = sacText(station);
    header.khole = sacText(location);
    header.kcmpnm = sacText(component);
    header.iftype = kSacTimeSeries;
    header.leven = 1;
    return header;
  }

  /// Takes the stretches' samples.
  void appendTraces(std::size_t channel, std::vector<Stretch>& stretches, SeismogramArray& traces) {
    if (stretches.empty()) return;
    std::ranges::stable_sort(stretches, {}, [](const Stretch& stretch) { return stretch.records.front().startUs; });
    const std::int64_t referenceMs = millisecondsBefore(stretches.front().records.front().startUs);
    SacHeader header = channelHeader(channel);
    setReferenceTime(header, QDateTime::fromMSecsSinceEpoch(referenceMs, Qt::UTC));
    for (Stretch& stretch : stretches) {
      const PieceTimes times = pieceTimes(stretch.records, referenceMs);
      header.b = float(times.b);
      header.delta = float(times.delta);
      SacFooter precise = footerFromHeader(header);
      precise.b = times.b;
      precise.delta = times.delta;
      traces.push_back(std::make_shared<SacSeismogram>(header, std::move(stretch.samples), path_, precise));
      if (samples_ == Samples::SummedUp) traceTallies_.push_back(stretch.tally);
    }
  }

  FileWindow& file_;
  MiniSeedIndex& index_;
  QString path_;
  Samples samples_;
  std::vector<Place> places_;        // of every record of the index
  std::vector<SampleTally> tallies_; // of every record of the index, where samples are summed up
  std::vector<SampleTally> traceTallies_;
  std::vector<float> oneRecord_;
  std::vector<Piece> pieces_;
  qint64 repeatedCount_ = 0;
};

QString placeText(const LossTally& losses) {
  const QString place = "the first at byte " + QString::number(losses.firstOffset);
  return losses.firstProblem.isEmpty() ? place : place + ": " + losses.firstProblem;
}

QString counted(qint64 count, const char* singular, const char* plural) {
  return QString::number(count) + QLatin1Char(' ') + QLatin1String(count == 1 ? singular : plural);
}

QStringList lossNotes(const MiniSeedIndex& index, qint64 repeatedCount, const QString& name) {
  QStringList notes;
  if (const LossTally& damaged = index.damagedRecords; damaged.count > 0)
    notes.append(name + ": " + QString::number(damaged.count) + " of " +
                 counted(index.recordCount, "record", "records") + " left out, " + placeText(damaged));
  if (const LossTally& doubtful = index.doubtfulRecords; doubtful.count > 0)
    notes.append(name + ": " + QString::number(doubtful.count) + " of " +
                 counted(index.recordCount, "record", "records") + " kept that may be damaged, " +
                 placeText(doubtful));
  if (const LossTally& stray = index.strayBytes; stray.count > 0)
    notes.append(name + ": " + counted(stray.count, "byte", "bytes") + " between records left out, " +
                 placeText(stray));
  if (repeatedCount > 0)
    notes.append(name + ": " + counted(repeatedCount, "record", "records") + " left out that the file holds twice");
  return notes;
}

QString selectionNote(const MiniSeedIndex& index, const QString& name) {
  QStringList names;
  for (const ChannelCodes& codes : index.passedOver) {
    if (names.size() == kMostNamedChannels) {
      names.append(QStringLiteral("..."));
      break;
    }
    names.append(channelName(codes));
  }
  return name + ": no channel is selected of " + names.join(QStringLiteral(", "));
}

Error nothingRead(const MiniSeedIndex& index, const QString& name) {
  if (index.recordCount == 0) return Error{name + ": found no record of miniSEED 2"};
  const QString count = counted(index.recordCount, "record", "records");
  if (index.damagedRecords.count == 0) return Error{name + ": found no samples in " + count};
  return Error{name + ": found nothing to read in " + count + "; damaged " +
               QString::number(index.damagedRecords.count) + ", " + placeText(index.damagedRecords)};
}

bool isFullSeed(QByteArrayView head) { return head.startsWith("000001V "); }

bool isMiniSeed3(QByteArrayView head) { return head.startsWith(QByteArrayView("MS\x03")); }

} // namespace

bool isMiniSeed(QByteArrayView head) {
  return isFullSeed(head) || isMiniSeed3(head) || findMiniSeedStart(head, 0) < head.size();
}

namespace {

Result<SeismogramFile> readDevice(QIODevice& device, const QString& name, const QString& path,
                                  const SeismogramReadOptions& options, Samples samples,
                                  std::vector<SampleTally>& tallies) {
  const Result<ChannelPatterns> patterns = ChannelPatterns::parse(options.channels);
  if (!patterns) return Error{patterns.error()};
  FileWindow file(device);
  if (isMiniSeed3(file.at(0, kMiniSeedHeaderBytes))) return Error{name + ": found miniSEED 3, expected miniSEED 2"};
  MiniSeedIndex index = indexMiniSeed(file, *patterns);
  if (!index.isReadable) return Error{name + ": cannot be read: " + device.errorString()};

  SeismogramFile found;
  Assembly assembly(file, index, path, samples);
  found.records = assembly.run();
  tallies = assembly.tallies();
  found.notes = lossNotes(index, assembly.repeatedCount(), name);
  if (found.records.empty()) {
    if (!index.channels.empty() || index.passedOver.empty()) return nothingRead(index, name);
    found.notes.append(selectionNote(index, name));
  }
  return found;
}

} // namespace

Result<SeismogramFile> readMiniSeedDevice(QIODevice& device, const QString& name, const QString& path,
                                          const SeismogramReadOptions& options) {
  std::vector<SampleTally> none;
  return readDevice(device, name, path, options, Samples::Kept, none);
}

Result<SeismogramFileSummary> summarizeMiniSeedDevice(QIODevice& device, const QString& name, const QString& path,
                                                      const SeismogramReadOptions& options) {
  std::vector<SampleTally> tallies;
  const Result<SeismogramFile> found = readDevice(device, name, path, options, Samples::SummedUp, tallies);
  if (!found) return Error{found.error()};
  SeismogramFileSummary summary;
  summary.notes = found->notes;
  for (std::size_t i = 0; i < found->records.size(); ++i)
    summary.records.push_back({found->records[i], tallies[i]});
  return summary;
}

} // namespace xov
