#include "XOV_Graphics/views/map/MapPictures.h"

#include "XOV_Graphics/base/Guarded.h"
#include "XOV_Graphics/base/InputFile.h"
#include "XOV_Graphics/base/MemoryReserve.h"
#include "XOV_Graphics/base/Resources.h"

#include <QImageReader>

#include <algorithm>
#include <iterator>

namespace xov {

namespace {

// Nearly twice as many as the largest of ours has: what a picture claims is memory before it is decoded, four bytes
// each.
constexpr qint64 kMostPixels = qint64(1) << 26;
constexpr std::size_t kBytesAPixel = 4;
constexpr float kWideDeg = 540;
constexpr float kPoleToPoleDeg = 180;
constexpr PlotLimits kWide = {-180, 360, -90, 90};

// One and a half globes, so that maps may be centred on any meridian.
constexpr MapPicture wide(int index, const char* file, int rows, int columns) {
  return {index, file, rows, columns, kWide, kWideDeg / float(columns), kPoleToPoleDeg / float(rows)};
}

constexpr MapPicture kPictures[] = {
    wide(1, "nasa_satellite_wide.tif", 1024, 3072),
    wide(2, "natural_wide.jpg", 2700, 8100),
    wide(3, "noaa_image_wide.jpg", 3600, 10800),
    wide(4, "living_earth_wide.jpg", 1200, 3600),
    // The sum of the two longitudes, not their difference: this picture is shown whole from west to east.
    {10, "wusGray.tif", 540, 613, {-130, -105, 30, 52}, -235.0F / 613, 22.0F / 540},
};

// Qt refuses pictures of more than 128 megabytes, which the largest of ours is. The limit is one for the whole
// program, so it is raised for a single reading; a host's higher one, or none (0), stays.
class RaisedAllocationLimit {
public:
  RaisedAllocationLimit() : former_(QImageReader::allocationLimit()) {
    if (former_ != 0) QImageReader::setAllocationLimit(std::max(former_, kMostMegabytes));
  }
  ~RaisedAllocationLimit() { QImageReader::setAllocationLimit(former_); }
  RaisedAllocationLimit(const RaisedAllocationLimit&) = delete;
  RaisedAllocationLimit& operator=(const RaisedAllocationLimit&) = delete;

private:
  static constexpr int kMostMegabytes = int(kMostPixels * 8 >> 20); // some formats have eight bytes a pixel
  int former_;
};

// The JPEG reader fills up with grey what is missing at the end of a file; the mark that ends each picture tells.
bool isCutOff(QFile& file) {
  constexpr qint64 kMarkWithin = 64; // bytes: some programs write a little behind it
  if (!file.seek(0) || !file.peek(2).startsWith("\xFF\xD8")) return false;
  return !file.seek(std::max<qint64>(0, file.size() - kMarkWithin)) || !file.readAll().contains("\xFF\xD9");
}

Result<QImage> decode(QFile& file, const QString& path) {
  if (isCutOff(file) || !file.seek(0))
    return Error{path + QStringLiteral(": the picture is cut off at the end of the file")};
  const RaisedAllocationLimit raised;
  QImageReader reader(&file);
  const QSize size = reader.size();
  if (qint64(size.width()) * size.height() > kMostPixels)
    return Error{QStringLiteral("%1: found a picture of %2 by %3 pixels, expected at most %4 of them")
                     .arg(path)
                     .arg(size.width())
                     .arg(size.height())
                     .arg(kMostPixels)};
  // A decoder that is refused memory says that the picture is damaged.
  if (size.isValid()) needMemory(std::size_t(size.width()) * std::size_t(size.height()) * kBytesAPixel);
  const QImage image = reader.read();
  if (image.isNull()) return Error{path + QStringLiteral(": ") + reader.errorString()};
  return image;
}

Result<QImage> readImage(const QString& path) {
  CheckedFile file(path);
  if (Status status = openForReading(file); !status) return Error{status.error()};
  // A reader of pictures takes an error of the disk for the end of the file.
  return guarded(path, [&] { return readChecked(file, path, [&] { return decode(file, path); }); });
}

} // namespace

const MapPicture* mapPicture(int index) {
  const auto* const found =
      std::find_if(std::begin(kPictures), std::end(kPictures), [=](const MapPicture& p) { return p.index == index; });
  return found == std::end(kPictures) ? nullptr : found;
}

Result<QImage> readMapPicture(const MapPicture& picture) {
  const QString name = QString::fromLatin1(picture.file);
  const QString path = resourcePath(name);
  if (path.isEmpty()) return Error{name + QStringLiteral(": is not among the resources")};
  return readImage(path);
}

} // namespace xov
