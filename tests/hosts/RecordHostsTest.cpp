// Records whose host does odd things while a view asks them, or that answer nonsense.
#include "XOV_Graphics/platform/RecordingContext.h"
#include "tests/hosts/HostedPlots.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>

namespace xov {
namespace {

using testing::HookedRecord;
using testing::HostedPlot;
using testing::RecordPlot;

class RecordHosts : public ::testing::TestWithParam<RecordPlot> {};
INSTANTIATE_TEST_SUITE_P(Plots, RecordHosts, ::testing::ValuesIn(testing::recordPlots()), testing::recordPlotName);

struct Mischief {
  const char* name;
  void (*doIt)(HostedPlot& host);
};

void letAllGo(HostedPlot& host) {
  host.records.reset();
  host.events.reset();
  host.signals.reset();
  host.observation.reset();
}

void emptyAll(HostedPlot& host) {
  for (auto* const array : {&host.records})
    if (*array) (*array)->clear();
  if (host.events) host.events->clear();
  if (host.signals) host.signals->clear();
}

// Enough of them that the array moves to another place.
void addMany(HostedPlot& host) {
  if (host.records) host.records->resize(host.records->size() + 100);
  if (host.events) host.events->resize(host.events->size() + 100);
  if (host.signals) host.signals->resize(host.signals->size() + 100);
}

void dropTheFirst(HostedPlot& host) {
  if (host.records && !host.records->empty()) host.records->erase(host.records->begin());
  if (host.events && !host.events->empty()) host.events->erase(host.events->begin());
  if (host.signals && !host.signals->empty()) host.signals->erase(host.signals->begin());
}

void replaceAll(HostedPlot& host) {
  if (!host.records) return;
  for (auto& record : *host.records)
    record = std::make_shared<HookedRecord>(std::vector<float>{1, 2, 3});
}

void setAnything(HostedPlot& host) {
  host.view->setTitle(QStringLiteral("%1").arg(quintptr(&host)));
  host.view->setXLimitsMinMax(std::nanf(""), 3);
  host.view->setLabelFontSize(-4);
  host.view->setXAxisPath(nullptr);
  host.view->showPart(PlotPart{{1, 2}, {0, 1}, 2});
  host.view->resize(40, 900);
  host.view->computeRects();
}

// A drawing within the drawing.
void drawAgain(HostedPlot& host) {
  host.setAsked({});
  RecordingContext recording;
  host.view->drawInto(recording);
  EXPECT_FALSE(host.view->pictureOfRect(host.view->bounds()).isNull());
}

constexpr Mischief kMischiefs[] = {{"lets all go", letAllGo},        {"empties its arrays", emptyAll},
                                   {"adds many", addMany},           {"drops the first", dropTheFirst},
                                   {"replaces records", replaceAll}, {"sets anything", setAnything},
                                   {"draws again", drawAgain}};

// How many questions a drawing asks.
int questionsOf(const RecordPlot& plot) {
  HostedPlot host = testing::hostedPlot(plot);
  int questions = 0;
  host.setAsked([&] { ++questions; });
  host.view->pictureOfRect(host.view->bounds());
  return questions;
}

TEST_P(RecordHosts, mayDoWhatTheyLikeWhileAViewAsksThem) {
  constexpr int kMoments = 6;
  const int questions = questionsOf(GetParam());
  ASSERT_GT(questions, kMoments);
  for (const Mischief& mischief : kMischiefs) {
    for (int moment = 0; moment < kMoments; ++moment) {
      SCOPED_TRACE(::testing::Message() << mischief.name << " at " << moment << " of " << kMoments);
      HostedPlot host = testing::hostedPlot(GetParam());
      int left = 1 + moment * questions / kMoments;
      bool isDone = false;
      host.setAsked([&] {
        if (--left > 0 || isDone) return;
        isDone = true;
        mischief.doIt(host);
      });
      EXPECT_FALSE(host.view->pictureOfRect(QRectF(0, 0, 300, 200)).isNull());
      EXPECT_TRUE(isDone);
      // Whatever was done, the view goes on.
      EXPECT_FALSE(host.view->pictureOfRect(host.view->bounds()).isNull());
      host.view->readout(host.view->bounds().center());
      host.view->recordAt(host.view->bounds().center());
    }
  }
}

// Answers that no record should give, of all records at once.
struct Nonsense {
  const char* name;
  void (*tell)(HookedRecord& record);
};

void noSamples(HookedRecord& record) { record.samples.clear(); }
void noHeader(HookedRecord& record) { record.knowsNoHeader = true; }
void noReferenceTime(HookedRecord& record) { record.reference.reset(); }
void negativeInterval(HookedRecord& record) { record.deltaSeconds = -1; }
void zeroInterval(HookedRecord& record) { record.deltaSeconds = 0; }
void endlessInterval(HookedRecord& record) { record.deltaSeconds = std::numeric_limits<float>::infinity(); }
void noNumberInterval(HookedRecord& record) { record.deltaSeconds = std::numeric_limits<float>::quiet_NaN(); }
void farBegin(HookedRecord& record) { record.beginSeconds = 3e38f; }
void noNumberBegin(HookedRecord& record) { record.beginSeconds = std::numeric_limits<float>::quiet_NaN(); }
void endBeforeBegin(HookedRecord& record) { record.endSeconds = -1e9f; }
void wrongExtremes(HookedRecord& record) {
  record.lowest = 5;
  record.highest = -5;
  record.peak = -1;
}
void noNumbersAtAll(HookedRecord& record) {
  std::fill(record.samples.begin(), record.samples.end(), std::numeric_limits<float>::quiet_NaN());
  record.lowest = record.highest = record.peak = std::numeric_limits<float>::quiet_NaN();
}
void endlessTexts(HookedRecord& record) {
  record.station = record.caption = record.file = QString(3000, QLatin1Char('W'));
}

constexpr Nonsense kNonsense[] = {{"no samples", noSamples},
                                  {"no header", noHeader},
                                  {"no reference time", noReferenceTime},
                                  {"negative interval", negativeInterval},
                                  {"interval of zero", zeroInterval},
                                  {"endless interval", endlessInterval},
                                  {"interval that is no number", noNumberInterval},
                                  {"begin far away", farBegin},
                                  {"begin that is no number", noNumberBegin},
                                  {"end before begin", endBeforeBegin},
                                  {"extremes that are wrong", wrongExtremes},
                                  {"no number anywhere", noNumbersAtAll},
                                  {"texts without end", endlessTexts}};

TEST_P(RecordHosts, mayAnswerNonsense) {
  for (const Nonsense& nonsense : kNonsense) {
    SCOPED_TRACE(nonsense.name);
    HostedPlot host = testing::hostedPlot(GetParam());
    for (const auto& record : *host.records)
      nonsense.tell(static_cast<HookedRecord&>(*record));
    EXPECT_FALSE(host.view->pictureOfRect(host.view->bounds()).isNull());
    EXPECT_TRUE(host.view->dataWithPDFInsideRect(host.view->bounds()).startsWith("%PDF-"));
    host.view->readout(host.view->bounds().center());
    host.view->reach();
  }
}

// A record that claims more or less than a moment ago. All claims lie within the samples that are there, or there are
// none: what is no sample cannot be told from one.
class FickleRecord : public testing::FakeRecord {
public:
  FickleRecord(std::vector<float> values, std::vector<int> claims)
      : FakeRecord(std::move(values), 0.1f),
        claims_(std::move(claims)) {}
  int npts() const override { return claims_[next_++ % claims_.size()]; }

private:
  std::vector<int> claims_;
  mutable std::size_t next_ = 0;
};

TEST_P(RecordHosts, mayChangeTheirLengthAtEachQuestion) {
  const std::vector<std::vector<int>> kClaims = {
      {400, 3, 0, -1}, {0, 400}, {-5}, {1, 2}, {std::numeric_limits<int>::min(), 400}};
  for (const auto& claims : kClaims) {
    HostedPlot host = testing::hostedPlot(GetParam());
    for (auto& record : *host.records)
      record = std::make_shared<FickleRecord>(std::vector<float>(400, 1.5f), claims);
    EXPECT_FALSE(host.view->pictureOfRect(host.view->bounds()).isNull());
    host.view->reach();
  }
}

TEST_P(RecordHosts, mayClaimSamplesThatAreNotThere) {
  for (const int claim : {1, 400, std::numeric_limits<int>::max()}) {
    HostedPlot host = testing::hostedPlot(GetParam());
    for (auto& record : *host.records)
      record = std::make_shared<FickleRecord>(std::vector<float>(), std::vector<int>{claim});
    EXPECT_FALSE(host.view->pictureOfRect(host.view->bounds()).isNull());
    host.view->reach();
    host.view->recordAt(host.view->bounds().center());
  }
}

// An array whose elements are all null.
TEST_P(RecordHosts, mayHaveNullsOnly) {
  HostedPlot host = testing::hostedPlot(GetParam());
  for (auto& record : *host.records)
    record.reset();
  for (auto& event : *host.events)
    event.reset();
  for (auto& signal : *host.signals)
    signal.reset();
  EXPECT_FALSE(host.view->pictureOfRect(host.view->bounds()).isNull());
  host.view->readout(host.view->bounds().center());
}

} // namespace
} // namespace xov
