#include "XOV_Graphics/views/navigation/LinkedPlots.h"

#include "NavigatedSection.h"

namespace xov::testing {
namespace {

// The second one counts its times from ten seconds later.
struct TwoSections {
  TwoSections() {
    links.add(*first.navigator);
    links.add(*second.navigator);
  }
  NavigatedSection first;
  NavigatedSection second{{.reference = onTheDay(5, 0, 10), .count = 101}};
  LinkedPlots links;
};

TEST(LinkedPlots, whatOneIsMovedToTheOtherFollowsInUtc) {
  const TwoSections two;
  two.first.view->showPart(PlotPart{.x = {20, 60}, .y = {}});
  expectSpan(two.second.shown(), 10, 50);
  two.second.view->showPart(PlotPart{.x = {0, 20}, .y = {}});
  expectSpan(two.first.shown(), 10, 30);
  two.first.navigator->showAll();
  EXPECT_FALSE(two.second.view->shownPart().has_value());
}

TEST(LinkedPlots, gainsStayEachViewsOwn) {
  const TwoSections two;
  two.first.navigator->amplify(2);
  two.first.view->showPart(PlotPart{.x = {20, 60}, .y = {}, .gain = 2});
  EXPECT_EQ(two.second.view->currentPart().gain, 1);
}

TEST(LinkedPlots, thePointersTimeIsMarkedInTheOthers) {
  const TwoSections two;
  sendMouse(*two.first.view, QEvent::MouseMove, {NavigatedSection::xOf(50), 200}, Qt::NoButton);
  const auto& lines = two.second.view->overlay().lines;
  ASSERT_EQ(lines.size(), 1U);
  EXPECT_NEAR(lines[0].x1(), NavigatedSection::xOf(40), 1e-9);
  sendMouse(*two.first.view, QEvent::MouseMove, {1, 1}, Qt::NoButton);
  EXPECT_TRUE(two.second.view->overlay().isEmpty());
}

TEST(LinkedPlots, oneThatFollowsTheCursorAloneStays) {
  TwoSections two;
  two.links.add(*two.second.navigator, LinkedPlots::Follows::Cursor);
  two.first.view->showPart(PlotPart{.x = {20, 60}, .y = {}});
  EXPECT_FALSE(two.second.view->shownPart().has_value());
  two.second.view->showPart(PlotPart{.x = {0, 10}, .y = {}});
  expectSpan(two.first.shown(), 20, 60);
}

TEST(LinkedPlots, aViewMayGoAwayWhileItIsToldOfAChange) {
  NavigatedSection first;
  NavigatedSection second;
  NavigatedSection third;
  LinkedPlots links;
  for (NavigatedSection* section : {&first, &second, &third})
    links.add(*section->navigator);
  QObject::connect(second.view.get(), &XOVView::shownPartChanged, &links, [&] { third.view.reset(); });
  first.view->showPart(PlotPart{.x = {20, 60}, .y = {}});
  expectSpan(second.shown(), 20, 60);
  first.view->showPart(PlotPart{.x = {30, 60}, .y = {}});
  expectSpan(second.shown(), 30, 60);
}

TEST(LinkedPlots, aViewTakenOutIsLeftAlone) {
  TwoSections two;
  two.links.remove(*two.second.navigator);
  two.first.view->showPart(PlotPart{.x = {20, 60}, .y = {}});
  EXPECT_FALSE(two.second.view->shownPart().has_value());
}

} // namespace
} // namespace xov::testing
