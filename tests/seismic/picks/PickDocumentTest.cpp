#include "XOV_Graphics/seismic/picks/PickDocument.h"

#include "tests/seismic/PickSamples.h"
#include "tests/seismic/TemporaryFiles.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <memory>

using namespace xov;
using test::moment;
using test::tlyPick;

namespace {

/// A document that remembers what it has told.
struct WatchedDocument {
  PickDocument document;
  std::vector<PickChange> edits;
  int changes = 0;
  int resets = 0;

  WatchedDocument() {
    QObject::connect(&document, &PickDocument::edited, [this](const PickChange& change) { edits.push_back(change); });
    QObject::connect(&document, &PickDocument::changed, [this] { ++changes; });
    QObject::connect(&document, &PickDocument::wasReset, [this] { ++resets; });
  }
};

} // namespace

TEST(PickDocument, takesBackAndRepeatsEveryChange) {
  WatchedDocument watched;
  PickDocument& document = watched.document;
  const QString first = document.add(tlyPick("P", "2011-03-11T05:52:00Z"));
  const QString second = document.add(tlyPick("S", "2011-03-11T05:58:00Z"));
  EXPECT_TRUE(document.move(first, moment("2011-03-11T05:52:01.5Z")));
  EXPECT_TRUE(document.rename(second, QStringLiteral("SKS")));
  EXPECT_TRUE(document.remove(first));
  const PickArray end = document.picks();
  ASSERT_EQ(end.size(), 1U);
  EXPECT_EQ(end[0].phase, QStringLiteral("SKS"));

  ASSERT_EQ(watched.edits.size(), 5U);
  for (auto change = watched.edits.rbegin(); change != watched.edits.rend(); ++change)
    EXPECT_TRUE(document.apply(change->reversed()));
  EXPECT_TRUE(document.picks().empty());
  for (const PickChange& change : std::vector<PickChange>(watched.edits))
    EXPECT_TRUE(document.apply(change));
  EXPECT_EQ(document.picks(), end);
  EXPECT_EQ(watched.edits.size(), 5U); // undo and redo are no steps of their own
  EXPECT_EQ(watched.changes, 15);
}

TEST(PickDocument, refusesAChangeThatDoesNotFit) {
  PickDocument document;
  const QString id = document.add(tlyPick("P", "2011-03-11T05:52:00Z"));
  Pick other = *document.find(id);
  other.phase = QStringLiteral("S");
  EXPECT_FALSE(document.apply({0, other, {}}));              // that is not what is there
  EXPECT_FALSE(document.apply({5, *document.find(id), {}})); // beyond the end
  EXPECT_FALSE(document.apply({7, {}, tlyPick("S", "2011-03-11T05:52:00Z")}));
  EXPECT_FALSE(document.apply({0, {}, *document.find(id)})); // is there already
  EXPECT_FALSE(document.apply({}));
  EXPECT_FALSE(document.move(QStringLiteral("none"), {}));
  EXPECT_FALSE(document.rename(id, QStringLiteral("P"))); // as it is
  EXPECT_FALSE(document.remove(QStringLiteral("none")));
  EXPECT_EQ(document.picks().size(), 1U);
}

TEST(PickDocument, keepsIdsApart) {
  PickDocument document;
  const Pick pick = tlyPick("P", "2011-03-11T05:52:00Z");
  const QString first = document.add(pick);
  const QString second = document.add(pick);
  EXPECT_EQ(first, pick.id);
  EXPECT_NE(second, first);
  Pick nameless = pick;
  nameless.id.clear();
  document.reset({nameless, pick, pick});
  ASSERT_EQ(document.picks().size(), 3U);
  EXPECT_FALSE(document.picks()[0].id.isEmpty());
  EXPECT_NE(document.picks()[1].id, document.picks()[2].id);
}

TEST(PickDocument, leavesOutUncertaintiesThatAreNone) {
  PickDocument document;
  for (const double none :
       {-1.0, 86401.0, 1e300, std::numeric_limits<double>::quiet_NaN(), std::numeric_limits<double>::infinity()}) {
    Pick pick = tlyPick("P", "2011-03-11T05:52:00Z");
    pick.lowerSeconds = none;
    pick.upperSeconds = 86400;
    const Pick* const added = document.find(document.add(pick));
    ASSERT_NE(added, nullptr);
    EXPECT_FALSE(added->lowerSeconds) << none;
    EXPECT_EQ(added->upperSeconds, 86400);
  }
}

TEST(PickDocument, takesPicksOfRecordsOnce) {
  WatchedDocument watched;
  PickDocument& document = watched.document;
  const Pick p = tlyPick("P", "2011-03-11T05:52:00Z");
  EXPECT_EQ(document.take({p, tlyPick("S", "2011-03-11T05:58:00Z")}), 2U);
  EXPECT_FALSE(document.isModified()); // the file has them
  EXPECT_TRUE(watched.edits.empty());
  EXPECT_TRUE(document.remove(p.id));
  EXPECT_TRUE(document.isModified());
  EXPECT_EQ(document.take({p}), 0U) << "one that was removed stays so when its file is opened again";
  EXPECT_EQ(watched.resets, 1);
  document.markSaved();
  EXPECT_FALSE(document.isModified());
}

TEST(PickDocument, isRestoredStepByStep) {
  PickDocument document;
  const Pick p = tlyPick("P", "2011-03-11T05:52:00Z");
  Pick moved = p;
  moved.time = moment("2011-03-11T05:52:09Z");
  document.restore(p.id, p);
  document.restore(p.id, moved);
  ASSERT_EQ(document.picks().size(), 1U);
  EXPECT_EQ(document.picks()[0], moved);
  EXPECT_TRUE(document.isModified());
  document.restore(QStringLiteral("smi:local/pick/gone"), {});
  Pick gone = p;
  gone.id = QStringLiteral("smi:local/pick/gone");
  EXPECT_EQ(document.take({gone}), 0U);
  document.restore(p.id, {});
  EXPECT_TRUE(document.picks().empty());
}

TEST(PickDocument, mayGoWhenItTellsOfAChange) {
  auto document = std::make_unique<PickDocument>();
  QObject::connect(document.get(), &PickDocument::changed, [&] { document.reset(); });
  EXPECT_FALSE(document->add(tlyPick("P", "2011-03-11T05:52:00Z")).isEmpty());
  EXPECT_EQ(document, nullptr);
}
