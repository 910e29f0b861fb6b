#include "XOV_Graphics/views/image/XOVImageView.h"
#include "tests/views/image/ImageDrawing.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

namespace xov {
namespace {

using testing::gridOf;

class SheetDouble : public SavePanel {
public:
  SheetDouble(QString path, int answer) : path_(std::move(path)), answer_(answer) {}
  void setRequiredFileType(const QString& extension) override { type = extension; }
  void beginSheet(const QString&, const QString& file, QWidget*, Completion completion) override {
    proposed = file;
    completion(answer_);
  }
  QString filename() const override { return path_; }
  QString type;
  QString proposed;

private:
  QString path_;
  int answer_;
};

class XyzExport : public ::testing::Test {
protected:
  XyzExport() : view({0, 0, 300, 200}), path(folder.filePath(QStringLiteral("grid.txt"))) {
    view.setXLimitsMinMax(0, 1);
    view.setYLimitsMinMax(0, 1);
    view.setupImageDataNROWSNCOLS(gridOf({-2, 0, 3, 8}), 2, 2);
  }
  ~XyzExport() override { SavePanel::setFactory({}); }
  void answer(int code) {
    SavePanel::setFactory([this, code] {
      sheet = std::make_shared<SheetDouble>(path, code);
      return sheet;
    });
  }
  QByteArray written() const {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
  }
  QTemporaryDir folder;
  XOVImageView view;
  QString path;
  std::shared_ptr<SheetDouble> sheet;
};

TEST_F(XyzExport, proposesACountedName) {
  answer(SavePanel::kCancelled);
  view.saveXYZ();
  EXPECT_EQ(sheet->proposed, QStringLiteral("xyz_000.txt"));
  EXPECT_EQ(sheet->type, QStringLiteral("txt"));
  view.savePNG();
  EXPECT_EQ(sheet->proposed, QStringLiteral("plt_001.png"));
  view.saveXYZ();
  EXPECT_EQ(sheet->proposed, QStringLiteral("xyz_002.txt"));
  EXPECT_EQ(view.pltCount(), 3);
}

// The range of the text is that of the values, −2 … 8, and no longer the symmetric one, −8 … 8.
TEST_F(XyzExport, writesTheGridWithItsOwnRange) {
  EXPECT_EQ(view.minValue(), -8);
  answer(SavePanel::kAccepted);
  view.contextualMenu()->actions().last()->trigger();
  EXPECT_EQ(written().toStdString(), "# xmin,xmax,dx = 0.000000, 1.000000 1.000000\n"
                                     "# ymin,ymax,dy = 0.000000, 1.000000 1.000000\n"
                                     "# zmin,zmax = -2.000000, 8.000000\n"
                                     "0.000000 1.000000 -2.000000\n"
                                     "1.000000 1.000000 0.000000\n"
                                     "0.000000 0.000000 3.000000\n"
                                     "1.000000 0.000000 8.000000\n");
  EXPECT_EQ(view.minValue(), -2);
  EXPECT_EQ(view.maxValue(), 8);
  EXPECT_EQ(view.scaleFactor(), 16);
}

TEST_F(XyzExport, aCancelledSheetWritesNothing) {
  answer(SavePanel::kCancelled);
  view.saveXYZ();
  EXPECT_FALSE(QFile::exists(path));
  EXPECT_EQ(view.minValue(), -8);
}

TEST_F(XyzExport, aViewWithoutAGridWritesNothing) {
  view.setImageFloats(nullptr);
  answer(SavePanel::kAccepted);
  view.saveXYZ();
  EXPECT_FALSE(QFile::exists(path));
  QString error;
  EXPECT_FALSE(view.writeXYZToFile(path, &error));
  EXPECT_EQ(error, path + QStringLiteral(": the view has no grid"));
}

TEST_F(XyzExport, aFileThatCannotBeOpenedChangesNothing) {
  path = folder.filePath(QStringLiteral("none/grid.txt"));
  answer(SavePanel::kAccepted);
  view.saveXYZ();
  EXPECT_EQ(view.minValue(), -8);
  QString error;
  EXPECT_FALSE(view.writeXYZToFile(path, &error));
  EXPECT_TRUE(error.startsWith(path)) << qPrintable(error);
  EXPECT_TRUE(QDir(folder.path()).isEmpty());
}

} // namespace
} // namespace xov
