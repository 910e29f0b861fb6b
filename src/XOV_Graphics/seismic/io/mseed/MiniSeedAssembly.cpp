#include "XOV_Graphics/seismic/io/mseed/MiniSeedAssembly.h"

#include "XOV_Graphics/base/BlockExtremes.h"
#include "XOV_Graphics/base/LargePages.h"
#include "XOV_Graphics/base/Spares.h"
#include "XOV_Graphics/base/TaskPool.h"
#include "XOV_Graphics/base/Threads.h"
#include "XOV_Graphics/seismic/io/mseed/MiniSeed3Record.h"

#include <QHashFunctions>

#include <algorithm>
#include <limits>
#include <memory>
#include <set>
#include <utility>

namespace xov {

namespace {

constexpr qsizetype kSequenceBytes = 6; // at the start of a record
// What is decoded together: its samples stay in the processor's caches from their first touch on.
constexpr qint64 kStretchBytes = 1 << 18;
constexpr qint64 kSharedStretchBytes = 1 << 20; // by threads, which it takes time to wake up
constexpr std::size_t kTasksOfStretch = 16;

// Pieces of up to so many samples lie in blocks of memory together.
constexpr std::size_t kShortPiece = 4096;
// The least above the most: those of no samples.
constexpr Extrema kNoExtrema{std::numeric_limits<float>::infinity(), -std::numeric_limits<float>::infinity()};
constexpr std::size_t kBlockSamples = std::size_t(1) << 20; // 4 MiB

/// An unbroken piece of a channel, and as many of its samples as were decoded, one after the other.
struct Piece {
  PieceExtent extent;
  std::vector<float> samples;                  ///< of a long one
  float* shared = nullptr;                     ///< where those of a short one lie
  std::optional<Extrema> extrema = kNoExtrema; ///< of a short one's samples so far; none where they are not known
  std::uint32_t block = 0;                     ///< that holds them
  bool isWhole = true;                         ///< false when a record of it could not be decoded

  std::size_t sampleCount() const { return std::size_t(extent.sampleCount); }
  bool isShort() const { return sampleCount() <= kShortPiece; }
};

/// Memory that short pieces have together.
class SampleBlocks {
public:
  /// So many samples more will be asked for.
  void expect(std::size_t samples) { expected_ += samples; }

  /// Gives a short piece its room.
  void place(Piece& piece) {
    if (room_ < piece.sampleCount()) {
      room_ = std::max(std::min(expected_, kBlockSamples), piece.sampleCount());
      blocks_.push_back(std::make_shared_for_overwrite<float[]>(room_));
      next_ = blocks_.back().get();
      askForLargePages(next_, room_ * sizeof(float));
    }
    piece.block = std::uint32_t(blocks_.size() - 1);
    piece.shared = std::exchange(next_, next_ + piece.sampleCount());
    room_ -= piece.sampleCount();
    expected_ -= std::min(piece.sampleCount(), expected_);
  }

  const std::shared_ptr<float[]>& blockOf(const Piece& piece) const { return blocks_[piece.block]; }

private:
  std::vector<std::shared_ptr<float[]>> blocks_;
  float* next_ = nullptr; ///< free, in the last block
  std::size_t room_ = 0;  ///< from there on
  std::size_t expected_ = 0;
};

bool holdsIntegers(MiniSeedEncoding encoding) {
  return encoding == MiniSeedEncoding::Int16 || encoding == MiniSeedEncoding::Int32 ||
         encoding == MiniSeedEncoding::Steim1 || encoding == MiniSeedEncoding::Steim2;
}

/// Of whole numbers, one at least.
Extrema extremaOf(std::span<const float> samples) {
  const std::int32_t cuts[] = {0, std::int32_t(samples.size())};
  Extrema extrema;
  findFiniteBlockExtremes(samples.data(), cuts, 1, &extrema.min, &extrema.max);
  return extrema;
}

/// Where the samples of a record go. Files hold many records.
struct Place {
  static constexpr std::uint32_t kNowhere = std::numeric_limits<std::uint32_t>::max();

  std::uint32_t first = 0;        // pieces have fewer samples than a signed integer counts
  std::uint32_t piece = kNowhere; ///< of a record that the file holds twice it is nowhere
  bool isFilled = false;
};

class Assembly {
public:
  Assembly(FileWindow& file, MiniSeedIndex& index, Samples samples)
      : file_(file),
        index_(index),
        samples_(samples),
        places_(index.records.size()),
        tallies_(samples == Samples::SummedUp ? index.records.size() : 0) {}

  MiniSeedTraces run(const QString& path) {
    std::vector<std::vector<std::size_t>> recordsOf = recordsByChannel();
    std::vector<std::size_t> piecesUpTo{0}; // each channel
    for (std::vector<std::size_t>& records : recordsOf) {
      records = inOrder(std::move(records));
      plan(records);
      piecesUpTo.push_back(pieces_.size());
    }
    decode();
    MiniSeedTraces traces;
    for (std::size_t channel = 0; channel < recordsOf.size(); ++channel) {
      const auto pieces =
          std::span(pieces_).subspan(piecesUpTo[channel], piecesUpTo[channel + 1] - piecesUpTo[channel]);
      const ChannelCodes& codes = index_.channels[channel];
      if (samples_ == Samples::Kept && std::ranges::all_of(pieces, &Piece::isWhole))
        appendWhole(pieces, codes, path, traces);
      else
        traces.append(codes, stretchesOf(std::exchange(recordsOf[channel], {})), path);
    }
    return traces;
  }

private:
  const IndexedRecord& record(std::size_t i) const { return index_.records[i]; }

  std::vector<std::vector<std::size_t>> recordsByChannel() const {
    std::vector<std::size_t> counts(index_.channels.size());
    for (const IndexedRecord& record : index_.records)
      ++counts[record.channel];
    std::vector<std::vector<std::size_t>> recordsOf(counts.size());
    for (std::size_t channel = 0; channel < counts.size(); ++channel)
      recordsOf[channel].reserve(counts[channel]);
    for (std::size_t i = 0; i < index_.records.size(); ++i)
      recordsOf[record(i).channel].push_back(i);
    return recordsOf;
  }

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
          ++index_.repeatedCount;
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
    const std::size_t before = pieces_.size();
    PieceJoiner joiner;
    std::size_t count = 0;
    for (const std::size_t i : order) {
      const std::size_t number = joiner.add(record(i).span);
      places_[i].piece = std::uint32_t(before + number);
      count = std::max(count, number + 1);
    }
    pieces_.resize(before + count);
    for (const std::size_t i : order) {
      const std::uint32_t number = places_[i].piece;
      Piece& piece = pieces_[number];
      places_[i] = {std::uint32_t(piece.sampleCount()), number, false};
      piece.extent.add(record(i).span);
    }
    for (std::size_t number = before; number < pieces_.size(); ++number) {
      if (pieces_[number].isShort()) blocks_.expect(pieces_[number].sampleCount());
    }
  }

  /// A record to be decoded.
  struct Job {
    std::size_t record;
    QByteArrayView bytes;  ///< none where the file has lost them
    std::span<float> room; ///< empty where samples are not kept
    DecodedRecord decoded;
    std::optional<Extrema> extrema = {}; ///< of whole numbers of short pieces that are kept
  };

  /// Records that are decoded together.
  struct Batch {
    FileWindow file; ///< with their bytes
    std::vector<Job> jobs;
    std::size_t end = 0; ///< the first record behind them
  };

  /// Decodes the records of all pieces in one walk through the file, a stretch of it at a time. Where there are more
  /// threads than one, one of them gets the next stretch ready meanwhile.
  void decode() {
    if (places_.empty()) return;
    Batch batches[] = {{file_.another(0), {}}, {file_.another(0), {}}};
    prepare(0, batches[0]);
    for (int turn = 0;; turn = 1 - turn) {
      Batch &batch = batches[turn], &next = batches[1 - turn];
      const bool isLast = batch.end == places_.size();
      const bool isAhead = !isLast && threadCount() > 1;
      decodeBatch(batch, isAhead ? &next : nullptr);
      conclude(batch);
      if (isLast) break;
      if (!isAhead) prepare(batch.end, next);
    }
  }

  /// The end of as many records as lie within some bytes of the file, one at least.
  std::size_t stretchEnd(std::size_t first) const {
    std::size_t end = first + 1;
    while (end < places_.size() && record(end).offset >= record(end - 1).offset &&
           record(end).offset + record(end).format.length - record(first).offset <= stretchBytes_)
      ++end;
    return end;
  }

  /// Reads the next records and makes room for their samples.
  void prepare(std::size_t first, Batch& batch) {
    batch.end = stretchEnd(first);
    batch.jobs.clear();
    const qint64 offset = record(first).offset;
    const IndexedRecord& last = record(batch.end - 1);
    const QByteArrayView bytes = batch.file.at(offset, qsizetype(last.offset - offset) + last.format.length);
    for (std::size_t i = first; i < batch.end; ++i) {
      if (places_[i].piece == Place::kNowhere) continue;
      const auto from = qsizetype(record(i).offset - offset);
      if (bytes.size() < from + record(i).format.length)
        batch.jobs.push_back(
            {i, {}, {}, {false, QStringLiteral("the file has become shorter while it was read"), {}}});
      else
        batch.jobs.push_back({i, bytes.sliced(from, record(i).format.length), roomFor(i), {}});
    }
  }

  /// Threads share the records of a batch, and the next one, if any, is made ready.
  void decodeBatch(Batch& batch, Batch* next) {
    std::vector<Job>& jobs = batch.jobs;
    const std::size_t perTask = jobs.size() / kTasksOfStretch + 1;
    const auto decodePart = [&](std::size_t part) {
      const auto tools = tools_.take();
      for (std::size_t k = part * perTask; k < std::min((part + 1) * perTask, jobs.size()); ++k)
        decodeJob(jobs[k], *tools);
    };
    const int parts = int((jobs.size() + perTask - 1) / perTask);
    if (next == nullptr) return runTasks(parts, TaskStart::FirstAlone, decodePart);
    runTasks(parts + 1, TaskStart::Together, [&](int task) {
      if (task == 0)
        prepare(batch.end, *next);
      else
        decodePart(std::size_t(task - 1));
    });
  }

  /// What is said of records is said in their order.
  void conclude(const Batch& batch) {
    for (const Job& job : batch.jobs) {
      noteLosses(record(job.record), job.decoded, index_);
      places_[job.record].isFilled = job.decoded.isDecoded;
      Piece& piece = pieces_[places_[job.record].piece];
      if (!job.decoded.isDecoded) piece.isWhole = false;
      if (piece.isShort()) include(job.extrema, piece.extrema);
    }
  }

  static void include(const std::optional<Extrema>& some, std::optional<Extrema>& all) {
    if (some && all)
      *all = {std::min(all->min, some->min), std::max(all->max, some->max)};
    else
      all.reset();
  }

  /// What a thread decodes with.
  struct Tools {
    std::unique_ptr<MiniSeedSamples> decoder = std::make_unique<MiniSeedSamples>();
    std::vector<float> oneRecord;
  };

  void decodeJob(Job& job, Tools& tools) {
    const IndexedRecord& indexed = record(job.record);
    if (job.bytes.isEmpty()) return;
    if (samples_ != Samples::Kept) {
      tools.oneRecord.resize(std::size_t(indexed.span.sampleCount));
      job.room = tools.oneRecord;
    }
    job.decoded = decodeRecord(*tools.decoder, indexed, job.bytes, job.room);
    const bool isShort = samples_ == Samples::Kept && pieces_[places_[job.record].piece].isShort();
    if (isShort && job.decoded.isDecoded && holdsIntegers(indexed.format.encoding)) job.extrema = extremaOf(job.room);
    if (job.decoded.isDecoded && samples_ == Samples::SummedUp)
      addToTally(tallies_[job.record], indexed.format.encoding, job.room);
  }

  /// Where to decode a record to. Memory is first touched there, and not as a whole beforehand: it would have left
  /// the processor's caches by then.
  std::span<float> roomFor(std::size_t i) {
    if (samples_ != Samples::Kept) return {};
    const auto count = std::size_t(record(i).span.sampleCount);
    Piece& piece = pieces_[places_[i].piece];
    const std::size_t first = places_[i].first;
    if (piece.isShort()) {
      if (piece.shared == nullptr) blocks_.place(piece);
      return {piece.shared + first, count};
    }
    if (piece.samples.size() < first + count) {
      if (piece.samples.empty()) {
        piece.samples.reserve(piece.sampleCount());
        askForLargePages(piece.samples.data(), piece.sampleCount() * sizeof(float));
      }
      piece.samples.resize(first + count);
    }
    return std::span(piece.samples).subspan(first, count);
  }

  /// The pieces of a channel that were decoded as they were planned.
  void appendWhole(std::span<Piece> pieces, const ChannelCodes& codes, const QString& path, MiniSeedTraces& traces) {
    if (pieces.empty()) return;
    ChannelTraces channel(traces, codes, pieces.front().extent.first.startUs, path);
    traces.records.reserve(traces.records.size() + pieces.size());
    for (Piece& piece : pieces) {
      if (piece.isShort()) {
        channel.add(piece.extent, sharedBy(piece));
        continue;
      }
      Stretch stretch;
      stretch.extent = piece.extent;
      stretch.samples = std::move(piece.samples);
      channel.add(std::move(stretch));
    }
  }

  Stretch::SharedSamples sharedBy(const Piece& piece) const {
    return {piece.shared, piece.sampleCount(), blocks_.blockOf(piece), piece.extrema};
  }

  void takeWhole(Piece& piece, Stretch& stretch) {
    stretch.samples = std::move(piece.samples);
    if (piece.isShort()) stretch.shared = sharedBy(piece);
  }

  /// Takes the samples of a channel, whose records are given in time order.
  std::vector<Stretch> stretchesOf(const std::vector<std::size_t>& order) {
    Stretches stretches;
    for (const std::size_t i : order) {
      const Place& place = places_[i];
      if (!place.isFilled) {
        stretches.breakOff(place.piece);
        continue;
      }
      Stretch& stretch = stretches.add(place.piece, record(i).span);
      if (samples_ == Samples::SummedUp)
        stretch.tally.add(tallies_[i]);
      else if (samples_ == Samples::Located)
        stretch.places.push_back({record(i).offset, record(i).span.sampleCount});
      else
        takeSamples(i, stretch);
    }
    return stretches.take();
  }

  /// A piece that is whole hands all over with its first record.
  void takeSamples(std::size_t i, Stretch& stretch) {
    Piece& piece = pieces_[places_[i].piece];
    if (piece.isWhole) {
      if (places_[i].first == 0) takeWhole(piece, stretch);
      return;
    }
    const float* const first = (piece.isShort() ? piece.shared : piece.samples.data()) + places_[i].first;
    stretch.samples.insert(stretch.samples.end(), first, first + record(i).span.sampleCount);
  }

  FileWindow& file_;
  MiniSeedIndex& index_;
  Samples samples_;
  Spares<Tools> tools_{[] { return Tools(); }};
  std::vector<Place> places_;        // of every record of the index
  std::vector<SampleTally> tallies_; // of every record of the index, where samples are summed up
  std::vector<Piece> pieces_;
  SampleBlocks blocks_;
  qint64 stretchBytes_ = threadCount() > 1 ? kSharedStretchBytes : kStretchBytes;
};

} // namespace

MiniSeedTraces assembleTraces(FileWindow& file, MiniSeedIndex& index, const QString& path, Samples samples) {
  return Assembly(file, index, samples).run(path);
}

DecodedRecord decodeRecord(MiniSeedSamples& decoder, const IndexedRecord& record, QByteArrayView bytes,
                           std::span<float> samples) {
  DecodedRecord decoded;
  const Status status = decoder.decode(record.format, bytes, samples, decoded.doubt);
  if (!record.format.isProven) decoded.doubt = checkValueProblem(bytes);
  decoded.isDecoded = bool(status);
  if (!status) decoded.problem = status.error();
  return decoded;
}

void noteLosses(const IndexedRecord& record, const DecodedRecord& decoded, MiniSeedIndex& index) {
  if (!decoded.isDecoded)
    index.damagedRecords.add(record.offset, decoded.problem);
  else if (!decoded.doubt.isEmpty())
    index.doubtfulRecords.add(record.offset, decoded.doubt);
}

} // namespace xov
