#include "XOV_Graphics/seismic/io/sac/SacAlphanumeric.h"

#include "XOV_Graphics/base/Numbers.h"
#include "XOV_Graphics/base/TextLines.h"
#include "XOV_Graphics/seismic/io/sac/SacChecks.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstring>
#include <numeric>
#include <vector>

namespace xov {

namespace {

constexpr int kValuesPerLine = 5;
constexpr int kFloatColumns = 15;
constexpr int kIntegerColumns = 10;
constexpr int kTextColumns = 8;
constexpr int kHeaderLines = 30;
constexpr int kTextLines = 8; // the last ones of the header

using TextBlock = std::array<char, sizeof(SacHeader) - offsetof(SacHeader, kstnm)>;

/// The widths of the text fields on one line; the first line holds the long event name.
struct TextWidths {
  std::array<int, 3> columns;
  int fields;
};
constexpr TextWidths kFirstTextLine = {{kTextColumns, 2 * kTextColumns, 0}, 2};
constexpr TextWidths kOtherTextLines = {{kTextColumns, kTextColumns, kTextColumns}, 3};
static_assert(kTextLines * 3 * kTextColumns == sizeof(TextBlock));

/// Takes numbers off `line` with `take` until it is empty or there are `limit` of them. When one cannot be read,
/// appends nothing and returns false.
template <typename Number, typename Take>
bool appendNumbers(QByteArrayView& line, std::size_t limit, Take take, std::vector<Number>& numbers) {
  const std::size_t before = numbers.size();
  while (!line.isEmpty() && numbers.size() - before < limit) {
    const std::optional<Number> number = toNumber<Number>(take(line));
    if (!number) {
      numbers.resize(before);
      return false;
    }
    numbers.push_back(*number);
  }
  return true;
}

enum class Wanted { UpToLimit, ExactlyLimit };

/// Appends at most `limit` numbers of a line: words, or where these are no numbers, columns that touch each other.
/// Wanted::ExactlyLimit takes a line only with that many and nothing after them. When neither will do, appends
/// nothing and returns false.
template <typename Number>
bool appendLine(QByteArrayView line, int columns, std::size_t limit, Wanted wanted, std::vector<Number>& numbers) {
  const std::size_t before = numbers.size();
  const auto take = [&](QByteArrayView rest, auto takeField) {
    if (!appendNumbers(rest, limit, takeField, numbers)) return false;
    if (wanted == Wanted::UpToLimit || (rest.isEmpty() && numbers.size() - before == limit)) return true;
    numbers.resize(before);
    return false;
  };
  const auto takeColumn = [columns](QByteArrayView& from) { return takeColumns(from, columns); };
  return take(withoutBlanks(line), takeWord) || (line.size() % columns == 0 && take(line, takeColumn));
}

/// Appends the numbers of a header line, which holds five and nothing else.
template <typename Number>
bool appendFive(QByteArrayView line, int columns, std::vector<Number>& numbers) {
  return appendLine(line, columns, kValuesPerLine, Wanted::ExactlyLimit, numbers);
}

constexpr qsizetype kQuotedBytes = 80;

/// A line as an error quotes it: cut to one line of a terminal, without control characters.
QString quoted(QByteArrayView line) {
  QString text = QString::fromLatin1(line.first(std::min(line.size(), kQuotedBytes)));
  for (QChar& c : text) {
    if (!c.isPrint()) c = QLatin1Char('?');
  }
  return QLatin1Char('"') + text + QLatin1Char('"');
}

QString linePlace(qint64 line) { return "line " + QString::number(line); }

Error headerTooShort(const QString& name, qint64 lines) {
  return Error{name + ": the header ends after line " + QString::number(lines) + ", expected " +
               QString::number(kHeaderLines) + " lines"};
}

/// Reads `count` numbers of the header, five a line.
template <typename Number>
Status readBlock(TextLines& lines, int count, int columns, const QString& name, std::vector<Number>& numbers) {
  while (numbers.size() < std::size_t(count)) {
    const std::optional<QByteArrayView> line = lines.next();
    if (!line) return headerTooShort(name, lines.number());
    if (!appendFive(*line, columns, numbers))
      return sacError(name, linePlace(lines.number()), quoted(*line),
                      "five numbers of " + QString::number(columns) + " columns");
  }
  return {};
}

/// The text fields of a line that is too short for its columns, when blanks separate them and the columns would cut
/// through one; else nothing.
std::optional<std::array<QByteArrayView, 3>> separatedFields(QByteArrayView line, const TextWidths& widths) {
  if (line.size() >= std::accumulate(widths.columns.begin(), widths.columns.end(), 0)) return {};
  std::array<QByteArrayView, 3> words;
  bool cut = false;
  QByteArrayView rest = line;
  for (int i = 0; i < widths.fields; ++i) {
    const QByteArrayView word = takeWord(rest);
    words[std::size_t(i)] = word;
    if (word.isEmpty()) return {};
    const qsizetype start = word.data() - line.data();
    qsizetype edge = 0; // where the column field ends in which the word begins
    for (int field = 0; field < widths.fields && edge <= start; ++field)
      edge += widths.columns[std::size_t(field)];
    cut = cut || start + word.size() > edge;
  }
  if (!cut || !rest.isEmpty()) return {};
  return words;
}

/// Writes the text fields of a line, padded with blanks, to `out`, which it moves on.
void readTextLine(QByteArrayView line, const TextWidths& widths, char*& out) {
  const auto separated = separatedFields(line, widths);
  for (int i = 0; i < widths.fields; ++i) {
    const qsizetype width = widths.columns[std::size_t(i)];
    const QByteArrayView inColumns = takeColumns(line, width);
    const QByteArrayView text = separated ? (*separated)[std::size_t(i)] : inColumns;
    const qsizetype length = std::min(text.size(), width);
    std::copy_n(text.data(), length, out);
    std::fill(out + length, out + width, ' ');
    out += width;
  }
}

Status readText(TextLines& lines, const QString& name, TextBlock& text) {
  char* out = text.data();
  for (int i = 0; i < kTextLines; ++i) {
    const std::optional<QByteArrayView> line = lines.next();
    if (!line) return headerTooShort(name, lines.number());
    readTextLine(*line, i == 0 ? kFirstTextLine : kOtherTextLines, out);
  }
  return {};
}

Status readHeader(TextLines& lines, const QString& name, SacHeader& header) {
  std::vector<float> floats;
  std::vector<std::int32_t> integers;
  TextBlock text;
  if (Status status = readBlock(lines, kSacFloatCount, kFloatColumns, name, floats); !status) return status;
  if (Status status = readBlock(lines, kSacIntegerCount, kIntegerColumns, name, integers); !status) return status;
  if (Status status = readText(lines, name, text); !status) return status;
  char* const out = reinterpret_cast<char*>(&header);
  std::memcpy(out, floats.data(), kSacFloatCount * sizeof(float));
  std::memcpy(out + offsetof(SacHeader, nzyear), integers.data(), kSacIntegerCount * sizeof(std::int32_t));
  std::memcpy(out + offsetof(SacHeader, kstnm), text.data(), text.size());
  if (Status status = checkSacHeader(header, name, SacPlaces::Lines); !status) return status;
  return checkSacTimes(header.delta, sacPlace("delta", offsetof(SacHeader, delta), SacPlaces::Lines), header.b,
                       sacPlace("b", offsetof(SacHeader, b), SacPlaces::Lines), name);
}

Status readSamples(TextLines& lines, const SacHeader& header, const QString& name, std::vector<float>& samples) {
  const QString place = sacPlace("npts", offsetof(SacHeader, npts), SacPlaces::Lines);
  const std::size_t wanted = std::size_t(header.npts);
  // A sample takes two bytes at least: a digit and what separates it from the next.
  const qsizetype room = (lines.remaining() + 1) / 2;
  if (header.npts > room)
    return Error{name + ": " + place + ": found " + QString::number(header.npts) + ", but the file has room for " +
                 QString::number(room) + " samples"};
  samples.reserve(wanted);
  while (samples.size() < wanted) {
    const std::optional<QByteArrayView> line = lines.next();
    if (!line)
      return Error{name + ": " + place + ": found " + QString::number(header.npts) + ", but the file holds " +
                   QString::number(samples.size()) + " samples"};
    if (!appendLine(*line, kFloatColumns, wanted - samples.size(), Wanted::UpToLimit, samples))
      return sacError(name, linePlace(lines.number()), quoted(*line), "numbers");
  }
  return {};
}

bool isTextByte(char c) { return (c >= ' ' && c <= '~') || c == '\t' || c == '\r' || c == '\n'; }

constexpr std::size_t kLongestNumber = 24;
using NumberText = std::array<char, kLongestNumber>;

std::size_t writeNumber(std::int32_t value, NumberText& text) {
  return std::size_t(std::to_chars(text.data(), text.data() + text.size(), value).ptr - text.data());
}

std::size_t writeNumber(float value, NumberText& text) {
  constexpr int kDigitsThatLeaveABlank = 7; // after the point: "-1.1754944e-38" has 14 characters
  const auto length = [&](auto... format) {
    return std::size_t(std::to_chars(text.data(), text.data() + text.size(), value, format...).ptr - text.data());
  };
  const std::size_t shortest = length();
  return shortest < kFloatColumns ? shortest : length(std::chars_format::scientific, kDigitsThatLeaveABlank);
}

/// Writes one line of at most five numbers, flush right in their columns. When an integer is wider than that, blanks
/// separate the numbers of its line instead.
template <typename Number>
void writeLine(QByteArray& out, std::span<const Number> numbers, std::size_t columns) {
  std::array<NumberText, kValuesPerLine> texts;
  std::array<std::size_t, kValuesPerLine> lengths{};
  for (std::size_t i = 0; i < numbers.size(); ++i)
    lengths[i] = writeNumber(numbers[i], texts[i]);
  const bool fits = *std::max_element(lengths.begin(), lengths.end()) <= columns;
  for (std::size_t i = 0; i < numbers.size(); ++i) {
    out.append(qsizetype(fits ? columns - lengths[i] : 1), ' ');
    out.append(texts[i].data(), qsizetype(lengths[i]));
  }
  out.append('\n');
}

/// Writes numbers, five a line.
template <typename Number>
void writeLines(QByteArray& out, std::span<const Number> numbers, std::size_t columns) {
  while (!numbers.empty()) {
    const std::size_t count = std::min(numbers.size(), std::size_t(kValuesPerLine));
    writeLine(out, numbers.first(count), columns);
    numbers = numbers.subspan(count);
  }
}

QByteArray headerText(const SacHeader& header) {
  std::array<float, kSacFloatCount> floats;
  std::array<std::int32_t, kSacIntegerCount> integers;
  TextBlock fields;
  const char* const in = reinterpret_cast<const char*>(&header);
  std::memcpy(floats.data(), in, sizeof(floats));
  std::memcpy(integers.data(), in + offsetof(SacHeader, nzyear), sizeof(integers));
  std::memcpy(fields.data(), in + offsetof(SacHeader, kstnm), sizeof(fields));
  for (char& c : fields) {
    // A NUL or a line end would break the line.
    if (c >= 0 && c < ' ') c = ' ';
  }
  QByteArray text;
  writeLines<float>(text, floats, kFloatColumns);
  writeLines<std::int32_t>(text, integers, kIntegerColumns);
  constexpr qsizetype kLineBytes = 3 * kTextColumns;
  for (int i = 0; i < kTextLines; ++i)
    text.append(fields.data() + i * kLineBytes, kLineBytes).append('\n');
  return text;
}

} // namespace

bool isSacText(QByteArrayView head) {
  constexpr qsizetype kFirstLine = kValuesPerLine * kFloatColumns;
  const QByteArrayView start = head.first(std::min(head.size(), kFirstLine));
  return !start.isEmpty() && std::all_of(start.begin(), start.end(), isTextByte);
}

bool isSacAlphanumeric(QByteArrayView head) {
  if (!isSacText(head)) return false;
  std::vector<float> numbers;
  return appendFive(*TextLines(head).next(), kFloatColumns, numbers);
}

Result<std::shared_ptr<SacSeismogram>> readSacAlphanumeric(QIODevice& device, const QString& name,
                                                           const QString& path) {
  const QByteArray text = device.readAll();
  TextLines lines(text);
  SacHeader header;
  if (Status status = readHeader(lines, name, header); !status) return Error{status.error()};
  std::vector<float> samples;
  if (Status status = readSamples(lines, header, name, samples); !status) return Error{status.error()};
  return std::make_shared<SacSeismogram>(header, std::move(samples), path);
}

Status writeSacAlphanumeric(QIODevice& device, const SacHeader& header, std::span<const float> samples,
                            const QString& name) {
  constexpr std::size_t kChunk = std::size_t(kValuesPerLine) * 1000;
  bool written = true;
  QByteArray text = headerText(header);
  do {
    written = device.write(text) == text.size();
    text.clear();
    const std::span<const float> chunk = samples.first(std::min(kChunk, samples.size()));
    writeLines(text, chunk, kFloatColumns);
    samples = samples.subspan(chunk.size());
  } while (written && !text.isEmpty());
  if (!written) return Error{name + ": cannot be written: " + device.errorString()};
  return {};
}

} // namespace xov
