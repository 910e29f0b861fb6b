#include "apps/resources/Netcdf.h"

#include <QtEndian>

#include <algorithm>
#include <array>
#include <bit>
#include <cstdint>
#include <optional>

namespace xov::maker {

namespace {

enum Tag : std::uint32_t { kAbsent = 0, kDimensions = 10, kVariables = 11, kAttributes = 12 };
enum Type : std::uint32_t { kFloat = 5, kDouble = 6 };
// Bytes of a value of the types 1 to 6.
constexpr std::array<std::size_t, 7> kTypeBytes{0, 1, 1, 2, 4, 4, 8};
constexpr std::size_t kWord = 4; // names and values are padded to full words
constexpr char kOffsets64 = 2;   // the version of the format whose offsets have 64 bits

struct Dimension {
  QByteArray name;
  std::size_t length;
};

struct Variable {
  QByteArray name;
  std::vector<std::size_t> dimensions; // by number
  std::uint32_t type = 0;
  std::uint64_t begin = 0;
};

/// Walks through the header. What reaches beyond the end of the file gives zeros and is remembered.
class Cursor {
public:
  explicit Cursor(const QByteArray& file) : file_(file) {}

  std::size_t position() const { return position_; }
  bool failed() const { return failed_; }

  std::uint64_t number(std::size_t bytes) {
    const char* from = take(bytes);
    if (from == nullptr) return 0;
    return bytes == kWord ? qFromBigEndian<std::uint32_t>(from) : qFromBigEndian<std::uint64_t>(from);
  }
  std::uint32_t word() { return std::uint32_t(number(kWord)); }

  QByteArray name() {
    const std::size_t length = word();
    const char* from = take(length);
    QByteArray text = from == nullptr ? QByteArray() : QByteArray(from, qsizetype(length));
    take(padding(length));
    return text;
  }

  void skipValues(std::uint32_t type, std::size_t count) {
    if (type == 0 || type >= kTypeBytes.size() || count > std::size_t(file_.size())) {
      failed_ = true;
      return;
    }
    const std::size_t bytes = count * kTypeBytes.at(type);
    take(bytes + padding(bytes));
  }

  /// The number of elements of a list, which begins with its tag; none when it is absent.
  std::size_t listOf(Tag tag) {
    const std::uint32_t found = word();
    const std::size_t count = word();
    if (found == kAbsent && count == 0) return 0;
    // An element has four bytes at least.
    if (found != tag || count > std::size_t(file_.size()) / kWord) failed_ = true;
    return failed_ ? 0 : count;
  }

private:
  static std::size_t padding(std::size_t bytes) { return (kWord - bytes % kWord) % kWord; }

  const char* take(std::size_t bytes) {
    if (failed_ || bytes > std::size_t(file_.size()) - position_) {
      failed_ = true;
      return nullptr;
    }
    const char* from = file_.constData() + position_;
    position_ += bytes;
    return from;
  }

  const QByteArray& file_;
  std::size_t position_ = 0;
  bool failed_ = false;
};

void skipAttributes(Cursor& cursor) {
  const std::size_t count = cursor.listOf(kAttributes);
  for (std::size_t i = 0; i < count && !cursor.failed(); ++i) {
    cursor.name();
    const std::uint32_t type = cursor.word();
    cursor.skipValues(type, cursor.word());
  }
}

struct Header {
  std::vector<Dimension> dimensions;
  std::vector<Variable> variables;

  const Variable* find(const QByteArray& name) const {
    const auto found = std::find_if(variables.begin(), variables.end(),
                                    [&](const Variable& variable) { return variable.name == name; });
    return found == variables.end() ? nullptr : &*found;
  }
};

Variable readVariable(Cursor& cursor, std::size_t offsetBytes) {
  Variable variable;
  variable.name = cursor.name();
  const std::size_t rank = cursor.word();
  for (std::size_t i = 0; i < rank && !cursor.failed(); ++i)
    variable.dimensions.push_back(cursor.word());
  skipAttributes(cursor);
  variable.type = cursor.word();
  cursor.word(); // its size, which follows from type and dimensions
  variable.begin = cursor.number(offsetBytes);
  return variable;
}

Result<Header> readHeader(const QByteArray& file) {
  constexpr qsizetype kMagicBytes = 4;
  if (file.size() < kMagicBytes || !file.startsWith("CDF") || file[3] < 1 || file[3] > kOffsets64)
    return Error{QStringLiteral("no netCDF file of the classic format: it does not begin with \"CDF\" and 1 or 2")};
  Cursor cursor(file);
  cursor.word();
  cursor.word(); // the number of records
  Header header;
  std::size_t count = cursor.listOf(kDimensions);
  for (std::size_t i = 0; i < count && !cursor.failed(); ++i) {
    QByteArray name = cursor.name();
    header.dimensions.push_back({std::move(name), cursor.word()});
  }
  skipAttributes(cursor);
  count = cursor.listOf(kVariables);
  for (std::size_t i = 0; i < count && !cursor.failed(); ++i)
    header.variables.push_back(readVariable(cursor, file[3] == kOffsets64 ? 2 * kWord : kWord));
  if (cursor.failed())
    return Error{
        QStringLiteral("byte %1: the header breaks off or holds what no netCDF header holds").arg(cursor.position())};
  return header;
}

/// `count` values of a variable of that type; nothing when they do not lie within the file.
template <typename Value, typename Bits>
std::optional<std::vector<Value>> readValues(const QByteArray& file, const Variable& variable, std::size_t count) {
  const std::uint64_t size = std::uint64_t(file.size());
  if (variable.begin > size || count > (size - variable.begin) / sizeof(Value)) return {};
  std::vector<Value> values(count);
  const char* from = file.constData() + variable.begin;
  for (std::size_t i = 0; i < count; ++i)
    values[i] = std::bit_cast<Value>(qFromBigEndian<Bits>(from + i * sizeof(Value)));
  return values;
}

Result<std::vector<double>> readCoordinates(const QByteArray& file, const Header& header, std::size_t number) {
  const Dimension& dimension = header.dimensions[number];
  const Variable* variable = header.find(dimension.name);
  const bool isCoordinate = variable != nullptr && variable->type == kDouble && variable->dimensions.size() == 1 &&
                            variable->dimensions[0] == number;
  if (!isCoordinate)
    return Error{QStringLiteral("%1: no double-precision coordinates").arg(QString::fromLatin1(dimension.name))};
  auto values = readValues<double, std::uint64_t>(file, *variable, dimension.length);
  if (!values) return Error{QStringLiteral("%1: reaches beyond the file").arg(QString::fromLatin1(dimension.name))};
  return *std::move(values);
}

} // namespace

Result<NetcdfGrid> readNetcdfGrid(const QByteArray& file, const QByteArray& variable) {
  const Result<Header> header = readHeader(file);
  if (!header) return Error{header.error()};
  const QString name = QString::fromLatin1(variable);
  const Variable* found = header->find(variable);
  if (found == nullptr) return Error{QStringLiteral("%1: there is no such variable").arg(name)};
  const auto isKnown = [&](std::size_t number) { return number < header->dimensions.size(); };
  if (found->type != kFloat || found->dimensions.size() != 2 ||
      !std::all_of(found->dimensions.begin(), found->dimensions.end(), isKnown))
    return Error{QStringLiteral("%1: not two dimensions of single-precision numbers").arg(name)};

  NetcdfGrid grid;
  Result<std::vector<double>> rows = readCoordinates(file, *header, found->dimensions[0]);
  if (!rows) return Error{rows.error()};
  Result<std::vector<double>> columns = readCoordinates(file, *header, found->dimensions[1]);
  if (!columns) return Error{columns.error()};
  grid.rowCoordinates = std::move(rows).value();
  grid.columnCoordinates = std::move(columns).value();
  auto values = readValues<float, std::uint32_t>(file, *found, grid.rows() * grid.columns());
  if (!values) return Error{QStringLiteral("%1: reaches beyond the file").arg(name)};
  grid.values = *std::move(values);
  return grid;
}

} // namespace xov::maker
