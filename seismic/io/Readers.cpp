#include "seismic/io/Readers.h"

#include "seismic/io/Guarded.h"
#include "seismic/io/InputFile.h"
#include "seismic/io/SacAlphanumeric.h"
#include "seismic/io/SacBinary.h"

#include <QFileInfo>

#include <functional>

namespace xov {

namespace {

constexpr qint64 kHeadBytes = 1024; // what a format may look at to know its files

using SacReading = Result<std::shared_ptr<SacSeismogram>> (*)(QIODevice&, const QString&, const QString&);

template <SacReading Read>
Result<SeismogramArray> readOne(QIODevice& device, const QString& name, const QString& path) {
  Result<std::shared_ptr<SacSeismogram>> trace = Read(device, name, path);
  if (!trace) return Error{trace.error()};
  return SeismogramArray{std::move(trace).value()};
}

/// One format. `matches` sees the first bytes of a file; `read` gets the open file at its start, the name that errors
/// call it by, and its full path.
struct Format {
  const char* name;
  bool (*matches)(QByteArrayView head);
  Result<SeismogramArray> (*read)(QIODevice& device, const QString& name, const QString& path);
};

bool isSacBinary(QByteArrayView head) { return sacByteOrder(head).has_value(); }

// The first row that matches reads the file.
constexpr Format kFormats[] = {
    {"SAC alphanumeric", isSacAlphanumeric, readOne<readSacAlphanumeric>},
    {"SAC binary", isSacBinary, readOne<readSacBinary>},
};

} // namespace

QStringList seismogramFormats() {
  QStringList names;
  for (const Format& format : kFormats)
    names.append(QString::fromLatin1(format.name));
  return names;
}

Result<SeismogramArray> readSeismograms(const QString& path) noexcept {
  return guarded(path, [&]() -> Result<SeismogramArray> {
    QFile file(path);
    if (Status status = openForReading(file); !status) return Error{status.error()};
    const QByteArray head = file.peek(kHeadBytes);
    if (head.isEmpty()) return Error{path + ": the file is empty"};
    for (const Format& format : kFormats) {
      if (format.matches(head)) return format.read(file, path, QFileInfo(path).absoluteFilePath());
    }
    return Error{path + ": unknown format, expected " + seismogramFormats().join(" or ")};
  });
}

} // namespace xov
