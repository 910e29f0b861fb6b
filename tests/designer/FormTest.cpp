// A form that holds every view as a promoted widget, compiled by uic.
#include "tests/designer/ExpectAllViews.h"
#include "ui_AllViews.h"

#include <gtest/gtest.h>

namespace xov {
namespace {

TEST(Form, compiledHasRoomForEveryView) {
  QWidget window;
  Ui::AllViews form;
  form.setupUi(&window);
  testing::expectAllViews(window, testing::AllViews());
}

TEST(Form, compiledSetsProperties) {
  QWidget window;
  Ui::AllViews form;
  form.setupUi(&window);
  testing::expectWhatTheFormSets(window);
}

} // namespace
} // namespace xov
