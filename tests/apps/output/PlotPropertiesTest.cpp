#include "apps/xov/output/PlotProperties.h"

#include "XOV_Graphics/views/seismic/MultiSeisView.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace xov::cli {
namespace {

QMetaProperty propertyNamed(const XOVView& view, const char* name) {
  const std::vector<QMetaProperty> properties = plotProperties(view);
  const auto found =
      std::ranges::find_if(properties, [&](const QMetaProperty& p) { return qstrcmp(p.name(), name) == 0; });
  return found == properties.end() ? QMetaProperty() : *found;
}

TEST(PlotProperties, areThoseOfTheViewAndOfItsBase) {
  const MultiSeisView view;
  EXPECT_TRUE(propertyNamed(view, "lineWidth").isValid());
  EXPECT_TRUE(propertyNamed(view, "showZeroLine").isValid());
  EXPECT_FALSE(propertyNamed(view, "geometry").isValid()) << "a widget's";
  EXPECT_FALSE(propertyNamed(view, "trackMouse").isValid()) << "draws nothing";
}

TEST(PlotProperties, takeValuesAsTexts) {
  MultiSeisView view;
  for (const char* const assignment : {"lineWidth=2.5", "showZeroLine=true", "title=a = b", "titleColor=#80336699",
                                       "stripPlacement=ByDistanceKm", "timeReference=2011-03-11T05:46:24.120Z"})
    EXPECT_TRUE(setPlotProperty(view, assignment)) << assignment;
  EXPECT_EQ(view.lineWidth(), 2.5);
  EXPECT_TRUE(view.showZeroLine());
  EXPECT_EQ(view.plotTitle(), "a = b");
  EXPECT_EQ(view.titleColor(), QColor(0x33, 0x66, 0x99, 0x80));
  EXPECT_EQ(view.stripPlacement(), MultiSeisView::StripPlacement::ByDistanceKm);
  EXPECT_EQ(view.timeReference(), QDateTime(QDate(2011, 3, 11), QTime(5, 46, 24, 120), Qt::UTC));
}

TEST(PlotProperties, comeBackFromTheirTexts) {
  MultiSeisView view;
  view.setXLimitsMinMax(-0.1F, 1e30F);
  view.setTimeReference(QDateTime(QDate(2016, 12, 31), QTime(23, 59, 59), Qt::UTC));
  for (const QMetaProperty& property : plotProperties(view)) {
    const QVariant value = property.read(&view);
    const Result<QVariant> back = plotPropertyValue(property, plotPropertyText(property, value));
    ASSERT_TRUE(back) << property.name() << ": " << qPrintable(back.error());
    if (property.isEnumType())
      EXPECT_EQ(back->toInt(), value.toInt()) << property.name();
    else
      EXPECT_EQ(*back, value) << property.name();
  }
}

TEST(PlotProperties, refuseWhatIsNone) {
  MultiSeisView view;
  const auto refusal = [&view](const char* assignment) {
    return setPlotProperty(view, QLatin1String(assignment)).error();
  };
  EXPECT_EQ(refusal("lineWidth=wide"), "lineWidth: found 'wide', expected a number");
  EXPECT_EQ(refusal("lineWidth=nan"), "lineWidth: found 'nan', expected a number");
  EXPECT_EQ(refusal("lineWidth=1,5"), "lineWidth: found '1,5', expected a number");
  EXPECT_EQ(refusal("showZeroLine=1"), "showZeroLine: found '1', expected true or false");
  EXPECT_EQ(refusal("titleColor=reddish"), "titleColor: found 'reddish', expected a colour as red or #d55e00");
  EXPECT_EQ(refusal("stripPlacement=Anyhow").left(32), "stripPlacement: found 'Anyhow', ");
  EXPECT_EQ(refusal("part=1 2"), "part: found '1 2', expected the ends of x and of y and a gain, as 0 60 -1 1 2");
  EXPECT_EQ(refusal("part=1 2 3 4 x"), "part: found 'x', expected a number");
  EXPECT_EQ(refusal("part=1 2 3 4 1e300"), "") << "the view takes the nearest that it can show";
  EXPECT_EQ(refusal("geometry=0").left(37), "found 'geometry', expected one of tit");
  EXPECT_EQ(view.lineWidth(), 1);
}

} // namespace
} // namespace xov::cli
