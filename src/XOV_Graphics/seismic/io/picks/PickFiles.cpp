#include "XOV_Graphics/seismic/io/picks/PickFiles.h"

#include "XOV_Graphics/base/Guarded.h"
#include "XOV_Graphics/base/InputFile.h"
#include "XOV_Graphics/base/WholeFile.h"
#include "XOV_Graphics/base/XmlElements.h"
#include "XOV_Graphics/seismic/io/picks/PickTable.h"
#include "XOV_Graphics/seismic/io/picks/QuakeMlPicks.h"

namespace xov {

namespace {

constexpr qint64 kLargestPickFile = qint64(1) << 30;

Result<PickFile> readPickBytes(QByteArrayView bytes, const QString& name) {
  if (bytes.isEmpty()) return Error{name + ": the file is empty"};
  if (beginsAsXml(bytes)) return readQuakeMlPicks(bytes, name);
  if (isPickTable(bytes)) return readPickTable(bytes, name);
  return Error{name + ": unknown format, expected QuakeML or a table of picks with names of columns"};
}

} // namespace

Result<PickFile> readPicks(const QString& path) noexcept {
  return guarded(path, [&]() -> Result<PickFile> {
    const Result<QByteArray> bytes = readWholeFile(path, kLargestPickFile);
    if (!bytes) return Error{bytes.error()};
    return readPickBytes(*bytes, path);
  });
}

Result<PickFile> parsePicks(QByteArrayView bytes, const QString& name) noexcept {
  return guarded(name, [&] { return readPickBytes(bytes, name); });
}

Status writePicks(const PickArray& picks, const QString& path, PickFormat format, const Hypocentre* event) noexcept {
  return guarded(path, [&]() -> Status {
    QByteArray bytes;
    if (format == PickFormat::QuakeMl) {
      Result<QByteArray> document = quakeMlOf(picks, event, path);
      if (!document) return Error{document.error()};
      bytes = std::move(document).value();
    } else {
      bytes = pickTable(picks);
    }
    QString error;
    if (!writeFileAtomically(path, bytes, &error)) return Error{error};
    return {};
  });
}

} // namespace xov
