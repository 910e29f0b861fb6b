#include "apps/xov/inputs/ColumnFile.h"

#include <XOV_Graphics/base/Fields.h>
#include <XOV_Graphics/base/Headings.h>
#include <XOV_Graphics/base/InputFile.h>
#include <XOV_Graphics/base/Numbers.h>
#include <XOV_Graphics/base/TextLines.h>
#include <algorithm>
#include <limits>
#include <optional>

namespace xov::cli {

namespace {

constexpr qint64 kHeadBytes = 1 << 20;
constexpr qint64 kMostBytes = qint64(1) << 31;

// NaN for an empty field.
std::optional<float> numberIn(QByteArrayView field) {
  if (field.isEmpty()) return std::numeric_limits<float>::quiet_NaN();
  const auto number = toNumber<double>(field, OutOfRange::Nearest);
  return number ? std::optional(toSinglePrecision(*number)) : std::nullopt;
}

bool isNumber(QByteArrayView field) { return numberIn(bareField(field)).has_value(); }

// Whether a first line names the columns: where something else than a number stands in a wanted one, or nothing in
// all of them. What the other columns hold says nothing, be it a station's name or a year.
bool isHeading(const std::vector<QByteArrayView>& fields, const QStringList& wanted) {
  if (std::all_of(fields.begin(), fields.end(), isNumber)) return false;
  bool hasNumber = false;
  for (const QString& column : wanted) {
    bool ok = false;
    const qsizetype place = qsizetype(column.toInt(&ok)) - 1;
    if (!ok || place < 0 || place >= qsizetype(fields.size())) return true;
    const QByteArrayView field = fields[std::size_t(place)];
    if (!isNumber(field)) return true;
    hasNumber = hasNumber || !bareField(field).isEmpty();
  }
  return !hasNumber;
}

// How the lines of a file are taken apart, as its first line tells.
struct Layout {
  char separator = kBlankSeparator;
  QStringList names; // empty without a heading
};

Layout layoutOf(QByteArrayView firstLine, const QStringList& wanted) {
  const auto layoutBy = [&](char separator) {
    const std::vector<QByteArrayView> fields = fieldsOf(firstLine, separator);
    Layout layout{separator, {}};
    if (!isHeading(fields, wanted)) return layout;
    for (const QByteArrayView field : fields)
      layout.names.append(fieldText(field));
    return layout;
  };
  for (const char separator : {';', ','}) {
    if (firstLine.contains(separator)) return layoutBy(separator);
  }
  const std::vector<QByteArrayView> words = fieldsOf(firstLine, kBlankSeparator);
  const bool tabs = firstLine.contains('\t') && !std::all_of(words.begin(), words.end(), isNumber);
  return layoutBy(tabs ? '\t' : kBlankSeparator);
}

class ColumnParser {
public:
  ColumnParser(QString name, const QStringList& wanted) : name_(std::move(name)), wanted_(wanted) {}

  Result<ColumnData> parse(QByteArrayView text);

private:
  Status start(QByteArrayView firstLine);
  Status findColumn(const QString& wanted);
  Status addRow(QByteArrayView line);
  Error fault(const QString& what) const {
    return {QStringLiteral("%1: line %2: %3").arg(name_).arg(line_).arg(what)};
  }

  QString name_;
  QStringList wanted_;
  qint64 line_ = 0;
  Layout layout_;
  std::vector<std::size_t> places_; // of the wanted columns among the fields
  std::size_t fieldsNeeded_ = 0;
  std::vector<QByteArrayView> fields_;
  ColumnData data_;
};

Status ColumnParser::findColumn(const QString& wanted) {
  bool isNumber = false;
  const int number = wanted.toInt(&isNumber);
  // A heading may be a number itself, such as a year.
  const qsizetype heading = headingIndex(layout_.names, wanted);
  const qsizetype place = heading < 0 && isNumber ? qsizetype(number) - 1 : heading;
  if (place < 0) {
    const QString known = layout_.names.isEmpty()
                              ? QStringLiteral("the file has no headings")
                              : "the headings are " + shortened(layout_.names.join(QStringLiteral(", ")));
    return Error{QStringLiteral("%1: there is no column '%2'; %3").arg(name_, wanted, known)};
  }
  places_.push_back(std::size_t(place));
  fieldsNeeded_ = std::max(fieldsNeeded_, std::size_t(place) + 1);
  data_.names.append(layout_.names.value(place));
  return {};
}

Status ColumnParser::start(QByteArrayView firstLine) {
  layout_ = layoutOf(firstLine, wanted_);
  for (const QString& wanted : wanted_) {
    if (Status status = findColumn(wanted); !status) return status;
  }
  data_.columns.resize(places_.size());
  return layout_.names.isEmpty() ? addRow(firstLine) : Status();
}

Status ColumnParser::addRow(QByteArrayView line) {
  fields_.clear();
  FieldReader reader(line, layout_.separator);
  while (fields_.size() < fieldsNeeded_) {
    const auto field = reader.next();
    if (!field)
      return fault(QStringLiteral("expected at least %2 columns, found %1").arg(fields_.size()).arg(fieldsNeeded_));
    fields_.push_back(*field);
  }
  for (std::size_t i = 0; i < places_.size(); ++i) {
    const QByteArrayView field = fields_[places_[i]];
    const std::optional<float> value = numberIn(bareField(field));
    if (!value)
      return fault(QStringLiteral("column %1: found '%2', expected a number")
                       .arg(places_[i] + 1)
                       .arg(shortened(fieldText(field))));
    data_.columns[i].push_back(*value);
  }
  return {};
}

Result<ColumnData> ColumnParser::parse(QByteArrayView text) {
  TextLines lines(withoutMark(text));
  bool started = false;
  while (const auto line = lines.next()) {
    line_ = lines.number();
    const QByteArrayView row = withoutBlanks(*line);
    if (row.isEmpty() || row.front() == '#') continue;
    if (Status status = started ? addRow(row) : start(row); !status) return Error{status.error()};
    started = true;
  }
  if (!started || data_.columns.empty() || data_.columns.front().empty())
    return Error{name_ + QStringLiteral(": holds no numbers")};
  return std::move(data_);
}

} // namespace

Result<ColumnData> readColumns(const QString& path, const QStringList& wanted) {
  const bool fromInput = path == QLatin1String("-");
  const QString name = fromInput ? QStringLiteral("standard input") : path;
  CheckedFile file(path);
  if (fromInput) {
    if (!file.open(0, QIODevice::ReadOnly | QIODevice::Unbuffered))
      return Error{QStringLiteral("%1: cannot be opened: %2").arg(name, file.errorString())};
  } else if (Status status = openForReading(file, InputKind::AlsoPipes); !status) {
    return Error{status.error()};
  }
  // What holds what no text holds is not read to its end, which a device may not have.
  if (file.peek(kHeadBytes).contains('\0')) return Error{name + QStringLiteral(": is not a text file")};
  const Result<QByteArray> contents = readToEnd(file, name, kMostBytes);
  if (!contents) return Error{contents.error()};
  if (contents->contains('\0')) return Error{name + QStringLiteral(": is not a text file")};
  return parseColumns(*contents, name, wanted);
}

Result<ColumnData> parseColumns(const QByteArray& text, const QString& name, const QStringList& wanted) {
  return ColumnParser(name, wanted).parse(text);
}

} // namespace xov::cli
