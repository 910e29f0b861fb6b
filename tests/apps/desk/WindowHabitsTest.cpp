// What every window of the desk keeps to: files come by drop, screen readers get a name for whatever takes keys,
// numbers do not follow the locale, and plots keep the menu of their views.
#include "apps/desk/files/FileCatalogue.h"
#include "apps/desk/files/FilesPanel.h"
#include "tests/apps/desk/DeskFixture.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QAbstractSpinBox>
#include <QAccessible>
#include <QAction>
#include <QComboBox>
#include <QContextMenuEvent>
#include <QDropEvent>
#include <QLineEdit>
#include <QLocale>
#include <QMenu>
#include <QMimeData>
#include <QTest>
#include <QTimer>

#include <XOV_Graphics/views/seismic/PickEditor.h>
#include <algorithm>

namespace xov::desk {
namespace {

class WindowHabitsTest : public DeskTest {
protected:
  void drop(const QMimeData& data) {
    QDragEnterEvent enter({50, 50}, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(window_.get(), &enter);
    ASSERT_TRUE(enter.isAccepted());
    QDropEvent dropped(QPointF(50, 50), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(window_.get(), &dropped);
  }
};

bool takesInput(const QWidget& widget) {
  return qobject_cast<const QAbstractButton*>(&widget) != nullptr ||
         qobject_cast<const QLineEdit*>(&widget) != nullptr || qobject_cast<const QComboBox*>(&widget) != nullptr ||
         qobject_cast<const QAbstractSpinBox*>(&widget) != nullptr ||
         qobject_cast<const QAbstractItemView*>(&widget) != nullptr;
}

// Parts of Qt's own widgets speak through these.
bool isPartOfAnother(const QWidget& widget) {
  const QWidget* const owner = widget.parentWidget();
  return owner != nullptr && (takesInput(*owner) || widget.objectName().startsWith(QLatin1String("qt_")));
}

/// Restores the locale that programs begin with.
class WindowHabitsLocale {
public:
  explicit WindowHabitsLocale(const QLocale& locale) { QLocale::setDefault(locale); }
  ~WindowHabitsLocale() { QLocale::setDefault(QLocale::c()); }
  Q_DISABLE_COPY_MOVE(WindowHabitsLocale)
};

TEST_F(WindowHabitsTest, takesFilesThatAreDropped) {
  QMimeData data;
  data.setUrls({QUrl::fromLocalFile(writeRecord("a b.sac", "AAA"))});
  drop(data);
  ASSERT_TRUE(QTest::qWaitFor([this] { return window_->currentPane() != nullptr; }));
  EXPECT_TRUE(hasPlot(*window_->currentPane()));
  EXPECT_EQ(window_->currentPane()->request().files, QStringList{at("a b.sac")});
}

TEST_F(WindowHabitsTest, refusesWhatIsDroppedAndNoFile) {
  QMimeData text;
  text.setText("P at 05:48");
  QDragEnterEvent enter({50, 50}, Qt::CopyAction, &text, Qt::LeftButton, Qt::NoModifier);
  enter.ignore();
  QApplication::sendEvent(window_.get(), &enter);
  EXPECT_FALSE(enter.isAccepted());
}

TEST_F(WindowHabitsTest, hasANameForScreenReadersOfAllThatTakesKeys) {
  ASSERT_TRUE(hasPlot(*window_->openPane(request("section", {writeRecord("a.sac", "AAA")}))));
  window_->show();
  int seen = 0;
  for (const QWidget* const widget : window_->findChildren<QWidget*>()) {
    if (!takesInput(*widget) || !widget->isVisible() || isPartOfAnother(*widget)) continue;
    if (widget->focusPolicy() == Qt::NoFocus) continue;
    ++seen;
    QAccessibleInterface* const spoken = QAccessible::queryAccessibleInterface(const_cast<QWidget*>(widget));
    ASSERT_NE(spoken, nullptr);
    EXPECT_FALSE(spoken->text(QAccessible::Name).isEmpty())
        << widget->metaObject()->className() << " " << qPrintable(widget->objectName()) << " in "
        << qPrintable(widget->parentWidget()->objectName());
  }
  EXPECT_GT(seen, 10) << "the panels of files, processing, properties and picks";
  const auto* const file = window_->menu("file");
  EXPECT_GT(file->actions().size(), 3);
  for (const QAction* const action : file->actions())
    EXPECT_TRUE(action->isSeparator() || !action->text().isEmpty()) << qPrintable(action->objectName());
}

TEST_F(WindowHabitsTest, writesAndReadsNumbersAlikeInEveryLocale) {
  const WindowHabitsLocale arabic(QLocale(QLocale::Arabic, QLocale::Egypt));
  ASSERT_NE(QLocale().toString(2.5), "2.5");
  Pane* const pane = window_->openPane(request("section", {writeRecord("a.sac", "AAA")}));
  ASSERT_TRUE(hasPlot(*pane));
  auto& width = *child<QWidget>("property_lineWidth").findChild<QLineEdit*>();
  EXPECT_EQ(width.text(), "1");
  width.selectAll();
  QTest::keyClicks(&width, "2.5");
  QTest::keyClick(&width, Qt::Key_Return);
  EXPECT_EQ(pane->view()->lineWidth(), 2.5);
  EXPECT_EQ(width.text(), "2.5");
}

TEST_F(WindowHabitsTest, keepsTheMenuOfViews) {
  Pane* const pane = window_->openPane(request("section", {writeRecord("a.sac", "AAA")}));
  ASSERT_TRUE(hasPlot(*pane));
  window_->show();
  QStringList texts;
  QTimer watch;
  QObject::connect(&watch, &QTimer::timeout, &watch, [&] {
    auto* const menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
    if (menu == nullptr) return;
    for (const QAction* const action : menu->actions())
      texts << action->text();
    menu->close();
  });
  watch.start(1);
  QContextMenuEvent event(QContextMenuEvent::Mouse, {100, 100}, pane->view()->mapToGlobal(QPoint(100, 100)));
  QApplication::sendEvent(pane->view(), &event);
  ASSERT_TRUE(QTest::qWaitFor([&texts] { return !texts.isEmpty(); }));
  const auto has = [&texts](const char* word) {
    return std::ranges::any_of(texts, [word](const QString& text) { return text.contains(QLatin1String(word)); });
  };
  EXPECT_TRUE(has("Save")) << qPrintable(texts.join(", "));
  EXPECT_TRUE(has("Copy")) << qPrintable(texts.join(", "));
}

TEST_F(WindowHabitsTest, marksExpectedArrivalsOnlyWhileTheyAreAskedFor) {
  Pane* const pane = window_->openPane(request("section", {writeRecord("a.sac", "AAA")}));
  ASSERT_TRUE(hasPlot(*pane));
  QAction& picking = child<QAction>("pickByHand");
  QAction& expecting = child<QAction>("expectedArrivals");
  picking.setChecked(false);
  EXPECT_FALSE(expecting.isEnabled()) << "nothing is marked where nothing is picked";
  picking.setChecked(true);
  EXPECT_TRUE(expecting.isEnabled());
  EXPECT_TRUE(expecting.isCheckable());
}

} // namespace
} // namespace xov::desk
