#include "XOV_Graphics/seismic/io/stations/StationFile.h"

#include "XOV_Graphics/base/InputFile.h"
#include "XOV_Graphics/base/XmlElements.h"

namespace xov {

namespace {

constexpr qint64 kMostTextBytes = 16 << 20;
constexpr qint64 kMostXmlBytes = 1 << 30;
constexpr qint64 kHeadBytes = 4096;

} // namespace

Result<QByteArray> readStationFile(const QString& path) {
  CheckedFile file(path);
  if (Status status = openForReading(file); !status) return Error{status.error()};
  return readToEnd(file, path, beginsAsXml(file.peek(kHeadBytes)) ? kMostXmlBytes : kMostTextBytes);
}

} // namespace xov
