#include "XOV_Graphics/seismic/io/mseed/MiniSeedAssembly.h"

#include "XOV_Graphics/base/LargePages.h"
#include "XOV_Graphics/seismic/io/mseed/MiniSeed3Record.h"

#include <QHashFunctions>

#include <algorithm>
#include <limits>
#include <set>
#include <utility>

namespace xov {

namespace {

constexpr qsizetype kSequenceBytes = 6; // at the start of a record

/// An unbroken piece of a channel: how many samples it has, and as many of them as were decoded, one after the other.
struct Piece {
  std::size_t sampleCount = 0;
  std::vector<float> samples;
  bool isWhole = true; ///< false when a record of it could not be decoded
};

/// Where the samples of a record go.
struct Place {
  static constexpr std::uint32_t kNowhere = std::numeric_limits<std::uint32_t>::max();

  std::size_t first = 0;
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
    std::vector<std::vector<std::size_t>> recordsOf(index_.channels.size());
    for (std::size_t i = 0; i < index_.records.size(); ++i)
      recordsOf[record(i).channel].push_back(i);
    for (std::vector<std::size_t>& records : recordsOf) {
      records = inOrder(std::move(records));
      plan(records);
    }
    decode();
    MiniSeedTraces traces;
    for (std::size_t channel = 0; channel < recordsOf.size(); ++channel)
      traces.append(index_.channels[channel], stretchesOf(std::exchange(recordsOf[channel], {})), path);
    return traces;
  }

private:
  const IndexedRecord& record(std::size_t i) const { return index_.records[i]; }

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
    for (const std::size_t i : order) {
      const std::size_t number = before + joiner.add(record(i).span);
      if (number == pieces_.size()) pieces_.emplace_back();
      std::size_t& count = pieces_[number].sampleCount;
      places_[i] = {count, std::uint32_t(number), false};
      count += std::size_t(record(i).span.sampleCount);
    }
  }

  /// Decodes the records of all pieces in one walk through the file.
  void decode() {
    for (std::size_t i = 0; i < places_.size(); ++i) {
      if (places_[i].piece == Place::kNowhere) continue;
      const qsizetype length = record(i).format.length;
      const QByteArrayView view = file_.at(record(i).offset, length);
      if (view.size() < length)
        index_.damagedRecords.add(record(i).offset, QStringLiteral("the file has become shorter while it was read"));
      else
        places_[i].isFilled = decodeRecord(decoder_, record(i), view.first(length), roomFor(i), index_);
      if (!places_[i].isFilled) pieces_[places_[i].piece].isWhole = false;
      if (places_[i].isFilled && samples_ == Samples::SummedUp)
        addToTally(tallies_[i], record(i).format.encoding, oneRecord_);
    }
  }

  /// Where to decode a record to. Memory is first touched there, and not as a whole beforehand: it would have left
  /// the processor's caches by then.
  std::span<float> roomFor(std::size_t i) {
    const auto count = std::size_t(record(i).span.sampleCount);
    if (samples_ == Samples::SummedUp) {
      oneRecord_.resize(count);
      return oneRecord_;
    }
    Piece& piece = pieces_[places_[i].piece];
    const std::size_t first = places_[i].first;
    if (piece.samples.size() < first + count) {
      if (piece.samples.empty()) {
        piece.samples.reserve(piece.sampleCount);
        askForLargePages(piece.samples.data(), piece.sampleCount * sizeof(float));
      }
      piece.samples.resize(first + count);
    }
    return std::span(piece.samples).subspan(first, count);
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
      else
        takeSamples(i, stretch);
    }
    return stretches.take();
  }

  /// A piece that is whole hands all over with its first record.
  void takeSamples(std::size_t i, Stretch& stretch) {
    Piece& piece = pieces_[places_[i].piece];
    if (piece.isWhole) {
      if (places_[i].first == 0) stretch.samples = std::move(piece.samples);
      return;
    }
    const auto first = piece.samples.begin() + std::ptrdiff_t(places_[i].first);
    stretch.samples.insert(stretch.samples.end(), first, first + record(i).span.sampleCount);
  }

  FileWindow& file_;
  MiniSeedIndex& index_;
  Samples samples_;
  MiniSeedSamples decoder_;
  std::vector<Place> places_;        // of every record of the index
  std::vector<SampleTally> tallies_; // of every record of the index, where samples are summed up
  std::vector<float> oneRecord_;
  std::vector<Piece> pieces_;
};

} // namespace

MiniSeedTraces assembleTraces(FileWindow& file, MiniSeedIndex& index, const QString& path, Samples samples) {
  return Assembly(file, index, samples).run(path);
}

bool decodeRecord(MiniSeedSamples& decoder, const IndexedRecord& record, QByteArrayView bytes,
                  std::span<float> samples, MiniSeedIndex& index) {
  QString doubt;
  const Status status = decoder.decode(record.format, bytes, samples, doubt);
  if (!record.format.isProven) doubt = checkValueProblem(bytes);
  if (!status)
    index.damagedRecords.add(record.offset, status.error());
  else if (!doubt.isEmpty())
    index.doubtfulRecords.add(record.offset, doubt);
  return bool(status);
}

} // namespace xov
