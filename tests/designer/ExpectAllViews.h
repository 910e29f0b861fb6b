#pragma once

#include "tests/views/all/AllViews.h"

#include <QTest>
#include <QWidget>

namespace xov::testing {

/// One view of the class itself, found by it, of a form.
template <typename ViewType>
ViewType* viewOf(QWidget& form) {
  ViewType* found = nullptr;
  for (ViewType* view : form.findChildren<ViewType*>()) {
    if (view->metaObject() != &ViewType::staticMetaObject) continue;
    EXPECT_EQ(found, nullptr) << ViewType::staticMetaObject.className() << " is there twice";
    found = view;
  }
  EXPECT_NE(found, nullptr) << "no " << ViewType::staticMetaObject.className();
  return found;
}

template <typename ViewType>
void expectRoomFor(QWidget& form) {
  if constexpr (!std::is_same_v<ViewType, XOVView>) { // which has nothing to show
    const auto* view = viewOf<ViewType>(form);
    if (view == nullptr) return;
    EXPECT_TRUE(view->isVisible()) << view->metaObject()->className();
    EXPECT_GE(view->width(), view->minimumSizeHint().width()) << view->metaObject()->className();
    EXPECT_GE(view->height(), view->minimumSizeHint().height()) << view->metaObject()->className();
  }
}

/// A form shown on the screen has room for one view of each class.
template <typename... Views>
void expectAllViews(QWidget& form, ::testing::Types<Views...>) {
  form.show();
  EXPECT_TRUE(QTest::qWaitForWindowExposed(&form));
  (expectRoomFor<Views>(form), ...);
  EXPECT_FALSE(form.grab().isNull());
}

/// What the form sets.
inline void expectWhatTheFormSets(QWidget& form) {
  auto* drum = viewOf<helicorderView>(form);
  auto* bands = viewOf<SeisView02>(form);
  auto* image = viewOf<XOVImageView>(form);
  auto* histogram = viewOf<XOVHistogramView>(form);
  auto* section = viewOf<MultiSeisView>(form);
  ASSERT_TRUE(drum != nullptr && bands != nullptr && image != nullptr && histogram != nullptr && section != nullptr);
  EXPECT_EQ(drum->plotTitle(), QStringLiteral("BFO BHZ"));
  EXPECT_EQ(drum->gainFactor(), 2.5f);
  EXPECT_EQ(drum->nRows(), 12);
  EXPECT_EQ(bands->plotStyle(), SeisView02::Bands);
  EXPECT_EQ(image->palette(), 3);
  EXPECT_EQ(histogram->barFillColor(), QColor(10, 20, 30));
  EXPECT_TRUE(section->showZeroLine());
}

} // namespace xov::testing
