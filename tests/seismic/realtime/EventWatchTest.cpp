#include "XOV_Graphics/seismic/realtime/EventWatch.h"

#include "tests/seismic/TemporaryFiles.h"
#include "tests/seismic/realtime/EventWords.h"
#include "tests/support/EventLoop.h"

#include <gtest/gtest.h>

#include <QDir>

using namespace xov;
using test::eventText;
using test::eventWords;
using test::TemporaryFiles;
using test::waitUntil;

namespace {

/// What a watch tells. The system tells of changes: the poll comes too late for a test.
class Watched {
public:
  explicit Watched(EventWatchSettings settings) : watch_(std::move(settings)) {
    watch_.onEvents([this](const HypocentreArray& events) {
      events_ = eventWords(events);
      ++changes_;
    });
    watch_.onMessage([this](const QString& line) { messages_.append(line); });
    watch_.start();
  }
  bool becomes(const char* events) {
    return waitUntil([&] { return events_ == QLatin1String(events); });
  }
  EventWatch& watch() { return watch_; }
  const QStringList& messages() const { return messages_; }
  int changes() const { return changes_; }

private:
  QString events_;
  QStringList messages_;
  int changes_ = 0;
  EventWatch watch_;
};

EventWatchSettings toldBySystem(const QString& path) {
  EventWatchSettings settings;
  settings.path = path;
  settings.pollSeconds = settings.settleSeconds = 1000;
  return settings;
}

} // namespace

TEST(EventWatch, tellsWhatIsThereAtOnce) {
  const TemporaryFiles files;
  files.write("events", eventText("a:10:4.0"));
  Watched watched(toldBySystem(files.folder()));
  EXPECT_TRUE(watched.becomes("a:10:4.0"));
  EXPECT_TRUE(watched.watch().isUpToDate());
}

TEST(EventWatch, tellsWhenAFileOfAFolderComesAndGoes) {
  const TemporaryFiles files;
  Watched watched(toldBySystem(files.folder()));
  const QString path = files.write("new.tmp", eventText("a:10:4.0"));
  ASSERT_TRUE(QFile::rename(path, files.path("new")));
  EXPECT_TRUE(watched.becomes("a:10:4.0"));
  ASSERT_TRUE(QFile::remove(files.path("new")));
  EXPECT_TRUE(watched.becomes(""));
}

TEST(EventWatch, tellsWhenAFileIsWrittenAndReplaced) {
  const TemporaryFiles files;
  const QString path = files.write("events", eventText("a:10:4.0"));
  Watched watched(toldBySystem(path));
  EXPECT_TRUE(watched.becomes("a:10:4.0"));
  files.write("events", eventText("a:10:4.0 b:20:5.0"));
  EXPECT_TRUE(watched.becomes("a:10:4.0 b:20:5.0"));
  for (const char* events : {"c:30:6.0", "d:40:6.0 e:50:5.0"}) { // the second one after the system's watch was lost
    files.write("other", eventText(events));
    ASSERT_TRUE(QFile::remove(path));
    ASSERT_TRUE(QFile::rename(files.path("other"), path));
    EXPECT_TRUE(watched.becomes(events));
  }
}

TEST(EventWatch, waitsForAFileThatIsNotThereYet) {
  const TemporaryFiles files;
  Watched watched(toldBySystem(files.path("later")));
  EXPECT_EQ(watched.messages(), QStringList(files.path("later") + ": there is no such file or folder"));
  files.write("later", eventText("a:10:4.0"));
  EXPECT_TRUE(watched.becomes("a:10:4.0"));
}

TEST(EventWatch, findsByAndByWhatTheSystemDoesNotTell) {
  const TemporaryFiles files;
  QDir().mkpath(files.path("deep"));
  files.write("deep/events", eventText("a:10:4.0"));
  EventWatchSettings settings = toldBySystem(files.path("deep"));
  settings.pollSeconds = 0.005;
  Watched watched(settings);
  EXPECT_TRUE(watched.becomes("a:10:4.0"));
  // A file that is written in its place is no change of its folder.
  files.write("deep/events", eventText("a:10:4.0 b:20:5.0"));
  EXPECT_TRUE(watched.becomes("a:10:4.0 b:20:5.0"));
}

TEST(EventWatch, takesAFileThatArrivesByAndBy) {
  const TemporaryFiles files;
  EventWatchSettings settings = toldBySystem(files.folder());
  settings.pollSeconds = 0.005;
  Watched watched(settings);
  const QByteArray whole = "<quakeml><eventParameters><event publicID='a'><origin publicID='o'><time><value>"
                           "2020-09-13T12:10:00Z</value></time></origin><magnitude publicID='m'><mag><value>4"
                           "</value></mag><type>Mw</type></magnitude></event></eventParameters></quakeml>";
  QFile file(files.path("growing.xml"));
  ASSERT_TRUE(file.open(QIODevice::WriteOnly | QIODevice::Unbuffered));
  for (qsizetype at = 0; at < whole.size(); at += 60) {
    file.write(whole.sliced(at, std::min<qsizetype>(60, whole.size() - at)));
    int turns = 0;
    EXPECT_TRUE(waitUntil([&] { return ++turns > 3; }));
  }
  EXPECT_TRUE(watched.becomes("a:10:4.0"));
  EXPECT_TRUE(watched.messages().isEmpty()) << watched.messages().join('\n').toStdString();
  EXPECT_EQ(watched.changes(), 1);
}

TEST(EventWatch, saysThatAFileIsDamagedWhenItHasSettled) {
  const TemporaryFiles files;
  files.write("bad", "no events");
  files.write("good", eventText("a:10:4.0"));
  EventWatchSettings settings = toldBySystem(files.folder());
  settings.settleSeconds = 0.01;
  Watched watched(settings);
  EXPECT_TRUE(watched.becomes("a:10:4.0"));
  EXPECT_TRUE(waitUntil([&] { return !watched.messages().isEmpty(); }));
  EXPECT_TRUE(watched.messages().front().startsWith(files.path("bad") + ": unknown format"));
  EXPECT_EQ(watched.messages().size(), 1);
}

TEST(EventWatch, goesThroughThousandsOfFilesAFewAtATime) {
  const TemporaryFiles files;
  constexpr int kFiles = 1000;
  for (int i = 0; i < kFiles; ++i)
    files.write(QByteArray::number(i).constData(), eventText("e" + QByteArray::number(i) + ":10:4.0"));
  EventWatch watch(toldBySystem(files.folder()));
  std::size_t count = 0;
  int changes = 0;
  watch.onEvents([&](const HypocentreArray& events) {
    EXPECT_GT(events.size(), count);
    count = events.size();
    ++changes;
  });
  watch.start();
  EXPECT_FALSE(watch.isUpToDate());
  EXPECT_TRUE(waitUntil([&] { return watch.isUpToDate(); }));
  EXPECT_EQ(count, std::size_t(kFiles));
  EXPECT_GT(changes, 1);
}

TEST(EventWatch, mayBeStoppedByWhatItTells) {
  const TemporaryFiles files;
  files.write("events", eventText("a:10:4.0"));
  EventWatchSettings settings = toldBySystem(files.folder());
  settings.pollSeconds = 0.002;
  EventWatch watch(settings);
  int changes = 0;
  watch.onEvents([&](const HypocentreArray&) {
    ++changes;
    watch.stop();
  });
  watch.start();
  EXPECT_EQ(changes, 1);
  files.write("events", eventText("a:10:4.0 b:20:4.0"));
  int turns = 0;
  EXPECT_TRUE(waitUntil([&] { return ++turns > 40; }));
  EXPECT_EQ(changes, 1);
}
