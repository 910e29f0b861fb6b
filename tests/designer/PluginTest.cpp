// The plugin for Qt Designer, loaded as Designer and QUiLoader load it.
#include "tests/designer/ExpectAllViews.h"

#include <gtest/gtest.h>

#include <QBuffer>
#include <QFile>
#include <QFileInfo>
#include <QIcon>
#include <QPluginLoader>
#include <QUiLoader>
#include <QtUiPlugin/QDesignerCustomWidgetCollectionInterface>

#include <set>

namespace xov {
namespace {

class Plugin : public ::testing::Test {
protected:
  void SetUp() override {
    loader.setFileName(QStringLiteral(XOV_DESIGNER_PLUGIN));
    ASSERT_TRUE(loader.load()) << qPrintable(loader.errorString());
    const auto* collection = qobject_cast<QDesignerCustomWidgetCollectionInterface*>(loader.instance());
    ASSERT_NE(collection, nullptr);
    views = collection->customWidgets();
  }
  QPluginLoader loader;
  QList<QDesignerCustomWidgetInterface*> views;
};

template <typename... Views>
std::set<QString> namesOf(::testing::Types<Views...>) {
  return {QString::fromLatin1(Views::staticMetaObject.className())...};
}

TEST_F(Plugin, offersEveryViewOnce) {
  std::set<QString> expected = namesOf(testing::AllViews());
  expected.erase(QStringLiteral("xov::XOVView")); // which has nothing to show
  std::set<QString> offered;
  for (const auto* view : views)
    EXPECT_TRUE(offered.insert(view->name()).second) << qPrintable(view->name());
  EXPECT_EQ(offered, expected);
}

TEST_F(Plugin, makesWidgetsOfTheClassThatItNames) {
  QWidget parent;
  for (auto* view : views) {
    const QWidget* widget = view->createWidget(&parent);
    ASSERT_NE(widget, nullptr);
    EXPECT_EQ(QString::fromLatin1(widget->metaObject()->className()), view->name());
    EXPECT_EQ(widget->parentWidget(), &parent);
  }
}

TEST_F(Plugin, namesHeadersThatAreThere) {
  for (const auto* view : views) {
    const QString file = view->includeFile();
    ASSERT_TRUE(file.startsWith(u'<') && file.endsWith(u'>'));
    EXPECT_TRUE(QFileInfo::exists(QStringLiteral(XOV_INCLUDES "/") + file.mid(1, file.size() - 2)))
        << qPrintable(file);
  }
}

TEST_F(Plugin, hasAnIconForEachThatLooksLikeNoOther) {
  std::vector<QImage> icons;
  for (const auto* view : views) {
    const QImage icon = view->icon().pixmap(24, 24).toImage();
    EXPECT_EQ(icon.size(), QSize(24, 24)) << qPrintable(view->name());
    for (const QImage& other : icons)
      EXPECT_NE(icon, other) << qPrintable(view->name());
    icons.push_back(icon);
  }
}

TEST_F(Plugin, saysWhatTheViewsShow) {
  for (const auto* view : views) {
    EXPECT_FALSE(view->toolTip().isEmpty()) << qPrintable(view->name());
    EXPECT_TRUE(view->whatsThis().contains(view->toolTip())) << qPrintable(view->name());
  }
}

QWidget* loaded(const QByteArray& form) {
  QUiLoader loader;
  loader.clearPluginPaths();
  loader.addPluginPath(QFileInfo(QStringLiteral(XOV_DESIGNER_PLUGIN)).path());
  QBuffer buffer;
  buffer.setData(form);
  buffer.open(QIODevice::ReadOnly);
  return loader.load(&buffer);
}

TEST_F(Plugin, dropsViewsOfTheirUsualSizeOnAForm) {
  for (const auto* view : views) {
    const std::unique_ptr<QWidget> widget(loaded(view->domXml().toUtf8()));
    ASSERT_NE(widget, nullptr) << qPrintable(view->name());
    EXPECT_EQ(QString::fromLatin1(widget->metaObject()->className()), view->name());
    EXPECT_EQ(widget->size(), qobject_cast<View*>(widget.get())->usualSize()) << qPrintable(view->name());
    EXPECT_TRUE(widget->objectName().front().isLower()) << qPrintable(widget->objectName());
  }
}

TEST_F(Plugin, makesAFormOfEveryViewAtRunTime) {
  QFile file(QStringLiteral(XOV_FORM));
  ASSERT_TRUE(file.open(QIODevice::ReadOnly));
  const std::unique_ptr<QWidget> form(loaded(file.readAll()));
  ASSERT_NE(form, nullptr);
  testing::expectAllViews(*form, testing::AllViews());
  testing::expectWhatTheFormSets(*form);
}

} // namespace
} // namespace xov
