#include "NavigatedSection.h"
#include "XOV_Graphics/platform/RecordingContext.h"
#include "XOV_Graphics/views/timeline/helicorderView.h"

#include <QTest>

namespace xov::testing {
namespace {

constexpr double kTop = 536;         // of the first row in a view of 800 × 600
constexpr double kRowHeight = 18.56; // (500 - 36) / 25
constexpr double kLeft = 72;
constexpr double kWidth = 692;

// A day from 05:00, a sample every ten seconds; 24 rows of an hour.
struct NavigatedDrum {
  NavigatedDrum() {
    view->setWvfrmArray(pieces);
    view->snapshot();
    navigator = new PlotNavigator(view.get());
  }
  // A point in a row at a share of its width.
  static QPointF at(int row, double share) { return {kLeft + share * kWidth, kTop - (row + 0.5) * kRowHeight}; }

  std::shared_ptr<SeismogramArray> pieces =
      std::make_shared<SeismogramArray>(SeismogramArray{makeRecord({.interval = 10, .count = 8640})});
  std::unique_ptr<helicorderView> view = std::make_unique<helicorderView>(QRectF(0, 0, 800, 600));
  PlotNavigator* navigator = nullptr;
};

TEST(DrumNavigation, positionsGoOnFromRowToRow) {
  const NavigatedDrum drum;
  EXPECT_NEAR(drum.view->partPosition(NavigatedDrum::at(0, 0.25))->x(), 900, 1e-6);
  EXPECT_NEAR(drum.view->partPosition(NavigatedDrum::at(5, 0.5))->x(), 5 * 3600 + 1800, 1e-6);
  const std::vector<QLineF> line = drum.view->linesAt(5 * 3600 + 1800);
  ASSERT_EQ(line.size(), 1U);
  EXPECT_NEAR(line[0].x1(), kLeft + kWidth / 2, 1e-6);
  EXPECT_NEAR(line[0].y1(), kTop - 6 * kRowHeight, 1e-6);
  EXPECT_NEAR(line[0].y2(), kTop - 5 * kRowHeight, 1e-6);
  EXPECT_TRUE(drum.view->linesAt(-1).empty());
}

TEST(DrumNavigation, zoomHalvesTheRowsAndLeavesThePointersTimeInItsRow) {
  const NavigatedDrum drum;
  drum.navigator->zoom(0.5, NavigatedDrum::at(5, 0.5)); // 19800 s
  // 19800 - 19800 / 2 = 9900 s after 05:00 is 07:45, which is nearest to 08:00 of the whole half hours around it.
  EXPECT_EQ(drum.view->rowDuration(), 1800);
  EXPECT_EQ(drum.view->pageStart(), onTheDay(8, 0));
  EXPECT_EQ(drum.view->linesAt(19800).size(), 1U);
  drum.view->snapshot();
  EXPECT_NEAR(drum.view->partPosition(NavigatedDrum::at(5, 0))->x(), 19800, 1e-6); // 10:30, the sixth row
}

TEST(DrumNavigation, smallTurnsOfTheWheelAddUpToAStep) {
  const NavigatedDrum drum;
  // 0.8² of an hour are 38.4 minutes, nearer to half an hour than to an hour; 0.8 of it are not.
  for (int i = 0; i < 15; ++i)
    turnWheel(*drum.view, NavigatedDrum::at(5, 0.5), {0, 12});
  EXPECT_EQ(drum.view->rowDuration(), 3600);
  for (int i = 0; i < 5; ++i)
    turnWheel(*drum.view, NavigatedDrum::at(5, 0.5), {0, 12});
  EXPECT_EQ(drum.view->rowDuration(), 1800);
}

TEST(DrumNavigation, aBoxInARowShowsItsStretchInRoundRows) {
  const NavigatedDrum drum;
  drag(*drum.view, NavigatedDrum::at(5, 0.25) + QPointF(0, 4), NavigatedDrum::at(5, 0.75) - QPointF(0, 4),
       Qt::LeftButton);
  // 18900 … 20700 s, 10:15 to 10:45: 24 rows of one minute are too few, of two minutes enough, from 10:14 on.
  EXPECT_EQ(drum.view->rowDuration(), 120);
  EXPECT_EQ(drum.view->pageStart(), onTheDay(10, 14));
}

TEST(DrumNavigation, pagesAndRowsMoveOn) {
  const NavigatedDrum drum;
  drum.view->showPart(PlotPart{.x = {0, 24 * 600.0}, .y = {}}); // rows of ten minutes
  EXPECT_EQ(drum.view->pageStart(), onTheDay(5, 0));
  QTest::keyClick(drum.view.get(), Qt::Key_PageDown);
  EXPECT_EQ(drum.view->pageStart(), onTheDay(9, 0));
  drag(*drum.view, NavigatedDrum::at(5, 0.5), NavigatedDrum::at(3, 0.5), Qt::MiddleButton);
  EXPECT_EQ(drum.view->pageStart(), onTheDay(9, 20)); // two rows up
}

TEST(DrumNavigation, aPageWithinTheDataHasNoRowsBesideIt) {
  const NavigatedDrum drum;
  drum.view->showPart(PlotPart{.x = {7200, 7200 + 24 * 600.0}, .y = {}});
  RecordingContext recording;
  drum.view->drawInto(recording);
  std::vector<std::int64_t> counts;
  for (const RecordedItem& item : recording.items()) {
    for (const Trace& trace : item.path.traces()) {
      EXPECT_GE(trace.tOrigin, 0);
      EXPECT_LT(trace.tOrigin, 24 * 600);
      counts.push_back(trace.size());
    }
  }
  EXPECT_EQ(counts, std::vector<std::int64_t>(24, 60)); // samples ten seconds apart
}

TEST(DrumNavigation, homeBringsBackTheHostsPageAndPicture) {
  const NavigatedDrum drum;
  const QImage before = drum.view->snapshot();
  drum.navigator->zoom(0.1);
  drum.navigator->amplify(2);
  EXPECT_NE(drum.view->snapshot(), before);
  drum.navigator->showAll();
  EXPECT_FALSE(drum.view->pageStart().isValid());
  EXPECT_EQ(drum.view->rowDuration(), 3600);
  EXPECT_EQ(drum.view->snapshot(), before);
}

TEST(DrumNavigation, aHostThatSetsRowsEndsThePart) {
  const NavigatedDrum drum;
  drum.navigator->zoom(0.5);
  drum.view->setRowDuration(900);
  EXPECT_FALSE(drum.view->shownPart().has_value());
  EXPECT_FALSE(drum.view->pageStart().isValid());
  EXPECT_EQ(drum.view->rowDuration(), 900);
}

// Where the page lies follows from the first piece: asked for each of thousands, it took most of the time.
TEST(DrumNavigation, aPartOfManyPiecesAsksTheFirstOneAsOftenAsOneOfFew) {
  struct Asked : SacSeismogram {
    using SacSeismogram::SacSeismogram;
    const SacHeader* GetSacHeader() const override {
      ++times;
      return SacSeismogram::GetSacHeader();
    }
    mutable int times = 0;
  };
  const auto timesAsked = [](int count) {
    const auto first =
        std::make_shared<Asked>(*makeRecord({.interval = 10})->GetSacHeader(), std::vector<float>(60, 1));
    const auto pieces = std::make_shared<SeismogramArray>(SeismogramArray{first});
    for (int k = 1; k < count; ++k)
      pieces->push_back(makeRecord({.begin = k * 600.0F, .interval = 10, .count = 60}));
    helicorderView view(QRectF(0, 0, 800, 600));
    view.setWvfrmArray(pieces);
    view.snapshot();
    view.showPart(PlotPart{.x = {0, 24 * 600.0}, .y = {}});
    first->times = 0;
    view.snapshot();
    view.readout(NavigatedDrum::at(2, 0.5));
    return first->times;
  };
  const int ofFew = timesAsked(2);
  EXPECT_GT(ofFew, 0);
  EXPECT_EQ(timesAsked(100), ofFew);
}

TEST(DrumNavigation, withoutATimeThereIsAGainOnly) {
  const auto pieces = std::make_shared<SeismogramArray>(SeismogramArray{makeRecord({.reference = {}})});
  helicorderView view(QRectF(0, 0, 800, 600));
  view.setWvfrmArray(pieces);
  view.snapshot();
  PlotNavigator navigator(&view);
  navigator.zoom(0.5);
  EXPECT_EQ(view.rowDuration(), 3600);
  EXPECT_NEAR(view.currentPart().gain, 2, 1e-12); // the wheel has nothing else to move
}

TEST(DrumNavigation, aPageThatBeginsBetweenTwoSamplesShowsNoneOfTheFirst) {
  NavigatedDrum drum;
  // A sample every ten seconds from 05:00:05 on: half of an interval beside the beginnings of rows.
  drum.pieces->front() = makeRecord({.begin = 5, .interval = 10, .count = 8640});
  drum.view->snapshot();
  drum.view->showPart(PlotPart{.x = {3600, 3600 + 24 * 600.0}, .y = {}}); // rows of ten minutes
  ASSERT_EQ(drum.view->rowDuration(), 600);
  RecordingContext recording;
  drum.view->drawInto(recording);
  int rows = 0;
  for (const RecordedItem& item : recording.items()) {
    for (const Trace& trace : item.path.traces()) {
      const std::vector<QPointF> points = trace.points();
      ASSERT_FALSE(points.empty());
      // The row's first sample is five seconds of six hundred behind its beginning.
      if (rows++ > 0) continue;
      EXPECT_NEAR(points.front().x(), kLeft + kWidth * 5 / 600, 0.05);
    }
  }
  EXPECT_EQ(rows, 24);
}

} // namespace
} // namespace xov::testing
