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
  EXPECT_EQ(QFileInfo(panel->filename()).fileName(), QStringLiteral("plt_000.pdf"));
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
