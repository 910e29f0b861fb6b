#include "XOV_Graphics/platform/Colors.h"
#include "XOV_Graphics/views/base/XOVView.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <new>
#include <stdexcept>

namespace xov {
namespace {

class PaperView : public XOVView {
public:
  using XOVView::XOVView;
  void drawRect(const QRectF&) override {
    fillWithColorStrokeColor(colors::white, colors::black);
    drawStringXYHJustVJust(QStringLiteral("label"), 20, 20, 1, 1);
  }
};

// Remembers what it is asked and answers at once, or when told to.
class FakePanel : public SavePanel {
public:
  FakePanel(QString folder, int answer) : folder_(std::move(folder)), answer_(answer) {}
  void setRequiredFileType(const QString& extension) override { type = extension; }
  void beginSheet(const QString& directory, const QString& file, QWidget*, Completion completion) override {
    EXPECT_TRUE(directory.isEmpty());
    proposed = file;
    pending = completion;
    if (answer_ >= 0) completion(answer_);
  }
  QString filename() const override { return folder_.isEmpty() ? QString() : QDir(folder_).filePath(proposed); }
  QString type;
  QString proposed;
  Completion pending;

private:
  QString folder_;
  int answer_;
};

class Export : public ::testing::Test {
protected:
  Export() : view({0, 0, 120, 80}) {}
  ~Export() override { SavePanel::setFactory({}); }
  void answer(int code, const QString& target) {
    SavePanel::setFactory([this, code, target] {
      panels.push_back(std::make_shared<FakePanel>(target, code));
      return panels.back();
    });
  }
  QStringList files() const { return QDir(folder.path()).entryList(QDir::Files, QDir::Name); }
  QByteArray bytes(const QString& name) const {
    QFile file(folder.filePath(name));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
  }
  QTemporaryDir folder;
  std::vector<std::shared_ptr<FakePanel>> panels;
  PaperView view;
};

TEST_F(Export, threeSavesOfAnyFormatsProposeCountedNames) {
  answer(SavePanel::kAccepted, folder.path());
  view.savePDF();
  view.saveTIF();
  view.savePNG();
  ASSERT_EQ(panels.size(), 3u);
  EXPECT_EQ(panels[0]->proposed, QStringLiteral("plt_000.pdf"));
  EXPECT_EQ(panels[1]->proposed, QStringLiteral("plt_001.tif"));
  EXPECT_EQ(panels[2]->proposed, QStringLiteral("plt_002.png"));
  EXPECT_EQ(panels[0]->type, QStringLiteral("pdf"));
  EXPECT_EQ(panels[1]->type, QStringLiteral("tif"));
  EXPECT_EQ(panels[2]->type, QStringLiteral("png"));
  view.saveJPG();
  EXPECT_EQ(panels[3]->proposed, QStringLiteral("plt_003.jpg"));
  EXPECT_EQ(panels[3]->type, QStringLiteral("jpg"));
  EXPECT_EQ(view.pltCount(), 4);
}

TEST_F(Export, eachFormatIsWrittenAsItself) {
  answer(SavePanel::kAccepted, folder.path());
  view.savePDF();
  view.saveTIF();
  view.savePNG();
  view.saveJPG();
  EXPECT_TRUE(bytes(QStringLiteral("plt_000.pdf")).startsWith("%PDF"));
  const QByteArray tiff = bytes(QStringLiteral("plt_001.tif")).left(2);
  EXPECT_TRUE(tiff == "II" || tiff == "MM");
  EXPECT_TRUE(bytes(QStringLiteral("plt_002.png")).startsWith("\x89PNG"));
  EXPECT_TRUE(bytes(QStringLiteral("plt_003.jpg")).startsWith("\xff\xd8"));
}

TEST_F(Export, anSvgIsWrittenWholeOrNotAtAll) {
  const QString path = folder.filePath(QStringLiteral("plot.svg"));
  QString error;
  ASSERT_TRUE(view.writeSVGToFile(path, &error)) << qPrintable(error);
  const QByteArray svg = bytes(QStringLiteral("plot.svg"));
  EXPECT_EQ(svg, view.dataWithSVGInsideRect(view.bounds()));
  EXPECT_TRUE(svg.contains(">label</text>"));
  EXPECT_TRUE(svg.endsWith("</svg>\n"));
  EXPECT_EQ(files(), QStringList{QStringLiteral("plot.svg")});
  PaperView empty({0, 0, 120, 80});
  empty.resize(0, 0);
  EXPECT_FALSE(empty.writeSVGToFile(path, &error));
  EXPECT_TRUE(error.startsWith(path)) << qPrintable(error);
  EXPECT_EQ(bytes(QStringLiteral("plot.svg")), svg);
}

TEST_F(Export, aCancelledSheetStillWritesAndTheCountIsNotGivenBack) {
  answer(SavePanel::kCancelled, folder.path());
  view.savePDF();
  EXPECT_EQ(files(), QStringList{QStringLiteral("plt_000.pdf")});
  EXPECT_EQ(view.pltCount(), 1);
}

TEST_F(Export, aSheetWithoutANameWritesNothing) {
  answer(SavePanel::kAccepted, QString());
  view.savePDF();
  EXPECT_TRUE(files().isEmpty());
}

TEST_F(Export, aThousandthNameHasFourDigits) {
  answer(-1, folder.path());
  for (int i = 0; i <= 1000; ++i)
    view.savePNG();
  EXPECT_EQ(panels[999]->proposed, QStringLiteral("plt_999.png"));
  EXPECT_EQ(panels[1000]->proposed, QStringLiteral("plt_1000.png"));
}

TEST_F(Export, aViewThatIsGoneWhenTheSheetEndsIsNotDrawn) {
  answer(-1, folder.path());
  {
    PaperView shortLived({0, 0, 50, 50});
    shortLived.savePDF();
  }
  panels.at(0)->pending(SavePanel::kAccepted);
  EXPECT_TRUE(files().isEmpty());
}

TEST_F(Export, writersTellWhetherTheyWrote) {
  QString error;
  EXPECT_TRUE(view.writePDFToFile(folder.filePath(QStringLiteral("a.pdf")), &error));
  EXPECT_TRUE(view.writeTIFToFile(folder.filePath(QStringLiteral("a.tif")), &error));
  EXPECT_TRUE(view.writeJPGToFile(folder.filePath(QStringLiteral("a.jpg")), &error));
  EXPECT_TRUE(view.writePNGToFile(folder.filePath(QStringLiteral("a.png")), &error));
  EXPECT_TRUE(error.isEmpty());
  const QString nowhere = folder.filePath(QStringLiteral("none/a.png"));
  EXPECT_FALSE(view.writePNGToFile(nowhere, &error));
  EXPECT_TRUE(error.startsWith(nowhere)) << qPrintable(error);
}

TEST_F(Export, anEmptyViewIsAnErrorAndNotAnEmptyFile) {
  PaperView empty;
  empty.resize(0, 0);
  QString error;
  EXPECT_FALSE(empty.writePDFToFile(folder.filePath(QStringLiteral("e.pdf")), &error));
  EXPECT_FALSE(error.isEmpty());
  EXPECT_FALSE(empty.writePNGToFile(folder.filePath(QStringLiteral("e.png")), &error));
  EXPECT_TRUE(files().isEmpty());
}

TEST_F(Export, picturesHaveTheBoundsTimesThePixelRatio) {
  EXPECT_EQ(view.snapshot().size(), QSize(120, 80));
  view.setExportPixelRatio(1.5);
  EXPECT_EQ(view.snapshot().size(), QSize(180, 120));
  EXPECT_EQ(view.snapshotFromRect({10, 10, 20, 30}).size(), QSize(30, 45));
}

TEST_F(Export, copyPutsAPdfOnTheClipboard) {
  view.copy();
  EXPECT_EQ(Pasteboard::generalPasteboard().data(kPdfType), view.dataWithPDFInsideRect(view.bounds()));
  Pasteboard own;
  own.declareTypes({kPdfType});
  view.writePDFToPasteboard(own);
  EXPECT_TRUE(own.data(kPdfType).startsWith("%PDF"));
}

TEST_F(Export, exportingChangesNothingOfTheView) {
  view.computeRects();
  view.setXLimitsMinMax(1, 2);
  const QRectF rect = view.pRect();
  view.snapshot();
  view.dataWithPDFInsideRect(view.bounds());
  EXPECT_EQ(view.pRect(), rect);
  EXPECT_EQ(view.xyRect(), QRectF(1, 0, 1, 0));
  EXPECT_EQ(view.pltCount(), 0);
  EXPECT_EQ(view.size(), QSize(120, 80));
}

class ThrowingView : public XOVView {
public:
  using XOVView::XOVView;
  void drawRect(const QRectF&) override { throw std::bad_alloc(); }
};

// For want of memory, or by what a host draws.
TEST_F(Export, thatThrowsLeavesTheOldFileAndSaysWhy) {
  ThrowingView throwing({0, 0, 120, 80});
  const auto writers = {&XOVView::writePDFToFile, &XOVView::writeSVGToFile, &XOVView::writeTIFToFile,
                        &XOVView::writeJPGToFile, &XOVView::writePNGToFile};
  const QString path = folder.filePath(QStringLiteral("plot"));
  for (const auto write : writers) {
    ASSERT_TRUE((view.*write)(path, nullptr));
    const QByteArray before = bytes(QStringLiteral("plot"));
    QString error;
    EXPECT_FALSE((throwing.*write)(path, &error));
    EXPECT_EQ(error, path + ": not enough memory");
    EXPECT_EQ(bytes(QStringLiteral("plot")), before);
    EXPECT_EQ(files(), QStringList(QStringLiteral("plot")));
  }
  throwing.copy();
}

TEST_F(Export, isWrittenThoughWhoHearsOfItThrows) {
  QObject::connect(&view, &XOVView::exported, [](const QString&) { throw std::runtime_error("of the host's"); });
  EXPECT_TRUE(view.writePDFToFile(folder.filePath(QStringLiteral("plot.pdf"))));
}

} // namespace
} // namespace xov
