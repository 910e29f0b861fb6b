#include "XOV_Graphics/platform/surface/Pens.h"

#include <gtest/gtest.h>

#include <utility>

namespace xov {
namespace {

QPen penOf(const Path& path) { return penFor(path, path.shape(), Qt::red); }

TEST(Pens, endAndJoinLinesAsThePathDoes) {
  Path path;
  path.setLineWidth(2);
  for (const auto& [cap, qt] : {std::pair(Path::Cap::Butt, Qt::FlatCap), std::pair(Path::Cap::Round, Qt::RoundCap),
                                std::pair(Path::Cap::Square, Qt::SquareCap)}) {
    path.setLineCap(cap);
    EXPECT_EQ(penOf(path).capStyle(), qt);
  }
  for (const auto& [join, qt] :
       {std::pair(Path::Join::Miter, Qt::SvgMiterJoin), std::pair(Path::Join::Round, Qt::RoundJoin),
        std::pair(Path::Join::Bevel, Qt::BevelJoin)}) {
    path.setLineJoin(join);
    EXPECT_EQ(penOf(path).joinStyle(), qt);
  }
  EXPECT_EQ(penOf(path).widthF(), 2);
  EXPECT_EQ(penOf(path).color(), QColor(Qt::red));
}

TEST(Pens, dashesAreInUnitsOfTheWidthAndComeInPairs) {
  Path path;
  path.moveTo({0, 0});
  path.lineTo({100, 0});
  path.setLineWidth(2);
  path.setDashes({3, 4, 5}, 6);
  EXPECT_EQ(penOf(path).dashPattern(), (QList<qreal>{1.5, 2, 2.5, 1.5, 2, 2.5})); // twice: three are no pairs
  EXPECT_EQ(penOf(path).dashOffset(), 3);
  path.setDashes({0.001, 0.001}, 0); // 50,000 periods along the line
  EXPECT_EQ(penOf(path).style(), Qt::SolidLine);
}

} // namespace
} // namespace xov
