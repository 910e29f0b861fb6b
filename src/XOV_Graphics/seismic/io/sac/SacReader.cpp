#include "XOV_Graphics/seismic/io/sac/SacReader.h"

#include "XOV_Graphics/base/Guarded.h"
#include "XOV_Graphics/base/InputFile.h"
#include "XOV_Graphics/seismic/io/sac/SacAlphanumeric.h"
#include "XOV_Graphics/seismic/io/sac/SacBinary.h"

#include <QBuffer>
#include <QFileInfo>

namespace xov {

namespace {

constexpr qint64 kHeadBytes = 128; // more than the first line of the alphanumeric form

Result<std::shared_ptr<SacSeismogram>> readDevice(QIODevice& device, const QString& name, const QString& path) {
  return isSacText(device.peek(kHeadBytes)) ? readSacAlphanumeric(device, name, path)
                                            : readSacBinary(device, name, path);
}

} // namespace

Result<std::shared_ptr<SacSeismogram>> readSac(const QString& path) noexcept {
  return guarded(path, [&]() -> Result<std::shared_ptr<SacSeismogram>> {
    CheckedFile file(path);
    if (Status status = openForReading(file); !status) return Error{status.error()};
    return readChecked(file, path, [&] { return readDevice(file, path, QFileInfo(path).absoluteFilePath()); });
  });
}

Result<std::shared_ptr<SacSeismogram>> parseSac(QByteArrayView bytes, const QString& name) noexcept {
  return guarded(name, [&] {
    QByteArray contents = QByteArray::fromRawData(bytes.data(), bytes.size());
    QBuffer buffer(&contents);
    buffer.open(QIODevice::ReadOnly);
    return readDevice(buffer, name, QString());
  });
}

} // namespace xov
