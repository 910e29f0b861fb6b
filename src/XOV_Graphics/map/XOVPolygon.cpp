#include "XOV_Graphics/map/XOVPolygon.h"

#include "XOV_Graphics/base/Guarded.h"
#include "XOV_Graphics/base/InputFile.h"
#include "XOV_Graphics/base/WholeFile.h"
#include "XOV_Graphics/map/NxyText.h"

#include <algorithm>

namespace xov {

namespace {

// Three million points, more than any outline that is drawn; as text and as numbers they take four times as much.
constexpr qint64 kMostBytes = qint64(64) << 20;

} // namespace

int XOVPolygon::pointCount() const {
  const std::size_t held = std::min(xp_.size(), yp_.size());
  return npts_ <= 0 ? 0 : int(std::min(held, std::size_t(npts_)));
}

void XOVPolygon::computeBoundingRect() {
  constexpr float kFar = 1e9F;
  float left = kFar;
  float right = -kFar;
  float bottom = kFar;
  float top = -kFar;
  for (std::size_t i = 0; i < std::size_t(pointCount()); ++i) {
    if (xp_[i] < left) left = xp_[i];
    if (xp_[i] > right) right = xp_[i];
    if (yp_[i] < bottom) bottom = yp_[i];
    if (yp_[i] > top) top = yp_[i];
  }
  bRect_ = QRectF(left, bottom, double(right) - double(left), double(top) - double(bottom));
}

QString XOVPolygon::description() const { return title_ + QStringLiteral("Npts:") + QString::number(npts_); }

bool XOVPolygon::pointInPolygonXY(float x, float y) const {
  // Two points are one edge twice, and rounding could tell there from back.
  constexpr std::size_t kLeastPoints = 3;
  const auto count = std::size_t(pointCount());
  if (count < kLeastPoints) return false;
  bool inside = false;
  for (std::size_t i = 0; i < count; ++i) {
    const std::size_t j = i == 0 ? count - 1 : i - 1;
    const bool rises = yp_[j] <= y && y < yp_[i];
    const bool falls = yp_[i] <= y && y < yp_[j];
    if (!rises && !falls) continue;
    const float crossing = (xp_[j] - xp_[i]) * (y - yp_[i]) / (yp_[j] - yp_[i]) + xp_[i];
    if (crossing > x) inside = !inside;
  }
  return inside;
}

bool XOVPolygon::scanFromNXYString(const QString& text, QString* error) {
  return succeeded(guarded(QString(), [&] { return scan(text); }), error);
}

bool XOVPolygon::loadNXYFromPath(const QString& path, QString* error) {
  const Status loaded = guarded(path, [&]() -> Status {
    const Result<QByteArray> bytes = readWholeFile(path, kMostBytes);
    if (!bytes) return Error{bytes.error()};
    if (Status scanned = scan(decodeNxy(*bytes)); !scanned)
      return Error{path + QStringLiteral(": ") + scanned.error()};
    return {};
  });
  return succeeded(loaded, error);
}

bool XOVPolygon::saveToPath(const QString& path, QString* error) const {
  const Status saved = guarded(path, [&]() -> Status {
    if (path.isEmpty()) return Error{QStringLiteral("there is no file name")};
    const auto count = std::size_t(pointCount());
    QString fault;
    if (writeFileAtomically(path, nxyText(xp().first(count), yp().first(count)), &fault)) return {};
    return Error{fault};
  });
  return succeeded(saved, error);
}

Status XOVPolygon::scan(const QString& text) {
  NxyPoints points = parseNxy(text);
  npts_ = points.count.value_or(npts_);
  xp_ = std::move(points.xp);
  yp_ = std::move(points.yp);
  if (!points.error.isEmpty()) return Error{points.error};
  return {};
}

} // namespace xov
