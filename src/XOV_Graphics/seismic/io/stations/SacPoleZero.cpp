#include "XOV_Graphics/seismic/io/stations/SacPoleZero.h"

#include "XOV_Graphics/base/LeftOut.h"
#include "XOV_Graphics/base/Numbers.h"
#include "XOV_Graphics/base/TextLines.h"
#include "XOV_Graphics/base/TimeText.h"
#include "XOV_Graphics/seismic/Geodesy.h"

#include <algorithm>
#include <cmath>

namespace xov {

namespace {

using Roots = std::vector<std::complex<double>>;

constexpr int kMostRoots = 500;
constexpr std::size_t kMostBlocks = 20'000;
constexpr QByteArrayView kZeros("ZEROS");
constexpr QByteArrayView kPoles("POLES");
constexpr QByteArrayView kConstant("CONSTANT");

bool isWord(QByteArrayView found, QByteArrayView expected) {
  return found.compare(expected, Qt::CaseInsensitive) == 0;
}

std::optional<double> finiteNumber(QByteArrayView text) {
  const std::optional<double> number = toNumber<double>(text);
  return number && std::isfinite(*number) ? number : std::nullopt;
}

/// A time as the comments write it, also with the day of the year: 2002,323,21:07:00.0000. Words, as for an epoch
/// that has not ended, are an invalid one; nothing when it is neither.
std::optional<QDateTime> epochTime(const QString& written) {
  if (written.isEmpty() || !written.front().isDigit()) return QDateTime();
  const QStringList parts = written.split(QLatin1Char(','));
  if (parts.size() != 3) return parseUtcTime(written);
  const QDate newYear(parts[0].toInt(), 1, 1);
  const int day = parts[1].toInt();
  if (!newYear.isValid() || day < 1 || day > newYear.daysInYear()) return {};
  return parseUtcTime(newYear.addDays(day - 1).toString(Qt::ISODate) + QLatin1Char('T') + parts[2]);
}

class PoleZeroParser {
public:
  explicit PoleZeroParser(const QString& name) : name_(name) { inventory_.name = name; }

  Result<StationInventory> run(QByteArrayView text) {
    TextLines lines(withoutMark(text));
    while (const auto line = lines.next()) {
      line_ = lines.number();
      const QByteArrayView bare = withoutBlanks(*line);
      if (Status status = read(bare); !status) return Error{status.error()};
    }
    if (Status status = finishBlock(); !status) return Error{status.error()};
    if (inventory_.channels.empty()) return Error{name_ + ": holds no poles and zeros"};
    return std::move(inventory_);
  }

private:
  /// What a block has of its three parts so far.
  struct Block {
    StationChannel channel;
    QString inputUnits = QStringLiteral("M");
    PolesAndZeros filter;
    bool hasZeros = false;
    bool hasPoles = false;
    bool hasConstant = false;

    bool hasBegun() const { return hasZeros || hasPoles || hasConstant; }
  };

  Error fault(const QString& what) const {
    return {QStringLiteral("%1: line %2: %3").arg(name_).arg(line_).arg(what)};
  }

  Status read(QByteArrayView line) {
    if (line.isEmpty()) return {};
    if (line.startsWith('*')) return readComment(line.sliced(1));
    QByteArrayView rest = line;
    const QByteArrayView word = takeWord(rest);
    if (isWord(word, kZeros)) return beginRoots(rest, block_.hasZeros, &PolesAndZeros::zeros);
    if (isWord(word, kPoles)) return beginRoots(rest, block_.hasPoles, &PolesAndZeros::poles);
    if (isWord(word, kConstant)) return readConstant(rest);
    return readRoot(word, rest);
  }

  /// A part that the block has already is that of the next one.
  Status beginPart(bool hasPart) {
    roots_ = nullptr;
    return hasPart ? finishBlock() : Status();
  }

  Status beginRoots(QByteArrayView written, const bool& hasPart, Roots PolesAndZeros::*roots) {
    if (Status status = beginPart(hasPart); !status) return status;
    const auto count = toNumber<std::int32_t>(written);
    if (!count || *count < 0 || *count > kMostRoots)
      return fault(QStringLiteral("expected a number of 0 to %1").arg(kMostRoots));
    (roots == &PolesAndZeros::zeros ? block_.hasZeros : block_.hasPoles) = true;
    block_.channel.line = block_.channel.line > 0 ? block_.channel.line : line_;
    roots_ = &(block_.filter.*roots);
    roots_->assign(std::size_t(*count), 0);
    nextRoot_ = 0;
    return {};
  }

  Status readConstant(QByteArrayView written) {
    if (Status status = beginPart(block_.hasConstant); !status) return status;
    const auto constant = finiteNumber(written);
    if (!constant) return fault(QStringLiteral("CONSTANT: expected a number"));
    block_.filter.normalization = *constant;
    block_.hasConstant = true;
    block_.channel.line = block_.channel.line > 0 ? block_.channel.line : line_;
    return {};
  }

  Status readRoot(QByteArrayView word, QByteArrayView rest) {
    const auto real = finiteNumber(word);
    const auto imaginary = finiteNumber(withoutBlanks(rest));
    if (!real || !imaginary || roots_ == nullptr || nextRoot_ >= roots_->size())
      return fault(roots_ != nullptr && nextRoot_ < roots_->size()
                       ? QStringLiteral("expected a real and an imaginary part")
                       : QStringLiteral("expected ZEROS, POLES, CONSTANT or a comment"));
    (*roots_)[nextRoot_++] = {*real, *imaginary};
    return {};
  }

  /// A comment behind the parts of a block is the next block's.
  Status readComment(QByteArrayView comment) {
    if (block_.hasBegun()) {
      if (Status status = finishBlock(); !status) return status;
    }
    const qsizetype colon = comment.indexOf(':');
    if (colon < 0) return {};
    const QString key = QString::fromUtf8(comment.first(colon)).simplified().toUpper();
    return readAnnotation(key, QString::fromUtf8(comment.sliced(colon + 1)).trimmed());
  }

  Status readAnnotation(const QString& key, const QString& value) {
    const QString word = key.section(QLatin1Char(' '), 0, 0);
    StationChannel& channel = block_.channel;
    const struct {
      const char* word;
      QString* text;
    } texts[] = {{"NETWORK", &channel.codes[0]},
                 {"STATION", &channel.codes[1]},
                 {"LOCATION", &channel.codes[2]},
                 {"CHANNEL", &channel.codes[3]},
                 {"INPUT", &block_.inputUnits}};
    for (const auto& row : texts) {
      if (word != QLatin1String(row.word) || value.isEmpty()) continue;
      *row.text = value;
      return {};
    }
    if (word == QLatin1String("START")) return readTime(value, channel.epoch.start);
    if (word == QLatin1String("END")) return readTime(value, channel.epoch.end);
    const struct {
      const char* word;
      std::optional<double>* number;
    } numbers[] = {{"LATITUDE", &channel.latitudeDeg}, {"LONGITUDE", &channel.longitudeDeg},
                   {"ELEVATION", &channel.elevationM}, {"DEPTH", &channel.depthM},
                   {"AZIMUTH", &channel.azimuthDeg},   {"SAMPLE", &channel.sampleRateHz}};
    for (const auto& row : numbers) {
      if (word != QLatin1String(row.word) || value.isEmpty()) continue;
      *row.number = finiteNumber(value.toUtf8());
      if (!*row.number) return fault(word + ": expected a number");
    }
    // Some write the angle from the vertical under the same name; these say which one theirs is.
    if (key == QLatin1String("DIP (SEED)")) channel.dipDeg = finiteNumber(value.toUtf8());
    return {};
  }

  Status readTime(const QString& value, QDateTime& time) const {
    const std::optional<QDateTime> known = epochTime(value);
    if (!known) return fault(unreadableTime(value));
    time = *known;
    return {};
  }

  Status finishBlock() {
    Block block = std::exchange(block_, {});
    roots_ = nullptr;
    if (!block.hasBegun()) return {};
    if (inventory_.channels.size() == kMostBlocks)
      return fault(QStringLiteral("more than %1 blocks").arg(kMostBlocks));
    StationChannel& channel = block.channel;
    ResponseStage stage;
    stage.number = 1;
    stage.inputUnits = block.inputUnits;
    stage.outputUnits = QStringLiteral("COUNTS");
    stage.filter = std::move(block.filter);
    channel.response.stages.push_back(std::move(stage));
    const bool hasPlace = channel.latitudeDeg && channel.longitudeDeg;
    if (hasPlace && !isGeographicPoint(*channel.latitudeDeg, *channel.longitudeDeg))
      return fault(QStringLiteral("expected a latitude of -90 to 90 and a longitude of -360 to 360 above"));
    if (hasPlace && !channel.codes[1].isEmpty())
      inventory_.stations.push_back({channel.codes[0],
                                     channel.codes[1],
                                     {},
                                     channel.epoch,
                                     *channel.latitudeDeg,
                                     *channel.longitudeDeg,
                                     channel.elevationM,
                                     channel.line});
    inventory_.channels.push_back(std::move(channel));
    return {};
  }

  QString name_;
  qint64 line_ = 0;
  StationInventory inventory_;
  Block block_;
  Roots* roots_ = nullptr; ///< those of the block whose lines are read; null between parts
  std::size_t nextRoot_ = 0;
};

} // namespace

bool isSacPoleZero(QByteArrayView text) {
  TextLines lines(withoutMark(text));
  while (const auto line = lines.next()) {
    QByteArrayView rest = withoutBlanks(*line);
    if (rest.isEmpty()) continue;
    if (rest.startsWith('*')) return true;
    const QByteArrayView word = takeWord(rest);
    return isWord(word, kZeros) || isWord(word, kPoles) || isWord(word, kConstant);
  }
  return false;
}

Result<StationInventory> parseSacPoleZero(QByteArrayView text, const QString& name) {
  return PoleZeroParser(name).run(text);
}

} // namespace xov
