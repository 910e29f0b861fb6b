#include "apps/xov/inputs/ColumnFile.h"

#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdio>
#include <limits>
#include <optional>
#include <string_view>

namespace xov::cli {

namespace {

constexpr qint64 kChunkBytes = 1 << 20;
constexpr qint64 kMostBytes = qint64(1) << 31;
constexpr char kBlank = ' '; // stands for any number of blanks and tabs
constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

bool isBlank(char c) { return c == ' ' || c == '\t' || c == '\r'; }

std::string_view trimmed(std::string_view text) {
  while (!text.empty() && isBlank(text.front()))
    text.remove_prefix(1);
  while (!text.empty() && isBlank(text.back()))
    text.remove_suffix(1);
  return text;
}

// Takes the fields off a line, one after the other. A separator at the end of the line opens one more, empty field;
// blanks there open none.
class FieldReader {
public:
  FieldReader(std::string_view line, char separator) : rest_(line), separator_(separator) {}

  std::optional<std::string_view> next() {
    if (separator_ == kBlank) {
      rest_ = trimmed(rest_);
      more_ = !rest_.empty();
    }
    if (!more_) return {};
    const std::size_t end = fieldEnd();
    const std::string_view field = rest_.substr(0, end);
    more_ = end != std::string_view::npos;
    rest_.remove_prefix(more_ ? end + 1 : rest_.size());
    return withoutQuotes(trimmed(field));
  }

private:
  // Quotes keep a separator within a field; one without its fellow is a character like others.
  std::size_t fieldEnd() const {
    const std::size_t start = rest_.find_first_not_of(' ');
    const bool quoted = start != std::string_view::npos && rest_[start] == '"';
    const std::size_t closing = quoted ? rest_.find('"', start + 1) : std::string_view::npos;
    const std::size_t from = closing == std::string_view::npos ? 0 : closing;
    return separator_ == kBlank ? rest_.find_first_of(" \t", from) : rest_.find(separator_, from);
  }

  static std::string_view withoutQuotes(std::string_view field) {
    const bool quoted = field.size() >= 2 && field.front() == '"' && field.back() == '"';
    return quoted ? trimmed(field.substr(1, field.size() - 2)) : field;
  }

  std::string_view rest_;
  char separator_;
  bool more_ = true;
};

std::vector<std::string_view> fieldsOf(std::string_view line, char separator) {
  std::vector<std::string_view> fields;
  FieldReader reader(line, separator);
  while (const auto field = reader.next())
    fields.push_back(*field);
  return fields;
}

float toFloat(double value) {
  constexpr double kLargest = double(std::numeric_limits<float>::max());
  if (std::abs(value) > kLargest)
    return std::copysign(std::numeric_limits<float>::infinity(), value > 0 ? 1.0F : -1.0F);
  return float(value);
}

std::optional<float> numberIn(std::string_view field) {
  if (field.empty()) return std::numeric_limits<float>::quiet_NaN();
  if (field.front() == '+') field.remove_prefix(1);
  double value = 0;
  const char* const fieldEnd = field.data() + field.size();
  const auto [end, problem] = std::from_chars(field.data(), fieldEnd, value);
  if (end != fieldEnd || problem == std::errc::invalid_argument) return {};
  // Beyond a double; this one tells whether it is infinity or zero that is nearer.
  if (problem == std::errc::result_out_of_range)
    value = QString::fromLatin1(field.data(), qsizetype(field.size())).toDouble();
  return toFloat(value);
}

bool areNumbers(const std::vector<std::string_view>& fields) {
  return std::all_of(fields.begin(), fields.end(), [](std::string_view f) { return numberIn(f).has_value(); });
}

QString textOf(std::string_view field) { return QString::fromUtf8(field.data(), qsizetype(field.size())); }

// How the lines of a file are taken apart, as its first line tells.
struct Layout {
  char separator = kBlank;
  QStringList names; // empty without a heading
};

Layout layoutOf(std::string_view firstLine) {
  for (const char separator : {';', ','}) {
    if (firstLine.find(separator) == std::string_view::npos) continue;
    const auto fields = fieldsOf(firstLine, separator);
    Layout layout{separator, {}};
    if (areNumbers(fields)) return layout;
    for (const std::string_view field : fields)
      layout.names.append(textOf(field));
    return layout;
  }
  if (areNumbers(fieldsOf(firstLine, kBlank))) return {};
  const bool tabs = firstLine.find('\t') != std::string_view::npos;
  Layout layout{tabs ? '\t' : kBlank, {}};
  for (const std::string_view field : fieldsOf(firstLine, layout.separator))
    layout.names.append(textOf(field));
  return layout;
}

class ColumnParser {
public:
  ColumnParser(QString name, const QStringList& wanted) : name_(std::move(name)), wanted_(wanted) {}

  Result<ColumnData> parse(std::string_view text);

private:
  std::string_view takeLine(std::string_view& text);
  Status start(std::string_view firstLine);
  Status findColumn(const QString& wanted);
  Status addRow(std::string_view line);
  Error fault(const QString& what) const {
    return {QStringLiteral("%1: line %2: %3").arg(name_).arg(line_).arg(what)};
  }

  QString name_;
  QStringList wanted_;
  std::int64_t line_ = 0;
  Layout layout_;
  std::vector<std::size_t> places_; // of the wanted columns among the fields
  std::size_t fieldsNeeded_ = 0;
  std::vector<std::string_view> fields_;
  ColumnData data_;
};

std::string_view ColumnParser::takeLine(std::string_view& text) {
  const std::size_t end = text.find('\n');
  const std::string_view line = trimmed(text.substr(0, end));
  text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
  ++line_;
  return line;
}

Status ColumnParser::findColumn(const QString& wanted) {
  bool isNumber = false;
  const int number = wanted.toInt(&isNumber);
  qsizetype place = isNumber ? number - 1 : layout_.names.indexOf(wanted);
  // A heading may be a number itself, such as a year.
  if (isNumber && layout_.names.contains(wanted)) place = layout_.names.indexOf(wanted);
  if (place < 0) {
    const QString known = layout_.names.isEmpty() ? QStringLiteral("the file has no headings")
                                                  : "the headings are " + layout_.names.join(QStringLiteral(", "));
    return Error{QStringLiteral("%1: there is no column '%2'; %3").arg(name_, wanted, known)};
  }
  places_.push_back(std::size_t(place));
  fieldsNeeded_ = std::max(fieldsNeeded_, std::size_t(place) + 1);
  data_.names.append(layout_.names.value(place));
  return {};
}

Status ColumnParser::start(std::string_view firstLine) {
  layout_ = layoutOf(firstLine);
  for (const QString& wanted : wanted_) {
    if (Status status = findColumn(wanted); !status) return status;
  }
  data_.columns.resize(places_.size());
  return layout_.names.isEmpty() ? addRow(firstLine) : Status();
}

Status ColumnParser::addRow(std::string_view line) {
  fields_.clear();
  FieldReader reader(line, layout_.separator);
  while (fields_.size() < fieldsNeeded_) {
    const auto field = reader.next();
    if (!field)
      return fault(QStringLiteral("expected at least %2 columns, found %1").arg(fields_.size()).arg(fieldsNeeded_));
    fields_.push_back(*field);
  }
  for (std::size_t i = 0; i < places_.size(); ++i) {
    const std::string_view field = fields_[places_[i]];
    const std::optional<float> value = numberIn(field);
    if (!value) {
      return fault(QStringLiteral("column %1: found '%2', expected a number").arg(places_[i] + 1).arg(textOf(field)));
    }
    data_.columns[i].push_back(*value);
  }
  return {};
}

Result<ColumnData> ColumnParser::parse(std::string_view text) {
  if (text.starts_with(kByteOrderMark)) text.remove_prefix(kByteOrderMark.size());
  bool started = false;
  while (!text.empty()) {
    const std::string_view line = takeLine(text);
    if (line.empty() || line.front() == '#') continue;
    if (Status status = started ? addRow(line) : start(line); !status) return Error{status.error()};
    started = true;
  }
  if (!started || data_.columns.empty() || data_.columns.front().empty())
    return Error{name_ + QStringLiteral(": holds no numbers")};
  return std::move(data_);
}

// All of the file, unless it is too large or holds what no text holds.
Result<QByteArray> contentsOf(QFile& file, const QString& name) {
  QByteArray all;
  while (true) {
    const QByteArray chunk = file.read(kChunkBytes);
    if (chunk.isEmpty()) break;
    if (chunk.contains('\0')) return Error{name + QStringLiteral(": is not a text file")};
    if (all.size() + chunk.size() > kMostBytes) return Error{name + QStringLiteral(": is larger than 2 GiB")};
    all += chunk;
  }
  if (file.error() != QFileDevice::NoError) return Error{name + QStringLiteral(": ") + file.errorString()};
  return all;
}

} // namespace

Result<ColumnData> readColumns(const QString& path, const QStringList& wanted) {
  const bool fromInput = path == QLatin1String("-");
  const QString name = fromInput ? QStringLiteral("standard input") : path;
  QFile file(path);
  if (!fromInput && QFileInfo(path).isDir()) return Error{name + QStringLiteral(": is a folder, expected a file")};
  const bool open = fromInput ? file.open(stdin, QIODevice::ReadOnly) : file.open(QIODevice::ReadOnly);
  if (!open) return Error{QStringLiteral("%1: cannot be opened: %2").arg(name, file.errorString())};
  const Result<QByteArray> contents = contentsOf(file, name);
  if (!contents) return Error{contents.error()};
  return parseColumns(*contents, name, wanted);
}

Result<ColumnData> parseColumns(const QByteArray& text, const QString& name, const QStringList& wanted) {
  return ColumnParser(name, wanted).parse({text.constData(), std::size_t(text.size())});
}

} // namespace xov::cli
