// Every class of view as a Qt widget: made, laid out, found and shown as any other.
#include "tests/views/all/AllViews.h"

#include <QApplication>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMetaObject>
#include <QScreen>
#include <QScrollArea>
#include <QSplitter>
#include <QTest>
#include <QVBoxLayout>

#include <memory>
#include <type_traits>

namespace xov {
namespace {

class Widget : public ::testing::TestWithParam<testing::ViewClass> {
protected:
  static View* make(QWidget* parent = nullptr) { return GetParam().make(parent); }
  static View* makeIn(const QRectF& frame, QWidget* parent = nullptr) { return GetParam().makeIn(frame, parent); }
  // A view in a container of 900 by 700 points that is on the screen.
  static void show(QWidget& container) {
    container.resize(900, 700);
    container.show();
    QApplication::processEvents();
  }
  static bool hasRoom(const QWidget& view) {
    const QSize least = view.minimumSizeHint();
    return view.isVisible() && view.width() >= least.width() && view.height() >= least.height();
  }
};
INSTANTIATE_TEST_SUITE_P(AllViews, Widget, ::testing::ValuesIn(testing::viewClasses(testing::AllViews())),
                         testing::viewClassName);

TEST_P(Widget, isMadeWithAParentAlone) {
  QWidget parent;
  auto* view = make(&parent);
  EXPECT_EQ(view->parentWidget(), &parent);
  // A child that was never given a size has the one that Qt gives any widget.
  EXPECT_EQ(view->size(), QWidget(&parent).size());
  EXPECT_FALSE(view->testAttribute(Qt::WA_Resized));
}

TEST_P(Widget, withAnEmptyFrameKeepsTheSizeThatQtGivesIt) {
  const std::unique_ptr<View> made(makeIn(QRectF()));
  const View& view = *made;
  EXPECT_EQ(view.size(), QWidget().size());
  EXPECT_FALSE(view.testAttribute(Qt::WA_Resized));
}

TEST_P(Widget, withAFrameLiesThereInItsParent) {
  QWidget parent;
  auto* view = makeIn(QRectF(30, -40, 200, 100), &parent);
  EXPECT_EQ(view->geometry(), QRect(30, -40, 200, 100));
  EXPECT_EQ(view->sizeHint(), QSize(200, 100));
}

TEST_P(Widget, asksForRoomAndTakesAllThereIs) {
  const std::unique_ptr<View> made(make());
  View& view = *made;
  EXPECT_EQ(view.sizeHint(), view.usualSize());
  EXPECT_EQ(view.sizePolicy().horizontalPolicy(), QSizePolicy::Expanding);
  EXPECT_EQ(view.sizePolicy().verticalPolicy(), QSizePolicy::Expanding);
  EXPECT_GE(view.minimumSizeHint().width(), 100);
  EXPECT_GE(view.minimumSizeHint().height(), 80);
}

TEST_P(Widget, hasRoomBetweenItsMarginsAtItsSmallestSize) {
  const std::unique_ptr<View> made(make());
  if (auto* view = qobject_cast<XOVView*>(made.get())) {
    view->resize(view->minimumSizeHint());
    view->computeRects();
    EXPECT_GT(view->iRect().width(), 0);
    EXPECT_GT(view->iRect().height(), 0);
  } else {
    EXPECT_TRUE(XOVChartView().pRect().isEmpty()) << "lays nothing out";
  }
}

TEST_P(Widget, fillsALayout) {
  QWidget container;
  auto* layout = new QVBoxLayout(&container);
  layout->setContentsMargins(0, 0, 0, 0);
  auto* view = make();
  layout->addWidget(view);
  show(container);
  EXPECT_EQ(view->size(), QSize(900, 700));
}

TEST_P(Widget, sharesASplitter) {
  QSplitter splitter;
  auto* first = make();
  auto* second = make();
  splitter.addWidget(first);
  splitter.addWidget(second);
  show(splitter);
  EXPECT_TRUE(hasRoom(*first));
  EXPECT_TRUE(hasRoom(*second));
  EXPECT_EQ(first->height(), 700);
}

TEST_P(Widget, hasItsUsualSizeInAScrollArea) {
  QScrollArea area;
  auto* view = make();
  area.setWidget(view);
  show(area);
  EXPECT_EQ(view->size(), view->usualSize());
}

TEST_P(Widget, hasRoomInAnMdiArea) {
  QMdiArea area;
  auto* view = make();
  area.addSubWindow(view);
  show(area);
  EXPECT_TRUE(hasRoom(*view));
}

TEST_P(Widget, asAWindowHasItsUsualSizeAndItsTitleBarOnTheScreen) {
  const std::unique_ptr<View> made(make());
  View& view = *made;
  view.show();
  ASSERT_TRUE(QTest::qWaitForWindowExposed(&view));
  // Qt gives a new window two thirds of the screen at most.
  EXPECT_EQ(view.size(), view.usualSize().boundedTo(view.screen()->geometry().size() * 2 / 3));
  EXPECT_GE(view.frameGeometry().left(), 0);
  EXPECT_GE(view.frameGeometry().top(), 0);
  EXPECT_LE(view.frameGeometry().top(), view.geometry().top());
}

TEST_P(Widget, withAFrameAsAWindowHasItsTitleBarOnTheScreen) {
  for (const QRectF& frame : {QRectF(0, 0, 300, 200), QRectF(-50, -60, 300, 200), QRectF(40, 30, 300, 200)}) {
    const std::unique_ptr<View> made(makeIn(frame));
    View& view = *made;
    view.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&view));
    EXPECT_EQ(view.size(), QSize(300, 200));
    EXPECT_GE(view.frameGeometry().left(), std::max(0.0, frame.left()));
    EXPECT_GE(view.frameGeometry().top(), std::max(0.0, frame.top()));
  }
}

TEST_P(Widget, isKnownByItsOwnName) {
  const std::unique_ptr<View> made(make());
  const QByteArray name = made->metaObject()->className();
  EXPECT_EQ(name, GetParam().type->className());
  EXPECT_TRUE(name.startsWith("xov::"));
  EXPECT_STRNE(GetParam().type->className(), GetParam().type->superClass()->className());
}

template <typename... Views>
constexpr bool noneIsMadeOfAPointerByAccident(::testing::Types<Views...>) {
  return !(std::is_convertible_v<QWidget*, Views> || ...);
}
static_assert(noneIsMadeOfAPointerByAccident(testing::AllViews()));

// Each class finds those that are of its kind, and nothing else.
template <typename ViewType, typename... Others>
void expectToFindOnly(QWidget& parent, ::testing::Types<Others...>) {
  int kin = 0;
  ((kin += int(std::is_base_of_v<ViewType, Others>)), ...);
  EXPECT_EQ(parent.findChildren<ViewType*>().size(), kin) << ViewType::staticMetaObject.className();
}

template <typename... Views>
void expectEachToFindItsOwn(::testing::Types<Views...> all) {
  QWidget parent;
  (new Views(&parent), ...);
  (expectToFindOnly<Views>(parent, all), ...);
}

TEST(Widgets, areFoundByTheirClassAmongAllOthers) { expectEachToFindItsOwn(testing::AllViews()); }

TEST(Widgets, aDrumIsFoundAndNothingElse) {
  QWidget parent;
  auto* section = new MultiSeisView(&parent);
  EXPECT_EQ(parent.findChild<helicorderView*>(), nullptr);
  auto* drum = new helicorderView(&parent);
  EXPECT_EQ(parent.findChild<helicorderView*>(), drum);
  EXPECT_EQ(parent.findChild<MultiSeisView*>(), section);
  EXPECT_EQ(qobject_cast<helicorderView*>(static_cast<QObject*>(section)), nullptr);
}

} // namespace
} // namespace xov
