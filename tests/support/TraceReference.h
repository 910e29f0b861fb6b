#pragma once

#include "XOV_Graphics/platform/Trace.h"

#include <QImage>
#include <QTransform>

#include <span>
#include <vector>

namespace xov {

/// The coverage, 0 to 1 and row by row, of the exact ink of traces that are stroked as one path with round joins and
/// butt ends. It is found the slow and obvious way: each pixel is sampled at `grid` × `grid` places, each of which is
/// inked when it lies beside a segment within half the line width or within that distance of an inner point of a
/// line. The places of the grid are shifted so that no two share a row or a column: horizontal and vertical edges
/// come out to 1 / grid² of a pixel.
std::vector<double> referenceCoverage(std::span<const Trace> traces, const QTransform& viewToDevice, double lineWidth,
                                      int width, int height, int grid);

/// The same coverage, found at `places` places of each column of pixels, where it is exact along the rows: for steep
/// lines of very many samples, whose edges stand nearly upright.
std::vector<double> columnReference(std::span<const Trace> traces, const QTransform& viewToDevice, double lineWidth,
                                    int width, int height, int places);

/// The coverage of what traces enclose when they are filled as one path, each piece between gaps closed from its last
/// point to its first: each column of pixels is cut at `places` places, where windings are counted down the sides
/// that are crossed there. Along the rows it is exact.
std::vector<double> referenceFill(std::span<const Trace> traces, const QTransform& viewToDevice, bool evenOdd,
                                  int width, int height, int places);

/// How a picture of black ink on white differs from the reference.
struct TraceDifference {
  int inked = 0;     ///< pixels with ink in either
  double mean = 0;   ///< mean absolute difference over those, in levels of 255
  double worst = 0;  ///< the largest difference
  double bias = 0;   ///< mean of picture's ink less the reference's
  double over16 = 0; ///< part of the inked pixels that differ by more than 16 levels
  double over32 = 0; ///< part of the inked pixels that differ by more than 32 levels
};

TraceDifference compareWithReference(const QImage& blackOnWhite, const std::vector<double>& coverage);

} // namespace xov
