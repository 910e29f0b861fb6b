// Save sheets that answer at once, late, twice or never, and factories that give none.
#include "XOV_Graphics/platform/SavePanel.h"
#include "XOV_Graphics/views/base/XOVView.h"

#include <gtest/gtest.h>

#include <QAction>
#include <QFileInfo>
#include <QMenu>
#include <QPointer>
#include <QTemporaryDir>

namespace xov {
namespace {

class OddSheet : public SavePanel {
public:
  OddSheet(QString path, bool atOnce) : path_(std::move(path)), atOnce_(atOnce) {}
  void setRequiredFileType(const QString&) override {}
  void beginSheet(const QString&, const QString&, QWidget*, Completion completion) override {
    completion_ = std::move(completion);
    if (atOnce_) answer();
  }
  QString filename() const override { return path_; }
  void answer() const { completion_(kAccepted); }

private:
  QString path_;
  bool atOnce_;
  Completion completion_;
};

class SheetHosts : public ::testing::Test {
protected:
  ~SheetHosts() override {
    SavePanel::setFactory({});
    delete view_;
  }
  void useSheet(bool atOnce = false) {
    sheet_ = std::make_shared<OddSheet>(path_, atOnce);
    SavePanel::setFactory([this] { return sheet_; });
  }
  bool wrote() const { return QFileInfo::exists(path_); }

  QTemporaryDir folder_;
  QString path_ = folder_.filePath(QStringLiteral("plot.png"));
  QPointer<XOVView> view_ = new XOVView(QRectF(0, 0, 60, 40));
  std::shared_ptr<OddSheet> sheet_;
};

TEST_F(SheetHosts, mayAnswerTwice) {
  useSheet();
  int exports = 0;
  QObject::connect(view_, &XOVView::exported, view_, [&] { ++exports; });
  view_->savePNG();
  sheet_->answer();
  sheet_->answer();
  EXPECT_EQ(exports, 2);
}

TEST_F(SheetHosts, mayAnswerWhenTheViewIsGone) {
  useSheet();
  view_->savePNG();
  delete view_;
  sheet_->answer();
  EXPECT_FALSE(wrote());
}

TEST_F(SheetHosts, mayNeverAnswer) {
  useSheet();
  for (int i = 0; i < 3; ++i)
    view_->savePNG();
  EXPECT_EQ(view_->pltCount(), 3);
  delete view_;
  sheet_.reset();
  EXPECT_FALSE(wrote());
}

TEST_F(SheetHosts, mayAnswerAtOnceAndDestroyTheViewThen) {
  useSheet(true);
  QObject::connect(view_, &XOVView::exported, view_, [this] { delete view_; });
  // Through the menu, as a key does it.
  view_->contextualMenu()->actions().at(2)->trigger();
  EXPECT_TRUE(wrote());
  EXPECT_FALSE(view_);
}

TEST_F(SheetHosts, mayBeNone) {
  SavePanel::setFactory([] { return std::shared_ptr<SavePanel>(); });
  view_->savePDF();
  view_->saveTIF();
  EXPECT_EQ(view_->pltCount(), 0) << "no sheet was opened";
}

TEST_F(SheetHosts, mayReplaceTheirFactoryWhileItWorks) {
  int made = 0;
  SavePanel::setFactory([&] {
    SavePanel::setFactory({});
    ++made; // of the function that was replaced
    return std::make_shared<OddSheet>(path_, true);
  });
  view_->savePNG();
  EXPECT_EQ(made, 1);
  EXPECT_TRUE(wrote());
}

} // namespace
} // namespace xov
