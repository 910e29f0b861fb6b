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

template <typename ViewType>
class Widget : public ::testing::Test {
protected:
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
TYPED_TEST_SUITE(Widget, testing::AllViews);

TYPED_TEST(Widget, isMadeWithAParentAlone) {
  static_assert(!std::is_convertible_v<QWidget*, TypeParam>, "no view out of a pointer by accident");
  QWidget parent;
  auto* view = new TypeParam(&parent);
  EXPECT_EQ(view->parentWidget(), &parent);
  // A child that was never given a size has the one that Qt gives any widget.
  EXPECT_EQ(view->size(), QWidget(&parent).size());
  EXPECT_FALSE(view->testAttribute(Qt::WA_Resized));
}

TYPED_TEST(Widget, withAnEmptyFrameKeepsTheSizeThatQtGivesIt) {
  TypeParam view{QRectF()};
  EXPECT_EQ(view.size(), QWidget().size());
  EXPECT_FALSE(view.testAttribute(Qt::WA_Resized));
}

TYPED_TEST(Widget, withAFrameLiesThereInItsParent) {
  QWidget parent;
  auto* view = new TypeParam(QRectF(30, -40, 200, 100), &parent);
  EXPECT_EQ(view->geometry(), QRect(30, -40, 200, 100));
  EXPECT_EQ(view->sizeHint(), QSize(200, 100));
}

TYPED_TEST(Widget, asksForRoomAndTakesAllThereIs) {
  TypeParam view;
  EXPECT_EQ(view.sizeHint(), view.usualSize());
  EXPECT_EQ(view.sizePolicy().horizontalPolicy(), QSizePolicy::Expanding);
  EXPECT_EQ(view.sizePolicy().verticalPolicy(), QSizePolicy::Expanding);
  EXPECT_GE(view.minimumSizeHint().width(), 100);
  EXPECT_GE(view.minimumSizeHint().height(), 80);
}

TYPED_TEST(Widget, hasRoomBetweenItsMarginsAtItsSmallestSize) {
  if constexpr (std::is_base_of_v<XOVView, TypeParam>) {
    TypeParam view;
    view.resize(view.minimumSizeHint());
    view.computeRects();
    EXPECT_GT(view.iRect().width(), 0);
    EXPECT_GT(view.iRect().height(), 0);
  } else {
    EXPECT_TRUE(TypeParam().pRect().isEmpty()) << "lays nothing out";
  }
}

TYPED_TEST(Widget, fillsALayout) {
  QWidget container;
  auto* layout = new QVBoxLayout(&container);
  layout->setContentsMargins(0, 0, 0, 0);
  auto* view = new TypeParam;
  layout->addWidget(view);
  this->show(container);
  EXPECT_EQ(view->size(), QSize(900, 700));
}

TYPED_TEST(Widget, sharesASplitter) {
  QSplitter splitter;
  auto* first = new TypeParam;
  auto* second = new TypeParam;
  splitter.addWidget(first);
  splitter.addWidget(second);
  this->show(splitter);
  EXPECT_TRUE(this->hasRoom(*first));
  EXPECT_TRUE(this->hasRoom(*second));
  EXPECT_EQ(first->height(), 700);
}

TYPED_TEST(Widget, hasItsUsualSizeInAScrollArea) {
  QScrollArea area;
  auto* view = new TypeParam;
  area.setWidget(view);
  this->show(area);
  EXPECT_EQ(view->size(), view->usualSize());
}

TYPED_TEST(Widget, hasRoomInAnMdiArea) {
  QMdiArea area;
  auto* view = new TypeParam;
  area.addSubWindow(view);
  this->show(area);
  EXPECT_TRUE(this->hasRoom(*view));
}

TYPED_TEST(Widget, asAWindowHasItsUsualSizeAndItsTitleBarOnTheScreen) {
  TypeParam view;
  view.show();
  ASSERT_TRUE(QTest::qWaitForWindowExposed(&view));
  // Qt gives a new window two thirds of the screen at most.
  EXPECT_EQ(view.size(), view.usualSize().boundedTo(view.screen()->geometry().size() * 2 / 3));
  EXPECT_GE(view.frameGeometry().left(), 0);
  EXPECT_GE(view.frameGeometry().top(), 0);
  EXPECT_LE(view.frameGeometry().top(), view.geometry().top());
}

TYPED_TEST(Widget, withAFrameAsAWindowHasItsTitleBarOnTheScreen) {
  for (const QRectF& frame : {QRectF(0, 0, 300, 200), QRectF(-50, -60, 300, 200), QRectF(40, 30, 300, 200)}) {
    TypeParam view(frame);
    view.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&view));
    EXPECT_EQ(view.size(), QSize(300, 200));
    EXPECT_GE(view.frameGeometry().left(), std::max(0.0, frame.left()));
    EXPECT_GE(view.frameGeometry().top(), std::max(0.0, frame.top()));
  }
}

TYPED_TEST(Widget, isKnownByItsOwnName) {
  TypeParam view;
  const QByteArray name = view.metaObject()->className();
  EXPECT_EQ(name, TypeParam::staticMetaObject.className());
  EXPECT_TRUE(name.startsWith("xov::"));
  EXPECT_STRNE(TypeParam::staticMetaObject.className(), TypeParam::staticMetaObject.superClass()->className());
}

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
