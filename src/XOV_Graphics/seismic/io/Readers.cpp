#include "XOV_Graphics/seismic/io/Readers.h"

#include "XOV_Graphics/base/Guarded.h"
#include "XOV_Graphics/base/InputFile.h"
#include "XOV_Graphics/seismic/ChannelPatterns.h"
#include "XOV_Graphics/seismic/io/mseed/MiniSeed.h"
#include "XOV_Graphics/seismic/io/sac/SacAlphanumeric.h"
#include "XOV_Graphics/seismic/io/sac/SacBinary.h"

#include <QFileInfo>

#include <functional>

namespace xov {

namespace {

constexpr qint64 kHeadBytes = 1024; // what a format may look at to know its files

using SacReading = Result<std::shared_ptr<SacSeismogram>> (*)(QIODevice&, const QString&, const QString&);

ChannelCodes channelCodes(const SeismogramRecord& record) {
  return {record.knetwk(), record.kstnm(), record.khole(), record.kcmpnm()};
}

template <SacReading Read>
Result<SeismogramFile> readOne(QIODevice& device, const QString& name, const QString& path,
                               const SeismogramReadOptions& options) {
  const Result<ChannelPatterns> patterns = ChannelPatterns::parse(options.channels);
  if (!patterns) return Error{patterns.error()};
  const Result<std::shared_ptr<SacSeismogram>> trace = Read(device, name, path);
  if (!trace) return Error{trace.error()};
  const ChannelCodes codes = channelCodes(**trace);
  if (patterns->select(codes)) return SeismogramFile{{*trace}, {}};
  return SeismogramFile{{}, {name + ": no channel is selected of " + channelName(codes)}};
}

/// One format. `matches` sees the first bytes of a file; `read` gets the open file at its start, the name that errors
/// call it by, and its full path.
struct Format {
  const char* name;
  bool (*matches)(QByteArrayView head);
  Result<SeismogramFile> (*read)(QIODevice& device, const QString& name, const QString& path,
                                 const SeismogramReadOptions& options);
};

bool isSacBinary(QByteArrayView head) { return sacByteOrder(head).has_value(); }

// The first row that matches reads the file. A miniSEED record may by chance hold what tells a binary SAC file, which
// in turn never looks like a record.
constexpr Format kFormats[] = {
    {"miniSEED", isMiniSeed, readMiniSeedDevice},
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

Result<SeismogramFile> readSeismogramFile(const QString& path, const SeismogramReadOptions& options) noexcept {
  return guarded(path, [&]() -> Result<SeismogramFile> {
    QFile file(path);
    if (Status status = openForReading(file); !status) return Error{status.error()};
    const QByteArray head = file.peek(kHeadBytes);
    if (head.isEmpty()) return Error{path + ": the file is empty"};
    for (const Format& format : kFormats) {
      if (format.matches(head)) return format.read(file, path, QFileInfo(path).absoluteFilePath(), options);
    }
    return Error{path + ": unknown format, expected " + seismogramFormats().join(" or ")};
  });
}

Result<SeismogramArray> readSeismograms(const QString& path) noexcept {
  Result<SeismogramFile> file = readSeismogramFile(path);
  if (!file) return Error{file.error()};
  return std::move(file).value().records;
}

} // namespace xov
