#include "XOV_Graphics/seismic/io/mseed/MiniSeedReader.h"

#include "XOV_Graphics/base/Guarded.h"
#include "XOV_Graphics/base/InputFile.h"
#include "XOV_Graphics/seismic/io/mseed/MiniSeed.h"

#include <QBuffer>
#include <QFileInfo>

namespace xov {

Result<SeismogramFile> readMiniSeed(const QString& path, const SeismogramReadOptions& options) noexcept {
  return guarded(path, [&]() -> Result<SeismogramFile> {
    CheckedFile file(path);
    if (Status status = openForReading(file); !status) return Error{status.error()};
    return readChecked(file, path,
                       [&] { return readMiniSeedDevice(file, path, QFileInfo(path).absoluteFilePath(), options); });
  });
}

Result<SeismogramFile> parseMiniSeed(QByteArrayView bytes, const QString& name,
                                     const SeismogramReadOptions& options) noexcept {
  return guarded(name, [&] {
    QByteArray contents = QByteArray::fromRawData(bytes.data(), bytes.size());
    QBuffer buffer(&contents);
    buffer.open(QIODevice::ReadOnly);
    return readMiniSeedDevice(buffer, name, QString(), options);
  });
}

} // namespace xov
