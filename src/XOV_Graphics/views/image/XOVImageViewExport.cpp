#include "XOV_Graphics/base/WholeFile.h"
#include "XOV_Graphics/views/image/XOVImageView.h"
#include "XOV_Graphics/views/image/XyzText.h"

#include <QIODevice>

namespace xov {

void XOVImageView::saveXYZ(QObject*) {
  openSaveSheet(QStringLiteral("xyz"), QStringLiteral("txt"),
                [this](SavePanel* sheet, int code) { didEndSaveXYZReturnCodeContextInfo(sheet, code, nullptr); });
}

void XOVImageView::didEndSaveXYZReturnCodeContextInfo(SavePanel* sheet, int returnCode, void*) {
  if (sheet == nullptr || returnCode != SavePanel::kAccepted || sheet->filename().isEmpty()) return;
  writeXYZToFile(sheet->filename());
}

bool XOVImageView::writeXYZToFile(const QString& path, QString* error) {
  if (!imageFloats_) {
    if (error != nullptr) *error = QStringLiteral("%1: the view has no grid").arg(path);
    return false;
  }
  const bool written = writeFileAtomically(
      path,
      [this](QIODevice& device) {
        computeMinMax();
        const PlotLimits extent = drawnLimits(limits(), logAxes());
        return writeXyzText(device, extent, {minValue_, maxValue_}, GridNodes(extent, nr_, nc_),
                            GridValues::held(*imageFloats_, nr_, nc_));
      },
      error);
  return announceExport(this, written, path);
}

} // namespace xov
