#include "XOV_Graphics/base/Log.h"
#include "XOV_Graphics/base/Resources.h"
#include "XOV_Graphics/views/map/MapPictures.h"
#include "XOV_Graphics/views/map/TopoGrid.h"
#include "XOV_Graphics/views/map/geoMapView.h"

#include <QDir>
#include <QFileInfo>

namespace xov {

namespace {

constexpr std::int32_t kEtopo5Rows = 2160;
constexpr std::int32_t kEtopo5Columns = 4320;
constexpr float kEtopo5CellDeg = 0.083333336F; // five arc-minutes
constexpr char kEtopo5Path[] = "DATA/Grids/etopo5.i2";
constexpr PlotLimits kEtopo5Extent = {0, 360, -90, 90};

bool refused(QString* error, const QString& fault) {
  if (error != nullptr) *error = fault;
  return false;
}

} // namespace

bool geoMapView::loadTopoImageFromPathNRowsNColsDSmpl(const QString& path, std::int32_t rows, std::int32_t cols,
                                                      std::int32_t dSmpl, QString* error) {
  Result<TopoGrid> read = readTopoGrid(path, {rows, cols}, dSmpl);
  if (!read) {
    // A file that is not there is no news to a host that tries where it may be.
    if (error == nullptr && QFileInfo::exists(path)) qCWarning(log, "topography: %s", qUtf8Printable(read.error()));
    return refused(error, read.error());
  }
  TopoGrid grid = std::move(read).value();
  setupImageDataNROWSNCOLS(std::make_shared<const std::vector<float>>(std::move(grid.values)), grid.rows,
                           grid.columns);
  return true;
}

bool geoMapView::loadETOPO5DownSmpl(std::int32_t factor, QString* error) {
  const QString path = QDir(dataRoot()).filePath(QString::fromLatin1(kEtopo5Path));
  if (!loadTopoImageFromPathNRowsNColsDSmpl(path, kEtopo5Rows, kEtopo5Columns, factor, error)) return false;
  setImageExtent(kEtopo5Extent, float(factor) * kEtopo5CellDeg, float(factor) * kEtopo5CellDeg);
  return true;
}

bool geoMapView::loadImageWithIndex(std::int32_t index, QString* error) {
  qCInfo(log, "In loadImageWithIndex");
  const MapPicture* const picture = mapPicture(index);
  if (picture == nullptr) return refused(error, QStringLiteral("there is no picture %1").arg(index));
  const Result<QImage> image = readMapPicture(*picture);
  if (!image) return refused(error, image.error());
  setAnImage(*image);
  nr_ = picture->rows;
  nc_ = picture->columns;
  setImageExtent(picture->extent, picture->dx, picture->dy);
  return true;
}

void geoMapView::setImageExtent(const PlotLimits& extent, float dx, float dy) {
  xminImage_ = extent.xmin;
  xmaxImage_ = extent.xmax;
  yminImage_ = extent.ymin;
  ymaxImage_ = extent.ymax;
  dxImage_ = dx;
  dyImage_ = dy;
}

} // namespace xov
