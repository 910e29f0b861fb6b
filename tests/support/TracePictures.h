#pragma once

#include "XOV_Graphics/platform/trace/TraceRaster.h"

#include <QImage>
#include <QTransform>

#include <cstdint>
#include <vector>

namespace xov {

// Small pictures of traces, and where they lie there, in view points.
inline constexpr int kPictureWidth = 72, kPictureHeight = 48;

/// Pixels of `ratio` a view point, y upwards.
inline QTransform pictureTransform(double ratio = 1) { return {ratio, 0, 0, -ratio, 0, ratio * kPictureHeight}; }

inline QImage whitePicture(double ratio = 1) {
  QImage picture(int(kPictureWidth * ratio), int(kPictureHeight * ratio), QImage::Format_ARGB32_Premultiplied);
  picture.fill(Qt::white);
  return picture;
}

inline PixelTarget targetOf(QImage& picture) {
  return {picture.bits(), picture.bytesPerLine(), picture.width(), picture.height()};
}

/// A trace that begins near the left edge, with its zero line at `y`.
inline Trace traceOf(const std::vector<float>& samples, double pointsPerSample,
                     double y = kPictureHeight / 2.0 + 0.21) {
  Trace trace;
  trace.samples = samples.data();
  trace.last = std::int64_t(samples.size());
  trace.xScale = pointsPerSample;
  trace.xOffset = 1.37;
  trace.yOffset = y;
  return trace;
}

} // namespace xov
