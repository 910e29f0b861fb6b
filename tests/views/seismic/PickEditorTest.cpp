#include "XOV_Graphics/views/seismic/PickEditor.h"

#include "SeisDrawing.h"
#include "XOV_Graphics/platform/Colors.h"
#include "XOV_Graphics/seismic/SacSeismogram.h"
#include "XOV_Graphics/seismic/arrivals/Arrivals.h"
#include "XOV_Graphics/views/seismic/MultiSeisView.h"
#include "XOV_Graphics/views/seismic/SeisView01.h"
#include "XOV_Graphics/views/seismic/SeisView02.h"
#include "XOV_Graphics/views/seismic/wvfrmView.h"
#include "tests/seismic/PickSamples.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QKeyEvent>
#include <QMouseEvent>

#include <algorithm>
#include <limits>

namespace xov::testing {
namespace {

using test::moment;

constexpr const char* kStart = "2011-03-11T05:50:00Z";

/// 401 samples a second apart of a channel of II.TLY, from 05:50 on.
std::shared_ptr<SacSeismogram> channelOf(const char* channel, bool hasTime = true) {
  std::vector<float> samples(401, 0);
  samples[200] = 1;
  return std::make_shared<SacSeismogram>(test::tlyHeader(channel, hasTime ? kStart : nullptr), std::move(samples));
}

/// What a view draws now.
std::unique_ptr<RecordingContext> drawnBy(SeismogramView& view) {
  auto recording = std::make_unique<RecordingContext>();
  view.drawInto(*recording);
  return recording;
}

/// A section of two channels, 440 by 300 points: a second is a point, time 0 is at 20, the strips' zero lines at 110
/// and 210.
class PickEditorTest : public ::testing::Test {
protected:
  PickEditorTest() { show({channelOf("BHZ"), channelOf("BHN")}); }

  void show(SeismogramArray shown) {
    records_ = std::make_shared<SeismogramArray>(std::move(shown));
    view_ = std::make_unique<MultiSeisView>(QRectF(0, 0, 440, 300));
    view_->setWvfrmsArray(records_);
    draw();
  }

  const RecordingContext& draw() {
    drawing_ = drawnBy(*view_);
    return *drawing_;
  }

  void edit() {
    editor_ = new PickEditor(view_.get(), &document_);
    QObject::connect(&document_, &PickDocument::edited, [this] { ++edits_; });
    QObject::connect(editor_, &PickEditor::refused, [this](const QString& reason) { refusal_ = reason; });
  }

  void mouse(QEvent::Type type, QPointF at, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
    const bool isMove = type == QEvent::MouseMove;
    const QPointF local(at.x(), view_->height() - at.y());
    QMouseEvent event(type, local, view_->mapToGlobal(local), isMove ? Qt::NoButton : Qt::LeftButton,
                      type == QEvent::MouseButtonRelease ? Qt::NoButton : Qt::LeftButton, modifiers);
    QApplication::sendEvent(view_.get(), &event);
  }
  void key(int key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
    QKeyEvent event(QEvent::KeyPress, key, modifiers);
    QApplication::sendEvent(view_.get(), &event);
  }
  void drag(QPointF from, QPointF to, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
    mouse(QEvent::MouseButtonPress, from, modifiers);
    mouse(QEvent::MouseMove, to, modifiers);
    mouse(QEvent::MouseButtonRelease, to, modifiers);
  }

  std::shared_ptr<SeismogramArray> records_;
  PickDocument document_;
  std::unique_ptr<MultiSeisView> view_;
  std::unique_ptr<RecordingContext> drawing_;
  PickEditor* editor_ = nullptr;
  int edits_ = 0;
  QString refusal_;
};

/// How many single upright lines stand there, the red ticks of first arrivals aside.
int linesAt(const RecordingContext& recording, double x) {
  int count = 0;
  for (const RecordedItem& stroke : lineStrokes(recording)) {
    const std::vector<QLineF> lines = stroke.segments();
    if (lines.size() != 1 || stroke.color == colors::red) continue;
    count += std::abs(lines[0].x1() - x) < 1e-2 && std::abs(lines[0].x2() - x) < 1e-2;
  }
  return count;
}

} // namespace

TEST_F(PickEditorTest, setsPicksAtThePointerOnTheTraceUnderIt) {
  edit();
  mouse(QEvent::MouseMove, {140, 110});
  key(Qt::Key_P);
  mouse(QEvent::MouseMove, {250.5, 210});
  key(Qt::Key_S);
  ASSERT_EQ(document_.picks().size(), 2U);
  const Pick& p = document_.picks()[0];
  EXPECT_EQ(p.phase, QStringLiteral("P"));
  EXPECT_EQ(utcText(p.time), QStringLiteral("2011-03-11T05:52:00.000000000Z")); // 140 - 20 = 120 s
  EXPECT_EQ(p.channel, (ChannelCodes{"II", "TLY", "00", "BHZ"}));
  EXPECT_EQ(p.mode, PickMode::Manual);
  const Pick& s = document_.picks()[1];
  EXPECT_EQ(s.channel[3], QStringLiteral("BHN"));
  EXPECT_NEAR(double((s.time - moment(kStart)).count()), 230.5e9, 1e6);
  EXPECT_EQ(edits_, 2);
  EXPECT_EQ(editor_->currentPick()->id, s.id);
}

TEST_F(PickEditorTest, movesThePickOfThatNameUnlessAnotherIsWanted) {
  edit();
  mouse(QEvent::MouseMove, {140, 110});
  key(Qt::Key_P);
  const QString id = document_.picks()[0].id;
  mouse(QEvent::MouseMove, {160, 110});
  key(Qt::Key_P);
  ASSERT_EQ(document_.picks().size(), 1U);
  EXPECT_EQ(document_.picks()[0].id, id);
  EXPECT_EQ(document_.picks()[0].time, moment("2011-03-11T05:52:20Z"));
  mouse(QEvent::MouseMove, {300, 110});
  key(Qt::Key_P, Qt::ShiftModifier);
  EXPECT_EQ(document_.picks().size(), 2U);
}

TEST_F(PickEditorTest, setsAndMarksPicksInTheTimeThatIsShown) {
  edit();
  PlotPart part = view_->currentPart();
  part.x = {100, 200}; // four points a second
  view_->showPart(part);
  draw();
  editor_->pickAt({220, 110}, QStringLiteral("P"));
  ASSERT_EQ(document_.picks().size(), 1U);
  EXPECT_EQ(document_.picks()[0].time, moment("2011-03-11T05:52:30Z")); // 100 + 200 / 4 s
  EXPECT_EQ(linesAt(draw(), 220), 1);
  drag({220, 110}, {260, 110});
  EXPECT_EQ(document_.picks()[0].time, moment("2011-03-11T05:52:40Z"));
  editor_->pickAt({60, 110}, QStringLiteral("P"));
  EXPECT_EQ(document_.picks().size(), 1U) << "the one that is shown moves";
  part.x = {150, 250};
  view_->showPart(part);
  draw();
  editor_->pickAt({60, 110}, QStringLiteral("P"));
  EXPECT_EQ(document_.picks().size(), 2U) << "one that is not stays where it is";
}

TEST_F(PickEditorTest, dragsPicksAndTheirUncertainty) {
  edit();
  editor_->pickAt({140, 110}, QStringLiteral("P"));
  mouse(QEvent::MouseButtonPress, {142, 110});
  mouse(QEvent::MouseMove, {202, 250}); // also off its own trace
  EXPECT_EQ(document_.picks()[0].time, moment("2011-03-11T05:52:00Z")) << "no step before the button is up";
  EXPECT_EQ(linesAt(draw(), 200), 1) << "but it is drawn where it will be";
  mouse(QEvent::MouseButtonRelease, {202, 250});
  EXPECT_EQ(document_.picks()[0].time, moment("2011-03-11T05:53:00Z"));
  EXPECT_EQ(edits_, 2);
  drag({200, 110}, {208, 110}, Qt::ShiftModifier);
  EXPECT_NEAR(document_.picks()[0].lowerSeconds.value(), 8, 1e-3);
  EXPECT_NEAR(document_.picks()[0].upperSeconds.value(), 8, 1e-3);
  EXPECT_EQ(document_.picks()[0].time, moment("2011-03-11T05:53:00Z"));
}

TEST_F(PickEditorTest, endsADragWithEscape) {
  edit();
  editor_->pickAt({140, 110}, QStringLiteral("P"));
  mouse(QEvent::MouseButtonPress, {140, 110});
  mouse(QEvent::MouseMove, {240, 110});
  key(Qt::Key_Escape);
  mouse(QEvent::MouseButtonRelease, {240, 110});
  EXPECT_EQ(document_.picks()[0].time, moment("2011-03-11T05:52:00Z"));
  EXPECT_EQ(edits_, 1);
}

TEST_F(PickEditorTest, removesThePickUnderThePointerOnly) {
  edit();
  editor_->pickAt({140, 110}, QStringLiteral("P"));
  mouse(QEvent::MouseMove, {145, 110}); // 5 points beside
  key(Qt::Key_Delete);
  mouse(QEvent::MouseMove, {140, 210}); // another trace
  key(Qt::Key_Delete);
  EXPECT_EQ(document_.picks().size(), 1U);
  mouse(QEvent::MouseMove, {143, 110});
  key(Qt::Key_Delete);
  EXPECT_TRUE(document_.picks().empty());
  EXPECT_EQ(editor_->currentPick(), nullptr);
}

TEST_F(PickEditorTest, saysPolarityOnsetAndUncertaintyByKeys) {
  edit();
  editor_->pickAt({140, 110}, QStringLiteral("P"));
  mouse(QEvent::MouseMove, {300, 210}); // the pick touched last is meant
  key(Qt::Key_U);
  EXPECT_EQ(document_.picks()[0].polarity, PickPolarity::Positive);
  key(Qt::Key_D);
  EXPECT_EQ(document_.picks()[0].polarity, PickPolarity::Negative);
  key(Qt::Key_D);
  EXPECT_EQ(document_.picks()[0].polarity, PickPolarity::Unknown);
  key(Qt::Key_X);
  EXPECT_EQ(document_.picks()[0].polarity, PickPolarity::Undecidable);
  key(Qt::Key_E);
  EXPECT_EQ(document_.picks()[0].onset, PickOnset::Emergent);
  key(Qt::Key_W);
  EXPECT_NEAR(document_.picks()[0].upperSeconds.value(), 4, 1e-3); // points, which are seconds
  key(Qt::Key_W);
  EXPECT_NEAR(document_.picks()[0].upperSeconds.value(), 8, 1e-3);
  key(Qt::Key_W, Qt::ShiftModifier);
  EXPECT_NEAR(document_.picks()[0].lowerSeconds.value(), 4, 1e-3);
}

TEST_F(PickEditorTest, setsOtherPhasesByKeysOfTheHost) {
  edit();
  editor_->setPhaseKey(Qt::Key_1, QStringLiteral("pP"));
  editor_->setPhaseKey(Qt::Key_S, QString());
  mouse(QEvent::MouseMove, {140, 110});
  key(Qt::Key_1);
  key(Qt::Key_S);
  ASSERT_EQ(document_.picks().size(), 1U);
  EXPECT_EQ(document_.picks()[0].phase, QStringLiteral("pP"));
}

TEST_F(PickEditorTest, refusesPlacesWithoutATime) {
  show({channelOf("BHZ", false)});
  edit();
  mouse(QEvent::MouseMove, {140, 160});
  key(Qt::Key_P);
  EXPECT_EQ(refusal_, QStringLiteral("II.TLY.00.BHZ: picks need a station code and a reference time"));
  const double none = std::numeric_limits<double>::quiet_NaN();
  for (const QPointF point : {QPointF(none, 110), QPointF(140, none), QPointF(1e300, -1e300), QPointF(-5, 110)}) {
    editor_->pickAt(point, QStringLiteral("P"));
    EXPECT_FALSE(editor_->removeAt(point));
  }
  editor_->pickAt({140, 160}, QString());
  EXPECT_TRUE(document_.picks().empty());
}

TEST_F(PickEditorTest, marksNothingOfItsOwnUntilThereIsSomething) {
  const QString before = draw().toText();
  edit();
  EXPECT_NE(draw().toText(), before) << "ticks of arrivals that are not set lie outside, and go";
  editor_->setEnabled(false);
  EXPECT_EQ(draw().toText(), before);
  key(Qt::Key_P);
  mouse(QEvent::MouseMove, {140, 110});
  key(Qt::Key_P);
  EXPECT_TRUE(document_.picks().empty());
  delete editor_;
  EXPECT_EQ(draw().toText(), before);
}

TEST_F(PickEditorTest, marksPicksWithUncertaintyAndPolarity) {
  edit();
  editor_->pickAt({140, 110}, QStringLiteral("P"));
  editor_->setPolarity(PickPolarity::Positive);
  editor_->setUncertainty(10);
  editor_->setOnset(PickOnset::Impulsive);
  const RecordingContext& recording = draw();
  EXPECT_EQ(linesAt(recording, 140), 1);
  bool hasBar = false;
  for (const RecordedItem& stroke : lineStrokes(recording)) {
    const std::vector<QLineF> lines = stroke.segments();
    // The line goes from the strip's middle to 0.6 of its 100 points above: the bar stands half-way, at 140.
    const QLineF bar = lines.size() == 3 ? lines[0] : QLineF();
    hasBar = hasBar || (QLineF(130, 140, 150, 140).p1() - bar.p1()).manhattanLength() < 1e-2;
  }
  EXPECT_TRUE(hasBar);
  EXPECT_TRUE(recording.textReading(QStringLiteral("iP")));
}

TEST_F(PickEditorTest, showsPicksOfHeadersUntilTheyAreTouched) {
  SacHeader header = *(*records_)[0]->GetSacHeader();
  header.t3 = 300;
  header.kt3 = "S";
  show({std::make_shared<SacSeismogram>(header, std::vector<float>(401, 0)), channelOf("BHN")});
  edit();
  EXPECT_TRUE(document_.picks().empty());
  EXPECT_EQ(linesAt(draw(), 320), 1);
  drag({320, 110}, {340, 110});
  ASSERT_EQ(document_.picks().size(), 1U);
  EXPECT_EQ(document_.picks()[0].time, moment("2011-03-11T05:55:20Z"));
  EXPECT_EQ(linesAt(draw(), 320), 0);
  EXPECT_EQ(linesAt(draw(), 340), 1);
  EXPECT_TRUE(editor_->removeAt({340, 110}));
  EXPECT_EQ(linesAt(draw(), 320) + linesAt(draw(), 340), 0) << "what was removed does not come back";
}

TEST_F(PickEditorTest, marksExpectedArrivalsWithDashes) {
  SacHeader header = *(*records_)[0]->GetSacHeader();
  header.o = 0;
  header.gcarc = 20;
  header.evdp = 10;
  show({std::make_shared<SacSeismogram>(header, std::vector<float>(401, 0)), channelOf("BHN")});
  edit();
  const SeismicPhase p = *phaseNamed(QStringLiteral("P"));
  editor_->setPredictedPhases({p});
  const double seconds = arrivalsAt(20, 10, std::vector{p})[0].seconds;
  ASSERT_LT(seconds, 400);
  const RecordingContext& recording = draw();
  for (const RecordedItem& stroke : recording.strokes()) {
    if (stroke.path.dashes() == std::vector<double>{3, 3}) {
      EXPECT_NEAR(stroke.path.shape().elementAt(0).x, 20 + seconds, 1e-2);
    }
  }
  const std::vector<RecordedItem> strokes = recording.strokes();
  const auto dashed = std::ranges::count(strokes, std::vector<double>{3, 3},
                                         [](const RecordedItem& stroke) { return stroke.path.dashes(); });
  EXPECT_EQ(dashed, 1);
  EXPECT_TRUE(document_.picks().empty());
}

TEST_F(PickEditorTest, keysThatNeedAPickDoNothingWithoutOne) {
  edit();
  mouse(QEvent::MouseMove, {140, 110});
  for (const int pressed : {Qt::Key_U, Qt::Key_E, Qt::Key_W, Qt::Key_Delete})
    key(pressed);
  editor_->setPolarity(PickPolarity::Positive);
  editor_->setOnset(PickOnset::Emergent);
  editor_->setUncertainty(2);
  key(Qt::Key_P, Qt::ControlModifier); // the host's
  EXPECT_TRUE(document_.picks().empty());
  EXPECT_EQ(edits_, 0);
}

TEST_F(PickEditorTest, onlyEscapeIsHeardWhileAPickIsDragged) {
  edit();
  editor_->pickAt({140, 110}, QStringLiteral("P"));
  mouse(QEvent::MouseButtonPress, {140, 110});
  mouse(QEvent::MouseMove, {200, 110});
  key(Qt::Key_S);
  key(Qt::Key_U);
  ASSERT_EQ(document_.picks().size(), 1U);
  EXPECT_EQ(document_.picks()[0].polarity, PickPolarity::Unknown);
  key(Qt::Key_Escape);
  mouse(QEvent::MouseButtonRelease, {200, 110});
  EXPECT_EQ(utcText(document_.picks()[0].time), QStringLiteral("2011-03-11T05:52:00.000000000Z"));
}

TEST_F(PickEditorTest, aPressThatMovesByLessThanAPointMovesNothing) {
  edit();
  editor_->pickAt({140, 110}, QStringLiteral("P"));
  drag({140, 110}, {140.5, 110});
  EXPECT_EQ(utcText(document_.picks()[0].time), QStringLiteral("2011-03-11T05:52:00.000000000Z"));
  drag({140, 110}, {141.5, 110});
  EXPECT_EQ(utcText(document_.picks()[0].time), QStringLiteral("2011-03-11T05:52:01.500000000Z"));
}

TEST_F(PickEditorTest, outlivesItsDocument) {
  auto document = std::make_unique<PickDocument>();
  editor_ = new PickEditor(view_.get(), document.get());
  editor_->pickAt({140, 110}, QStringLiteral("P"));
  EXPECT_EQ(linesAt(draw(), 140), 1);
  document.reset();
  mouse(QEvent::MouseMove, {140, 110});
  for (const int pressed : {Qt::Key_S, Qt::Key_U, Qt::Key_Delete})
    key(pressed);
  drag({140, 110}, {200, 110});
  EXPECT_EQ(editor_->currentPick(), nullptr);
  view_->setNeedsDisplay();
  EXPECT_EQ(linesAt(draw(), 140) + linesAt(draw(), 200), 0);
}

TEST_F(PickEditorTest, namesPicksWithTheirOnsetsAsBulletinsDo) {
  edit();
  editor_->pickAt({140, 110}, QStringLiteral("P"));
  EXPECT_TRUE(draw().strings().contains(QStringLiteral("P")));
  const std::pair<int, const char*> names[] = {{Qt::Key_I, "iP"}, {Qt::Key_E, "eP"}, {Qt::Key_Q, "P?"}};
  for (const auto& [pressed, name] : names) {
    key(pressed);
    EXPECT_TRUE(draw().strings().contains(QLatin1String(name))) << name;
  }
  key(Qt::Key_Q); // takes it back
  EXPECT_TRUE(draw().strings().contains(QStringLiteral("P")));
}

TEST_F(PickEditorTest, anExpectedArrivalHasNoNameWhereThePhaseIsPickedWithinTenSeconds) {
  SacHeader header = *(*records_)[0]->GetSacHeader();
  header.o = 0;
  header.gcarc = 20;
  header.evdp = 10;
  show({std::make_shared<SacSeismogram>(header, std::vector<float>(401, 0))});
  edit();
  editor_->setPredictedPhases({SeismicPhase::P});
  const auto namesOfP = [&] { return draw().strings().count(QStringLiteral("P")); };
  EXPECT_EQ(namesOfP(), 1);                                                                 // of the arrival
  const double expected = 20 + arrivalsAt(20, 10, std::vector{SeismicPhase::P})[0].seconds; // a second is a point
  for (const auto& [beside, names] :
       {std::pair(11.0, 2), std::pair(9.0, 1), std::pair(-9.0, 1), std::pair(-11.0, 2)}) {
    editor_->pickAt({expected + beside, 110}, QStringLiteral("P"));
    ASSERT_EQ(document_.picks().size(), 1U) << beside;
    EXPECT_EQ(namesOfP(), names) << beside;
  }
}

TEST_F(PickEditorTest, marksPicksInOtherViews) {
  auto bands = std::make_unique<SeisView02>(QRectF(0, 0, 520, 300)); // a frame of 400 points from 80 on
  bands->setplotStyle(SeisView02::Bands);
  auto overlay = std::make_unique<SeisView01>(QRectF(0, 0, 520, 300));
  auto pairs = std::make_unique<wvfrmView>(QRectF(0, 0, 400, 200));
  bands->setWvfrmsArray(records_);
  overlay->setWvfrmsArray(records_);
  pairs->setWvfrmArray(records_);
  pairs->setXLimitsMinMax(0, 400);
  document_.add(test::tlyPick("P", "2011-03-11T05:51:40Z")); // 100 s
  for (SeismogramView* view : std::initializer_list<SeismogramView*>{bands.get(), overlay.get(), pairs.get()}) {
    const int before = linesAt(*drawnBy(*view), 180);
    auto* const editor = new PickEditor(view, &document_);
    const auto marked = drawnBy(*view);
    EXPECT_TRUE(marked->textReading(QStringLiteral("P"))) << marked->strings().join('|').toStdString();
    if (view != pairs.get()) {
      EXPECT_EQ(linesAt(*marked, 180), before + 1);
    }
    delete editor;
    EXPECT_FALSE(drawnBy(*view)->textReading(QStringLiteral("P")));
  }
}

TEST_F(PickEditorTest, survivesAHostThatLetsTheViewGo) {
  edit();
  mouse(QEvent::MouseMove, {140, 110});
  QObject::connect(&document_, &PickDocument::edited, [this] { view_.reset(); });
  key(Qt::Key_P);
  EXPECT_EQ(view_, nullptr);
  EXPECT_EQ(document_.picks().size(), 1U);
}

TEST_F(PickEditorTest, survivesTheEndOfTheDocument) {
  auto document = std::make_unique<PickDocument>();
  auto* const editor = new PickEditor(view_.get(), document.get());
  editor->pickAt({140, 110}, QStringLiteral("P"));
  document.reset();
  draw();
  mouse(QEvent::MouseMove, {140, 110});
  key(Qt::Key_P);
  EXPECT_EQ(editor->currentPick(), nullptr);
  EXPECT_FALSE(editor->removeAt({140, 110}));
}

} // namespace xov::testing
