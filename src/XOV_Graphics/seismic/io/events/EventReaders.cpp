#include "XOV_Graphics/seismic/io/events/EventReaders.h"

#include "XOV_Graphics/base/Guarded.h"
#include "XOV_Graphics/base/InputFile.h"
#include "XOV_Graphics/base/XmlElements.h"
#include "XOV_Graphics/seismic/io/events/EventTable.h"
#include "XOV_Graphics/seismic/io/events/QuakeMl.h"

#include <QBuffer>

namespace xov {

namespace {

constexpr qint64 kHeadBytes = 8192;
constexpr qint64 kLargestTable = qint64(1) << 30; // tables are read as a whole

Result<EventFile> readDevice(QIODevice& device, const QString& name) {
  const QByteArray head = device.peek(kHeadBytes);
  if (head.isEmpty()) return Error{name + ": the file is empty"};
  if (beginsAsXml(head)) return readQuakeMl(device, name);
  if (!isEventTable(head)) return Error{name + ": unknown format, expected QuakeML or a table of events"};
  if (device.size() > kLargestTable)
    return Error{name + ": found " + QString::number(device.size()) + " bytes, expected a table of at most 1 GiB"};
  return readEventTable(device.readAll(), name);
}

} // namespace

Result<EventFile> readEvents(const QString& path) noexcept {
  return guarded(path, [&]() -> Result<EventFile> {
    QFile file(path);
    if (Status status = openForReading(file); !status) return Error{status.error()};
    return readDevice(file, path);
  });
}

Result<EventFile> parseEvents(QByteArrayView bytes, const QString& name) noexcept {
  return guarded(name, [&] {
    QByteArray contents = QByteArray::fromRawData(bytes.data(), bytes.size());
    QBuffer buffer(&contents);
    buffer.open(QIODevice::ReadOnly);
    return readDevice(buffer, name);
  });
}

} // namespace xov
