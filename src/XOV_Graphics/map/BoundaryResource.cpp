#include "XOV_Graphics/map/BoundaryResource.h"

#include "XOV_Graphics/base/Guarded.h"
#include "XOV_Graphics/base/InputFile.h"
#include "XOV_Graphics/base/Log.h"
#include "XOV_Graphics/base/Numbers.h"
#include "XOV_Graphics/base/Resources.h"
#include "XOV_Graphics/base/TextLines.h"

#include <optional>

namespace xov {

namespace {

constexpr qint64 kMostBytes = 64 << 20; // full-size boundaries have some hundred kilobytes

/// The number of the first line that is "longitude,latitude", as PB2002 is published: the readers would take it for a
/// longitude alone, and draw lines along the equator. Nothing when there is none.
std::optional<qint64> lineWithComma(QByteArrayView text) {
  TextLines lines(text);
  while (const auto line = lines.next()) {
    QByteArrayView rest = withoutBlanks(*line);
    if (!takeNumber<float>(rest) || !withoutBlanks(rest).startsWith(',')) continue;
    rest = withoutBlanks(withoutBlanks(rest).sliced(1));
    if (toNumber<float>(rest)) return lines.number();
  }
  return {};
}

Status load(const QString& name, BoundaryReader read, SegmentCollector& segments) {
  const QString path = resourcePath(name);
  if (path.isEmpty()) return Error{name + QStringLiteral(": is not among the resources")};
  const Result<QByteArray> text = readWholeFile(path, kMostBytes);
  if (!text) return Error{text.error()};
  if (const auto line = lineWithComma(*text))
    return Error{QStringLiteral("%1: line %2: a comma between numbers, expected blanks; \"xov resources --pb2002\" "
                                "imports such a text")
                     .arg(path)
                     .arg(*line)};
  read(*text, segments);
  return {};
}

} // namespace

bool loadBoundaryResource(const QString& name, BoundaryReader read, SegmentCollector& segments) {
  const Status loaded = guarded(name, [&] { return load(name, read, segments); });
  if (!loaded) qCWarning(log, "plate boundaries: %s", qUtf8Printable(loaded.error()));
  return bool(loaded);
}

} // namespace xov
