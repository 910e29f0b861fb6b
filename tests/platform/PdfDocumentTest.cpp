#include "XOV_Graphics/platform/PdfDocument.h"

#include "XOV_Graphics/platform/Colors.h"
#include "tests/support/PdfObjects.h"

#include <gtest/gtest.h>

#include <QFile>
#include <QTemporaryDir>

#include <array>
#include <stdexcept>

namespace xov {
namespace {

using testing::PdfObjects;

/// A bar of that length.
class BarView : public View {
public:
  explicit BarView(const QRectF& frame) : View(frame) {}
  void drawRect(const QRectF& /*dirty*/) override {
    GraphicsContext::current().setColor(colors::red);
    GraphicsContext::current().fillRect({0, 0, length, 10});
  }

  double length = 10;
};

class PdfDocument : public ::testing::Test {
protected:
  QByteArray contents() const {
    QFile file(path_);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
  }
  void putOldFile() const {
    QFile file(path_);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("old");
  }

  QTemporaryDir folder_;
  QString path_ = folder_.filePath(QStringLiteral("pages.pdf"));
  QString error_;
};

TEST_F(PdfDocument, oneViewGivesManyPagesEachDrawnBeforeTheNextIsAskedFor) {
  BarView view({0, 0, 200, 100});
  ASSERT_TRUE(writePDFPages(path_, [&view](std::int64_t page) -> View* {
    view.length = double(page + 1) * 11;
    return page < 3 ? &view : nullptr;
  }));
  const PdfObjects file(contents());
  ASSERT_EQ(file.pages().size(), 3);
  for (int page = 0; page < 3; ++page) {
    // The bar's lower right corner, on a page of 100 points whose y grows downwards.
    const QByteArray corner = QByteArray::number((page + 1) * 11) + " 100 l\n";
    const QByteArray operators = file.streamBehind(file.pages()[page], "/Contents");
    EXPECT_TRUE(operators.contains(corner)) << operators.constData();
  }
}

TEST_F(PdfDocument, pagesAreAsLargeAsTheirViews) {
  BarView low({0, 0, 300, 50});
  BarView high({0, 0, 100, 700});
  const std::array<View*, 2> views = {&low, &high};
  ASSERT_TRUE(writePDFPages(path_, views));
  const QList<QByteArray> pages = PdfObjects(contents()).pages();
  ASSERT_EQ(pages.size(), 2);
  EXPECT_TRUE(pages[0].contains("[0 0 300.000000 50.000000]")) << pages[0].constData();
  EXPECT_TRUE(pages[1].contains("[0 0 100.000000 700.000000]")) << pages[1].constData();
}

TEST_F(PdfDocument, aPageHoldsWhatTheViewsOwnDocumentHolds) {
  BarView view({0, 0, 120, 80});
  const std::array<View*, 1> views = {&view};
  ASSERT_TRUE(writePDFPages(path_, views));
  const PdfObjects alone(view.dataWithPDFInsideRect(view.bounds()));
  const PdfObjects file(contents());
  EXPECT_FALSE(alone.streamBehind(alone.pages().at(0), "/Contents").isEmpty());
  EXPECT_EQ(file.streamBehind(file.pages().at(0), "/Contents"), alone.streamBehind(alone.pages().at(0), "/Contents"));
}

TEST_F(PdfDocument, anEmptyViewLeavesTheOldFileAndNamesItsPage) {
  putOldFile();
  BarView view({0, 0, 120, 80});
  BarView empty({0, 0, 0, 0});
  empty.resize(0, 0);
  const std::array<View*, 2> views = {&view, &empty};
  EXPECT_FALSE(writePDFPages(path_, views, &error_));
  EXPECT_EQ(error_, path_ + ": page 2: the view is empty or cannot be drawn");
  EXPECT_EQ(contents(), "old");
}

TEST_F(PdfDocument, noPageIsNoFile) {
  putOldFile();
  EXPECT_FALSE(writePDFPages(path_, std::span<View* const>(), &error_));
  EXPECT_EQ(error_, path_ + ": there is no page to write");
  EXPECT_EQ(contents(), "old");
}

TEST_F(PdfDocument, whatTheHostThrowsBecomesALine) {
  putOldFile();
  BarView view({0, 0, 120, 80});
  EXPECT_FALSE(writePDFPages(
      path_,
      [&view](std::int64_t page) -> View* {
        if (page == 1) throw std::runtime_error("no second page");
        return &view;
      },
      &error_));
  EXPECT_EQ(error_, path_ + ": no second page");
  EXPECT_EQ(contents(), "old");
}

TEST_F(PdfDocument, aFolderThatIsNotThereIsNamed) {
  BarView view({0, 0, 120, 80});
  const std::array<View*, 1> views = {&view};
  const QString path = folder_.filePath(QStringLiteral("nowhere/pages.pdf"));
  EXPECT_FALSE(writePDFPages(path, views, &error_));
  EXPECT_EQ(error_, path + ": No such file or directory");
}

} // namespace
} // namespace xov
