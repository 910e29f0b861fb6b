#include "XOV_Graphics/base/Log.h"
#include "XOV_Graphics/platform/Drag.h"
#include "XOV_Graphics/platform/Pasteboard.h"
#include "XOV_Graphics/platform/SavePanel.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QClipboard>
#include <QFile>
#include <QFileDialog>
#include <QFileInfo>
#include <QTemporaryDir>
#include <QTest>
#include <QUrl>
#include <QWidget>

namespace xov {
namespace {

TEST(Pasteboard, takesOnlyDeclaredTypes) {
  Pasteboard board;
  board.declareTypes({kPdfType});
  EXPECT_TRUE(board.setData("pdf", kPdfType));
  EXPECT_FALSE(board.setData("tiff", kTiffType));
  EXPECT_EQ(board.data(kPdfType), "pdf");
  EXPECT_TRUE(board.data(kTiffType).isEmpty());
}

TEST(Pasteboard, declaringTypesEmptiesIt) {
  Pasteboard board;
  board.declareTypes({kPdfType});
  board.setData("pdf", kPdfType);
  board.declareTypes({kPdfType, kTiffType});
  EXPECT_TRUE(board.data(kPdfType).isEmpty());
  EXPECT_EQ(board.types(), (QStringList{kPdfType, kTiffType}));
}

TEST(Pasteboard, theGeneralOneIsTheClipboard) {
  Pasteboard board = Pasteboard::generalPasteboard();
  board.declareTypes({kPdfType});
  board.setData("on the clipboard", kPdfType);
  EXPECT_EQ(QApplication::clipboard()->mimeData()->data(kPdfType), "on the clipboard");
  EXPECT_EQ(Pasteboard::generalPasteboard().data(kPdfType), "on the clipboard");
}

TEST(Drag, carriesTheTiffAndAFileOfIt) {
  QByteArray tiff;
  QByteArray uris;
  setDragHandler([&](const PictureDrag& drag) {
    tiff = drag.pasteboard->data(kTiffType);
    uris = drag.pasteboard->data("text/uri-list");
    EXPECT_EQ(drag.hotSpot, QPointF(5, 6));
  });
  Pasteboard board;
  board.declareTypes({kTiffType});
  board.setData("tiff bytes", kTiffType);
  dragPicture(nullptr, std::move(board), QImage(), {5, 6});
  setDragHandler({});
  EXPECT_EQ(tiff, "tiff bytes");
  QFile file(QUrl(QString::fromUtf8(uris.trimmed())).toLocalFile());
  ASSERT_TRUE(file.open(QIODevice::ReadOnly)) << uris.constData();
  EXPECT_EQ(file.readAll(), "tiff bytes");
  EXPECT_TRUE(file.fileName().endsWith(QStringLiteral(".tif")));
}

class AnsweringPanel : public SavePanel {
public:
  void setRequiredFileType(const QString& extension) override { type = extension; }
  void beginSheet(const QString&, const QString& file, QWidget*, Completion completion) override {
    proposed = file;
    completion(kAccepted);
  }
  QString filename() const override { return proposed; }
  QString type;
  QString proposed;
};

TEST(SavePanel, isReplacedThroughItsFactory) {
  const auto panel = std::make_shared<AnsweringPanel>();
  SavePanel::setFactory([panel] { return panel; });
  EXPECT_EQ(SavePanel::savePanel(), panel);
  SavePanel::setFactory({});
  EXPECT_NE(SavePanel::savePanel(), panel);
}

TEST(SavePanel, theFileDialogProposesTheNameAndReportsItsEnd) {
  QTemporaryDir folder;
  QWidget window;
  window.show();
  const std::shared_ptr<SavePanel> panel = SavePanel::savePanel();
  panel->setRequiredFileType(QStringLiteral("pdf"));
  int code = -1;
  panel->beginSheet(folder.path(), QStringLiteral("plt_000.pdf"), &window, [&](int result) { code = result; });
  EXPECT_EQ(code, -1); // it does not block
  auto* dialog = window.findChild<QFileDialog*>();
  ASSERT_NE(dialog, nullptr);
  EXPECT_EQ(dialog->windowModality(), Qt::WindowModal);
  dialog->reject();
  EXPECT_EQ(code, SavePanel::kCancelled);
}

/// A sheet for PDF files, open in a folder of its own.
class Sheet : public ::testing::Test {
protected:
  QFileDialog* open(const QString& directory, const QString& file) {
    panel = SavePanel::savePanel();
    panel->setRequiredFileType(QStringLiteral("pdf"));
    window = std::make_unique<QWidget>();
    window->show();
    code = -1;
    panel->beginSheet(directory, file, window.get(), [this](int result) { code = result; });
    return window->findChild<QFileDialog*>();
  }
  void makeFile(const QString& name) const {
    QFile file(folder.filePath(name));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
  }
  // As a click on Save does it, behind the question whether to replace a file.
  static void accept(QFileDialog* dialog) { static_cast<QDialog*>(dialog)->done(QDialog::Accepted); }

  QTemporaryDir folder;
  std::unique_ptr<QWidget> window;
  std::shared_ptr<SavePanel> panel;
  int code = -1;
};

TEST_F(Sheet, hasNoFileNameAfterACancel) {
  QFileDialog* const dialog = open(folder.path(), QStringLiteral("plt_000.pdf"));
  ASSERT_NE(dialog, nullptr);
  EXPECT_EQ(panel->filename(), folder.filePath(QStringLiteral("plt_000.pdf")));
  dialog->reject();
  EXPECT_EQ(code, SavePanel::kCancelled);
  EXPECT_TRUE(panel->filename().isEmpty());
}

TEST_F(Sheet, namesGetTheExtensionWhateverDotsTheyHold) {
  const std::pair<const char*, const char*> names[] = {
      {"fig.1", "fig.1.pdf"}, {"fig_v2.5", "fig_v2.5.pdf"}, {"fig", "fig.pdf"}, {"fig.PDF", "fig.PDF"}};
  for (const auto& [typed, written] : names) {
    QFileDialog* const dialog = open(folder.path(), QLatin1String(typed));
    ASSERT_NE(dialog, nullptr);
    accept(dialog);
    EXPECT_EQ(code, SavePanel::kAccepted);
    EXPECT_EQ(panel->filename(), folder.filePath(QLatin1String(written)));
  }
}

TEST_F(Sheet, asksAgainBeforeTheExtensionMakesTheNameOfAFile) {
  makeFile(QStringLiteral("fig.1.pdf"));
  QFileDialog* const dialog = open(folder.path(), QStringLiteral("fig.1"));
  ASSERT_NE(dialog, nullptr);
  accept(dialog);
  EXPECT_EQ(code, -1);
  EXPECT_TRUE(dialog->isVisible());
  EXPECT_EQ(dialog->selectedFiles(), QStringList{folder.filePath(QStringLiteral("fig.1.pdf"))});
  accept(dialog);
  EXPECT_EQ(code, SavePanel::kAccepted);
  EXPECT_EQ(panel->filename(), folder.filePath(QStringLiteral("fig.1.pdf")));
}

TEST_F(Sheet, startsInTheFolderSavedToLast) {
  QFileDialog* first = open(folder.path(), QStringLiteral("a.pdf"));
  ASSERT_NE(first, nullptr);
  accept(first);
  QTemporaryDir other;
  QFileDialog* cancelled = open(other.path(), QStringLiteral("b.pdf"));
  ASSERT_NE(cancelled, nullptr);
  cancelled->reject();
  QFileDialog* next = open(QString(), QStringLiteral("c.pdf"));
  ASSERT_NE(next, nullptr);
  EXPECT_EQ(next->directory().path(), folder.path());
  EXPECT_EQ(panel->filename(), folder.filePath(QStringLiteral("c.pdf")));
  next->reject();
  folder.remove();
  QFileDialog* last = open(QString(), QStringLiteral("d.pdf"));
  ASSERT_NE(last, nullptr);
  EXPECT_EQ(last->directory().path(), QDir::currentPath());
  last->reject();
}

TEST(SavePanel, livesUntilItHasAnsweredWithoutAnyoneKeepingIt) {
  QWidget window;
  int code = -1;
  SavePanel::savePanel()->beginSheet(QString(), QStringLiteral("a.pdf"), &window, [&](int result) { code = result; });
  auto* dialog = window.findChild<QFileDialog*>();
  ASSERT_NE(dialog, nullptr);
  static_cast<QDialog*>(dialog)->done(QDialog::Accepted);
  EXPECT_EQ(code, SavePanel::kAccepted);
}

TEST(Log, hasItsOwnCategoriesThatAHostCanSilence) {
  EXPECT_STREQ(log().categoryName(), "xov");
  EXPECT_STREQ(cellLog().categoryName(), "xov.cells");
  EXPECT_TRUE(cellLog().isDebugEnabled());
  QLoggingCategory::setFilterRules(QStringLiteral("xov.cells.debug=false"));
  EXPECT_FALSE(cellLog().isDebugEnabled());
  EXPECT_TRUE(log().isDebugEnabled());
  QLoggingCategory::setFilterRules(QString());
}

} // namespace
} // namespace xov
