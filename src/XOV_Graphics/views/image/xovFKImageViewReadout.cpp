#include "XOV_Graphics/seismic/arrivals/EarthModel.h"
#include "XOV_Graphics/views/image/xovFKImageView.h"

#include <cmath>
#include <numbers>

namespace xov {

void xovFKImageView::setBeamPower(const BeamPower& beam) {
  const auto limit = float(beam.slownessLimit);
  setXLimitsMinMax(-limit, limit);
  setYLimitsMinMax(-limit, limit);
  setUseTopoValues(false);
  setupImageDataNROWSNCOLS(std::make_shared<const std::vector<float>>(beam.power), beam.steps, beam.steps);
}

PlotReadout xovFKImageView::readout(QPointF point) const {
  PlotReadout readout;
  if (nr_ <= 0 || nc_ <= 0 || anImage_.isNull() || !isInFrame(point)) return readout;
  constexpr double kDegreesPerRadian = 180 / std::numbers::pi;
  constexpr double kFullTurnDeg = 360;
  const QPointF at = viewToData(point, iRect_, limits());
  const double step = double(xmax_ - xmin_) / iRect_.width();
  const double slowness = std::hypot(at.x(), at.y());
  const QString perKm = QStringLiteral("s/km");
  readout.add(QLatin1String("slownessEast"), at.x(), perKm, step, QStringLiteral("east"));
  readout.add(QLatin1String("slownessNorth"), at.y(), perKm, step, QStringLiteral("north"));
  readout.add(QLatin1String("slowness"), slowness, perKm, step);
  readout.add(QLatin1String("slownessPerDegree"), slowness * kKmPerDegree, QStringLiteral("s/°"), step * kKmPerDegree,
              QStringLiteral("or"));
  if (slowness > step / 2) { // nearer to the middle it has no direction
    readout.add(QLatin1String("velocity"), 1 / slowness, QStringLiteral("km/s"), 0.01);
    const double azimuth = std::atan2(at.x(), at.y()) * kDegreesPerRadian;
    readout.add(QLatin1String("backAzimuth"), azimuth < 0 ? azimuth + kFullTurnDeg : azimuth, QStringLiteral("°"),
                0.1, QStringLiteral("back azimuth"));
  }
  if (const auto power = cellValueAt(point)) readout.add(QLatin1String("power"), double(*power), peakUnit_);
  return readout;
}

} // namespace xov
