// Whatever the bytes are, the NXY reader gives finite points or one line of error, and points that it gives can be
// written and read back.

#include "XOV_Graphics/map/NxyText.h"
#include "XOV_Graphics/map/XOVPolygon.h"
#include "tests/fuzz/Claims.h"

#include <cmath>
#include <cstdint>

using namespace xov;
using fuzz::require;

namespace {

void requireRefusal(const XOVPolygon& polygon, const QString& error) {
  require(!error.isEmpty(), "a refusal has its reason");
  require(error.size() < 100 && !error.contains(QLatin1Char('\n')), "an error is one short line", error);
  require(polygon.xp().empty() && polygon.yp().empty() && polygon.pointCount() == 0, "a refusal leaves no points");
}

bool isNear(float value, float back) {
  return std::abs(double(value) - double(back)) <= 5.1e-7 + std::abs(double(value)) * 1e-7;
}

void requireReturn(const XOVPolygon& polygon) {
  const QByteArray text = nxyText(polygon.xp(), polygon.yp());
  XOVPolygon back;
  QString error;
  require(back.scanFromNXYString(QString::fromLatin1(text), &error), "what was written can be read", error);
  require(back.npts() == polygon.npts(), "as many points come back");
  for (std::size_t i = 0; i < polygon.xp().size(); ++i) {
    require(isNear(polygon.xp()[i], back.xp()[i]) && isNear(polygon.yp()[i], back.yp()[i]), "the points come back");
  }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const QByteArray bytes(reinterpret_cast<const char*>(data), qsizetype(size));
  XOVPolygon polygon;
  QString error;
  if (!polygon.scanFromNXYString(decodeNxy(bytes), &error)) {
    requireRefusal(polygon, error);
    return 0;
  }
  require(error.isEmpty(), "success says nothing", error);
  require(polygon.npts() >= 0 && polygon.pointCount() == polygon.npts(), "the count is that of the points");
  for (std::size_t i = 0; i < polygon.xp().size(); ++i) {
    require(std::isfinite(polygon.xp()[i]) && std::isfinite(polygon.yp()[i]), "coordinates are finite");
  }
  polygon.computeBoundingRect();
  if (polygon.npts() > 0) (void)polygon.pointInPolygonXY(polygon.xp()[0], polygon.yp()[0]);
  requireReturn(polygon);
  return 0;
}
