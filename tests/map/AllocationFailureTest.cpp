// A lack of memory, made by this program's own allocation: the next block of a certain size is refused.

#include "XOV_Graphics/map/BoundaryText.h"
#include "XOV_Graphics/map/XOVPolygon.h"
#include "tests/map/MapPrinting.h"
#include "tests/support/LogCatcher.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <new>

namespace {

thread_local std::size_t refusedSize = 0;

} // namespace

void* operator new(std::size_t size) {
  if (size == refusedSize) {
    refusedSize = 0;
    throw std::bad_alloc();
  }
  void* const block = std::malloc(size == 0 ? 1 : size);
  if (block == nullptr) throw std::bad_alloc();
  return block;
}
void operator delete(void* block) noexcept { std::free(block); }
void operator delete(void* block, std::size_t) noexcept { std::free(block); }

using namespace xov;
using namespace xov::test;

namespace {

/// Refuses the next block for as many floats; what else is allocated must be of another size.
void refuseFloats(std::size_t count) { refusedSize = count * sizeof(float); }

constexpr int kPoints = 333;

QByteArray pointLines() {
  QByteArray text;
  for (int i = 0; i < kPoints; ++i)
    text += "1 2\n";
  return text;
}

} // namespace

TEST(PlateBoundary, isAddedWithoutPointsWhenThereIsNoMemoryForThem) {
  XOVPolygonArray polygons;
  polygons.reserve(2);
  SegmentCollector segments(kBirdSegmentPoints, SegmentCollector::Bounds::NotComputed, polygons);
  const QByteArray text = "A\n" + pointLines() + "***\nB\n3 4\n***\n";
  const LogCatcher log;
  refuseFloats(kPoints);
  readBirdBoundaries(text, segments);
  EXPECT_EQ(refusedSize, 0U);
  ASSERT_EQ(polygons.size(), 2U);
  EXPECT_EQ(polygons[0]->title(), QStringLiteral("A\n"));
  EXPECT_EQ(polygons[0]->npts(), kPoints);
  EXPECT_EQ(polygons[0]->pointCount(), 0);
  EXPECT_EQ(pointsOf(*polygons[1]), (Points{{3, 4}}));
  EXPECT_EQ(LogCatcher::lines(),
            QStringList(QStringLiteral("xov: Couldn't allocate floating point arrays for polygon\n")));
}

TEST(NxyText, isRefusedWhenThereIsNoMemoryForItsPoints) {
  XOVPolygon polygon;
  const QString text = QString::number(kPoints) + QLatin1Char('\n') + QString::fromLatin1(pointLines());
  QString error;
  refuseFloats(kPoints);
  EXPECT_FALSE(polygon.scanFromNXYString(text, &error));
  EXPECT_EQ(refusedSize, 0U);
  EXPECT_EQ(error, QStringLiteral("not enough memory"));
  EXPECT_EQ(polygon.pointCount(), 0);
  EXPECT_TRUE(polygon.scanFromNXYString(text, &error));
}
