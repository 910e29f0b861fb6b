#include "apps/resources/Maker.h"

#include "apps/resources/JpegTiff.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <XOV_Graphics/base/InputFile.h>
#include <XOV_Graphics/base/WholeFile.h>
#include <XOV_Graphics/platform/ImageFile.h>
#include <algorithm>
#include <string_view>

namespace xov::maker {

namespace {

// A new number makes every file below the data root once more.
constexpr char kVersion[] = "1\n";
const QString kVersionFile = QStringLiteral("resources/made-by");

constexpr int kFullQuality = 90;
constexpr int kSmallQuality = 80;
constexpr double kSmallTolerance = 0.02; // degrees that thinned boundaries may be off
constexpr int kSmallGridFactor = 6;      // 30 minutes of arc
constexpr GeoWindow kWesternStates{-130, -105, 30, 52};

Result<QByteArray> orError(const QByteArray& bytes, const QString& error) {
  if (bytes.isEmpty()) return Error{error};
  return bytes;
}

Result<QByteArray> jpeg(const QImage& image, Edition edition) {
  QString error;
  const QByteArray bytes = encodeJpeg(image, edition == Edition::Full ? kFullQuality : kSmallQuality, &error);
  return orError(bytes, error);
}

Result<QByteArray> tiff(const QImage& image, Edition edition) {
  if (edition == Edition::Small) return jpegTiff(image, kSmallQuality);
  QString error;
  const QByteArray bytes = encodeImage(image, ImageFormat::TiffLzw, &error);
  return orError(bytes, error);
}

Result<QByteArray> makeGrid(Edition edition, Inputs& inputs) {
  const Result<const ElevationGrid*> grid = inputs.grid();
  if (!grid) return Error{grid.error()};
  return machineOrderBytes(edition == Edition::Full ? **grid : coarser(**grid, kSmallGridFactor));
}

Result<QByteArray> makePicture(const Resource& resource, Edition edition, Inputs& inputs) {
  const Result<const MapPainter*> painter = inputs.painter();
  if (!painter) return Error{painter.error()};
  const MapPainter& paint = **painter;
  const int width = edition == Edition::Full ? resource.width : resource.smallWidth;
  const int height = edition == Edition::Full ? resource.height : resource.smallHeight;
  const std::string_view name = resource.name;
  if (name == "nasa_satellite_wide.tif") return tiff(paint.fromSpace(width, height), edition);
  if (name == "wusGray.tif") return tiff(paint.greyRelief(kWesternStates, width, height), edition);
  if (name == "natural_wide.jpg") return jpeg(paint.globe(Scheme::Natural, width, height), edition);
  if (name == "noaa_image_wide.jpg") return jpeg(paint.globe(Scheme::Elevation, width, height), edition);
  return jpeg(paint.globe(Scheme::LivingEarth, width, height), edition);
}

Segments asInEdition(const Segments& segments, Edition edition) {
  if (edition == Edition::Full) return segments;
  Segments few;
  for (const Segment& segment : segments)
    few.push_back(thinned(segment, kSmallTolerance));
  return few;
}

Result<QByteArray> makeBoundaries(const Resource& resource, Edition edition, Inputs& inputs) {
  const Result<const std::vector<NamedSegments>*> all = inputs.boundaries();
  if (!all) return Error{all.error()};
  std::vector<NamedSegments> types = **all;
  for (NamedSegments& type : types)
    type.segments = asInEdition(type.segments, edition);
  if (resource.kind == ResourceKind::BoundariesOfModel) return derivedBoundariesBySegment(types);
  const QByteArray name = QByteArray(resource.name).chopped(4); // ".txt"
  const auto type = std::find_if(types.begin(), types.end(), [&](const NamedSegments& t) { return t.name == name; });
  if (type == types.end()) return Error{QStringLiteral("there are no such boundaries")};
  const QByteArray title = "Plate boundaries of one type, generalised: " + name;
  return boundariesByType(edition == Edition::Full ? title : title + " (" + kThinnedMark + ')', name, type->segments);
}

/// Nothing of a file that is not there.
Result<QByteArray> firstBytes(const QString& path) {
  constexpr qint64 kEnough = 4096;
  if (!QFile::exists(path)) return QByteArray();
  CheckedFile file(path);
  if (Status status = openForReading(file); !status) return Error{status.error()};
  return readChecked(file, path, [&]() -> Result<QByteArray> { return file.read(kEnough); });
}

/// Whether the file is one that a user imported. One that cannot be read may be that.
Result<bool> isImported(const Task& task) {
  if (task.resource->kind != ResourceKind::BoundariesOfModel || !QFile::exists(task.path)) return false;
  const Result<QByteArray> begin = firstBytes(task.path);
  if (!begin) return Error{begin.error()};
  return !areDerivedBoundaries(*begin);
}

} // namespace

QString targetPath(const Resource& resource, Edition edition, const QString& folder) {
  const bool isGrid = resource.kind == ResourceKind::Grid;
  const QDir target(folder);
  if (edition == Edition::Small) return target.filePath(QLatin1StringView(isGrid ? kSmallGridName : resource.name));
  return target.filePath(QStringLiteral("%1/%2").arg(QLatin1StringView(isGrid ? kGridFolder : "resources"),
                                                     QLatin1StringView(resource.name)));
}

Result<std::vector<Task>> missingResources(const QString& dataRoot) {
  const Result<QByteArray> madeBy = firstBytes(QDir(dataRoot).filePath(kVersionFile));
  if (!madeBy) return Error{madeBy.error()};
  const bool isCurrent = *madeBy == kVersion;
  std::vector<Task> tasks;
  for (const Resource& resource : kResources) {
    const Task task{&resource, targetPath(resource, Edition::Full, dataRoot)};
    const Result<bool> imported = isImported(task);
    if (!imported) return Error{imported.error()};
    if (*imported || (isCurrent && QFile::exists(task.path))) continue;
    tasks.push_back(task);
  }
  return tasks;
}

Status markMade(const QString& dataRoot) {
  QString error;
  if (!writeFileAtomically(QDir(dataRoot).filePath(kVersionFile), kVersion, &error)) return Error{error};
  return {};
}

Result<QByteArray> makeResource(const Resource& resource, Edition edition, Inputs& inputs) {
  switch (resource.kind) {
  case ResourceKind::Grid:
    return makeGrid(edition, inputs);
  case ResourceKind::Picture:
    return makePicture(resource, edition, inputs);
  case ResourceKind::BoundariesByType:
  case ResourceKind::BoundariesOfModel:
    break;
  }
  return makeBoundaries(resource, edition, inputs);
}

Status makeAll(const std::vector<Task>& tasks, Edition edition, Inputs& inputs, const Progress& progress) {
  std::size_t number = 0;
  for (const Task& task : tasks) {
    progress(
        QStringLiteral("[%1/%2] %3").arg(++number).arg(tasks.size()).arg(QLatin1StringView(task.resource->name)));
    const Result<QByteArray> bytes = makeResource(*task.resource, edition, inputs);
    if (!bytes) return Error{bytes.error()};
    const QString folder = QFileInfo(task.path).path();
    if (!QDir().mkpath(folder)) return Error{QStringLiteral("%1: cannot be made").arg(folder)};
    QString error;
    if (!writeFileAtomically(task.path, *bytes, &error)) return Error{error};
  }
  return {};
}

} // namespace xov::maker
