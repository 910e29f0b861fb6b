// What is thrown by a host's drawing, or for want of memory, and where it ends.
#include "XOV_Graphics/platform/Colors.h"
#include "XOV_Graphics/platform/PdfDocument.h"
#include "XOV_Graphics/platform/RecordingContext.h"
#include "tests/support/Pixels.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QPainter>
#include <QTemporaryDir>

#include <new>
#include <stdexcept>

namespace xov {
namespace {

using testing::DrawingView;

[[noreturn]] void drawWithoutMemory(const QRectF&) { throw std::bad_alloc(); }
[[noreturn]] void drawWrongly(const QRectF&) { throw std::runtime_error("no such\nstation"); }

TEST(Thrown, byDrawingMakesAnExportEmptyAndSaysWhy) {
  DrawingView view({0, 0, 40, 30}, drawWithoutMemory);
  EXPECT_TRUE(view.dataWithPDFInsideRect(view.bounds()).isEmpty());
  EXPECT_EQ(view.exportError(), "not enough memory");
  EXPECT_TRUE(view.dataWithSVGInsideRect(view.bounds()).isEmpty());
  EXPECT_TRUE(view.pictureOfRect(view.bounds()).isNull());
  EXPECT_EQ(view.exportError(), "not enough memory");
  DrawingView wrong({0, 0, 40, 30}, drawWrongly);
  EXPECT_TRUE(wrong.dataWithPDFInsideRect(wrong.bounds()).isEmpty());
  EXPECT_EQ(wrong.exportError(), "no such station");
}

TEST(Thrown, isForgottenWithTheNextExport) {
  bool throws = true;
  DrawingView view({0, 0, 40, 30}, [&](const QRectF& dirty) {
    if (throws) drawWrongly(dirty);
  });
  EXPECT_TRUE(view.pictureOfRect(view.bounds()).isNull());
  throws = false;
  EXPECT_FALSE(view.pictureOfRect(view.bounds()).isNull());
  EXPECT_EQ(view.exportError(), "");
  EXPECT_TRUE(view.pictureOfRect({}).isNull());
  EXPECT_EQ(view.exportError(), "");
}

TEST(Thrown, byDrawingReachesNeitherPaintersNorTheLoopOfEvents) {
  DrawingView view({0, 0, 40, 30}, drawWrongly);
  RecordingContext recording;
  view.drawInto(recording);
  QImage image(40, 30, QImage::Format_ARGB32_Premultiplied);
  QPainter painter(&image);
  painter.setOpacity(0.5);
  view.paint(painter, {0, 0, 40, 30});
  EXPECT_EQ(painter.opacity(), 0.5);
  painter.end();
  view.grab(); // which sends a paint event at once
  EXPECT_GE(view.draws, 3);
  EXPECT_EQ(GraphicsContext::current().stateDepth(), 1u);
}

TEST(Thrown, byOnePageLeavesTheOldDocument) {
  const QTemporaryDir folder;
  const QString path = folder.filePath(QStringLiteral("pages.pdf"));
  DrawingView sound({0, 0, 40, 30}), wrong({0, 0, 40, 30}, drawWrongly);
  View* const first[] = {&sound};
  View* const both[] = {&sound, &wrong};
  ASSERT_TRUE(writePDFPages(path, first));
  QFile file(path);
  ASSERT_TRUE(file.open(QIODevice::ReadOnly));
  const QByteArray before = file.readAll();
  QString error;
  EXPECT_FALSE(writePDFPages(path, both, &error));
  EXPECT_EQ(error, path + ": page 2: no such station");
  file.seek(0);
  EXPECT_EQ(file.readAll(), before);
  EXPECT_EQ(QDir(folder.path()).entryList(QDir::Files | QDir::Hidden).size(), 1);
}

} // namespace
} // namespace xov
