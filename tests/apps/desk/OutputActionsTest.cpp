#include "apps/desk/window/OutputActions.h"

#include "apps/desk/desktop/Dragging.h"
#include "apps/desk/desktop/Printing.h"
#include "tests/apps/desk/DeskFixture.h"

#include <QAction>
#include <QDir>
#include <QPdfWriter>
#include <QProcess>

#include <XOV_Graphics/platform/Pasteboard.h>

namespace xov::desk {
namespace {

class OutputActionsTest : public DeskTest {
protected:
  QByteArray contents(const QString& name) const {
    QFile file(at(name));
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << qPrintable(name);
    return file.readAll();
  }
  QByteArray clipboard(const char* type) const { return Pasteboard::generalPasteboard().data(QLatin1String(type)); }
};

// The line is run by a shell, and draws the picture that is seen, byte for byte.
TEST_F(OutputActionsTest, copiesTheCommandThatDrawsTheSame) {
  Pane* const pane = window_->openPane(request("section", {writeRecord("it's a.sac", "AAA")}));
  ASSERT_TRUE(hasPlot(*pane));
  PlotRequest wanted = pane->request();
  wanted.steps = {{"--filter", "lowpass", "1"}};
  wanted.properties = {{"title", "My 'own' title"}, {"showZeroLine", "true"}};
  window_->changeRequest(pane, wanted, "Change");
  ASSERT_TRUE(hasPlot(*pane));
  pane->view()->grab();
  pane->view()->resize(500, 333);
  pane->view()->setProperty("plotGainFactor", 0.7);
  pane->view()->setProperty("titleColor", QColor(Qt::red));
  pane->view()->showPart(PlotPart{{10, 31.25}, {}, 2.5});
  pane->view()->setExportPixelRatio(1);
  ASSERT_TRUE(pane->view()->writePNGToFile(at("seen.png")));
  child<QAction>("copyCommand").trigger();
  const QString line = QString::fromUtf8(clipboard("text/plain"));
  ASSERT_TRUE(line.startsWith("xov section --size 500 333 ")) << qPrintable(line);
  // Options stand before the files.
  QString options = line.mid(3);
  options.insert(options.indexOf(" --size"), " -o '" + at("drawn.png") + "'");
  QProcess shell;
  shell.start("sh", {"-c", QStringLiteral("'" XOV_COMMAND "'") + options});
  ASSERT_TRUE(shell.waitForFinished(60000));
  EXPECT_EQ(shell.exitCode(), 0) << shell.readAllStandardError().constData();
  EXPECT_EQ(contents("drawn.png"), contents("seen.png"));
}

TEST_F(OutputActionsTest, copiesPicturesAndPages) {
  Pane* const pane = window_->openPane(request("section", {writeRecord("a.sac", "AAA")}));
  ASSERT_TRUE(hasPlot(*pane));
  child<QAction>("copyPicture").trigger();
  EXPECT_EQ(QImage::fromData(clipboard("image/png"), "PNG").size(), pane->view()->snapshot().size());
  child<QAction>("copyPdf").trigger();
  EXPECT_TRUE(clipboard("application/pdf").startsWith("%PDF-"));
}

TEST_F(OutputActionsTest, writesAllPlotsAsPagesOrFiles) {
  Pane* const first = window_->openPane(request("section", {writeRecord("a.sac", "AAA")}));
  Pane* const second = window_->openPane(request("section", {at("a.sac")}));
  Pane* const broken = window_->openPane(request("section", {at("missing.sac")}));
  ASSERT_TRUE(hasPlot(*first) && hasPlot(*second));
  EXPECT_FALSE(hasPlot(*broken));
  ASSERT_TRUE(window_->output().writePages(at("all.pdf")));
  EXPECT_EQ(contents("all.pdf").count("/Type /Page\n"), 2) << "a pane without a plot has no page";
  ASSERT_TRUE(window_->output().writeFiles(folder_.path(), "svg"));
  EXPECT_EQ(QDir(folder_.path()).entryList({"*.svg"}), QStringList({"section_1.svg", "section_2.svg"}));
  ASSERT_TRUE(window_->output().writeFiles(folder_.path(), "svg"));
  EXPECT_TRUE(QFile::exists(at("section_4.svg"))) << "none takes the place of another";
  EXPECT_FALSE(window_->output().writeFiles(at("no folder"), "svg"));
}

TEST_F(OutputActionsTest, doesNothingWithoutAPlot) {
  EXPECT_EQ(window_->output().command(), "");
  EXPECT_FALSE(window_->output().writePages(at("all.pdf")));
  EXPECT_FALSE(QFile::exists(at("all.pdf")));
  for (const char* const name : {"copyPdf", "copyPicture", "copyCommand", "closePane", "splitRight", "tearOff",
                                 "nextPane", "nextPage", "cancelReading"})
    child<QAction>(name).trigger();
  EXPECT_TRUE(window_->panes().empty());
}

TEST_F(OutputActionsTest, printsAPageAPane) {
  Pane* const first = window_->openPane(request("section", {writeRecord("a.sac", "AAA")}));
  Pane* const second = window_->openPane(request("stack", {at("a.sac")}));
  ASSERT_TRUE(hasPlot(*first) && hasPlot(*second));
  {
    QPdfWriter printer(at("printed.pdf"));
    EXPECT_TRUE(paintPages(printer, {first->view(), second->view()}));
  }
  EXPECT_EQ(contents("printed.pdf").count("/Type /Page\n"), 2);
  QPdfWriter printer(at("nothing.pdf"));
  EXPECT_FALSE(paintPages(printer, {}));
}

TEST_F(OutputActionsTest, dragsPlotsOutAsPdfBesideThePicture) {
  Pane* const pane = window_->openPane(request("section", {writeRecord("a.sac", "AAA")}));
  ASSERT_TRUE(hasPlot(*pane));
  Pasteboard picture;
  picture.declareTypes({QStringLiteral("image/tiff")});
  picture.setData("II*", QStringLiteral("image/tiff"));
  const std::unique_ptr<QMimeData> data =
      mimeDataWithPdf({pane->view(), std::make_shared<const Pasteboard>(std::move(picture)), QImage(), QPointF()});
  EXPECT_EQ(data->data("image/tiff"), "II*");
  EXPECT_TRUE(data->data("application/pdf").startsWith("%PDF-"));
  ASSERT_EQ(data->urls().size(), 1);
  QFile file(data->urls()[0].toLocalFile());
  ASSERT_TRUE(file.open(QIODevice::ReadOnly)) << qPrintable(file.fileName());
  EXPECT_EQ(file.readAll(), data->data("application/pdf"));
}

} // namespace
} // namespace xov::desk
