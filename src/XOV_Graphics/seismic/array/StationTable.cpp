#include "XOV_Graphics/seismic/array/StationTable.h"

#include "XOV_Graphics/base/Guarded.h"
#include "XOV_Graphics/base/InputFile.h"
#include "XOV_Graphics/base/TextLines.h"
#include "XOV_Graphics/seismic/Geodesy.h"

#include <algorithm>
#include <charconv>
#include <optional>

namespace xov {

namespace {

constexpr qint64 kMostBytes = 16 << 20;

bool isSeparator(char c) { return c == ',' || c == ';' || c == '|' || c == '\t'; }

std::optional<double> numberIn(QByteArrayView word) {
  if (word.startsWith('+')) word = word.sliced(1);
  double value = 0;
  const auto [end, problem] = std::from_chars(word.begin(), word.end(), value);
  if (word.isEmpty() || end != word.end() || problem != std::errc()) return {};
  return value;
}

Result<StationTable> parse(QByteArrayView text, const QString& name) {
  StationTable table;
  TextLines lines(text);
  bool started = false;
  while (const auto line = lines.next()) {
    QByteArray blanked = line->toByteArray();
    std::replace_if(blanked.begin(), blanked.end(), isSeparator, ' ');
    QByteArrayView rest = blanked;
    const QByteArrayView code = takeWord(rest);
    if (code.isEmpty() || code.startsWith('#')) continue;
    const bool isFirst = !started;
    started = true;
    const auto fault = [&](const char* what) {
      return Error{QStringLiteral("%1: line %2: %3").arg(name).arg(lines.number()).arg(QLatin1String(what))};
    };
    const auto latitude = numberIn(takeWord(rest));
    const auto longitude = numberIn(takeWord(rest));
    if (!latitude && !longitude && isFirst) continue;
    if (!latitude || !longitude) return fault("expected a station code, its latitude and its longitude");
    if (!isGeographicPoint(*latitude, *longitude))
      return fault("expected a latitude of -90 to 90 and a longitude of -360 to 360");
    const QString key = QString::fromUtf8(code.data(), code.size());
    const auto known = table.constFind(key);
    if (known != table.constEnd() && (known->latitudeDeg != *latitude || known->longitudeDeg != *longitude))
      return fault("the station has another place further up");
    table.insert(key, {*latitude, *longitude});
  }
  if (table.isEmpty()) return Error{name + QStringLiteral(": holds no stations")};
  return table;
}

} // namespace

Result<StationTable> parseStationTable(QByteArrayView text, const QString& name) noexcept {
  return guarded(name, [&] { return parse(text, name); });
}

Result<StationTable> readStationTable(const QString& path) noexcept {
  return guarded(path, [&]() -> Result<StationTable> {
    const Result<QByteArray> text = readWholeFile(path, kMostBytes);
    if (!text) return Error{text.error()};
    return parse(*text, path);
  });
}

} // namespace xov
