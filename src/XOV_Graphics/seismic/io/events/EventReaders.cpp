#include "XOV_Graphics/seismic/io/events/EventReaders.h"

#include "XOV_Graphics/base/Guarded.h"
#include "XOV_Graphics/base/InputFile.h"
#include "XOV_Graphics/base/XmlElements.h"
#include "XOV_Graphics/seismic/io/events/EventTable.h"
#include "XOV_Graphics/seismic/io/events/HypoDd.h"
#include "XOV_Graphics/seismic/io/events/Mchedr.h"
#include "XOV_Graphics/seismic/io/events/Ndk.h"
#include "XOV_Graphics/seismic/io/events/Nordic.h"
#include "XOV_Graphics/seismic/io/events/QuakeMl.h"
#include "XOV_Graphics/seismic/io/events/Zmap.h"

#include <QBuffer>

#include <algorithm>

namespace xov {

namespace {

constexpr qint64 kHeadBytes = 8192;
constexpr qint64 kLargestTable = qint64(1) << 30; // tables are read as a whole

/// A format of text. `matches` sees the first bytes of a file, which may end within a line.
struct TextFormat {
  const char* name;
  bool (*matches)(QByteArrayView head);
  Result<EventFile> (*read)(QByteArrayView text, const QString& name);
};

// The first row that matches reads the file; the stricter a format is, the earlier it stands.
constexpr TextFormat kTextFormats[] = {
    {"GCMT NDK", isNdk, readNdk},     {"mchedr", isMchedr, readMchedr},
    {"Nordic", isNordic, readNordic}, {"hypoDD", isHypoDd, readHypoDd},
    {"ZMAP", isZmap, readZmap},       {"a table of events", isEventTable, readEventTable},
};

QString formatNames() {
  QString names = QStringLiteral("QuakeML");
  for (const TextFormat& format : kTextFormats) {
    names += &format == std::end(kTextFormats) - 1 ? " or " : ", ";
    names += QLatin1String(format.name);
  }
  return names;
}

// Null where there is none.
const TextFormat* textFormatOf(const QByteArray& head) {
  const auto* const format =
      std::ranges::find_if(kTextFormats, [&](const TextFormat& known) { return known.matches(head); });
  return format == std::end(kTextFormats) ? nullptr : format;
}

Result<EventFile> readDevice(QIODevice& device, const QString& name) {
  const QByteArray head = device.peek(kHeadBytes);
  if (head.isEmpty()) return Error{name + ": the file is empty"};
  if (beginsAsXml(head)) return readQuakeMl(device, name);
  const TextFormat* const format = textFormatOf(head);
  if (format == nullptr) return Error{name + ": unknown format, expected " + formatNames()};
  if (device.size() > kLargestTable)
    return Error{name + ": found " + QString::number(device.size()) +
                 " bytes, expected a catalogue of at most 1 GiB"};
  return format->read(device.readAll(), name);
}

} // namespace

Result<EventFile> readEvents(const QString& path) noexcept {
  return guarded(path, [&]() -> Result<EventFile> {
    CheckedFile file(path);
    if (Status status = openForReading(file); !status) return Error{status.error()};
    return readChecked(file, path, [&] { return readDevice(file, path); });
  });
}

bool looksLikeEvents(const QString& path) noexcept {
  const Result<bool> looks = guarded(path, [&]() -> Result<bool> {
    CheckedFile file(path);
    if (Status status = openForReading(file); !status) return Error{status.error()};
    const QByteArray head = file.peek(kHeadBytes);
    return beginsAsXml(head) || textFormatOf(head) != nullptr;
  });
  return looks && *looks;
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
