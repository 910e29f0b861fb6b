#include "XOV_Graphics/seismic/realtime/EventFiles.h"

#include "tests/seismic/TemporaryFiles.h"
#include "tests/seismic/realtime/EventWords.h"

#include <gtest/gtest.h>

#include <QDateTime>
#include <QDir>

using namespace xov;
using test::eventText;
using test::eventWords;
using test::TemporaryFiles;

namespace {

constexpr qint64 kSettleMs = 1000;

/// Files of a folder that tests write as if at a time of their own.
class Folder {
public:
  explicit Folder(const EventFilesLimits& limits = {}) : events_(files_.folder(), limits) {}

  void write(const char* name, const QByteArray& contents, qint64 atMs) {
    const QString path = files_.write(name, contents);
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::ReadWrite));
    EXPECT_TRUE(file.setFileTime(QDateTime::fromMSecsSinceEpoch(atMs), QFileDevice::FileModificationTime));
  }
  void remove(const char* name) { EXPECT_TRUE(QFile::remove(files_.path(name))); }
  QString path(const char* name) const { return files_.path(name); }

  /// Looks and reads at that time, and gives all events.
  QString at(qint64 nowMs) {
    events_.look(nowMs, kSettleMs);
    while (events_.hasUnread())
      events_.readNext(nowMs);
    return eventWords(events_.events());
  }
  EventFiles& events() { return events_; }

private:
  TemporaryFiles files_;
  EventFiles events_;
};

} // namespace

TEST(EventFiles, holdTheEventsOfAllFilesInTheOrderOfTheirTimes) {
  Folder folder;
  folder.write("one", eventText("c:30:5.0 a:10:4.0"), 1000);
  folder.write("two", eventText("b:20:6.0"), 2000);
  EXPECT_EQ(folder.at(100000), "a:10:4.0 b:20:6.0 c:30:5.0");
  EXPECT_TRUE(folder.events().takeChanged());
  EXPECT_EQ(folder.at(200000), "a:10:4.0 b:20:6.0 c:30:5.0");
  EXPECT_FALSE(folder.events().takeChanged());
  EXPECT_TRUE(folder.events().takeMessages().isEmpty());
}

TEST(EventFiles, followFilesThatChangeComeAndGo) {
  Folder folder;
  folder.write("one", eventText("a:10:4.0"), 1000);
  EXPECT_EQ(folder.at(100000), "a:10:4.0");
  folder.write("one", eventText("a:11:4.5"), 110000);
  folder.write("two", eventText("b:20:6.0"), 110000);
  EXPECT_EQ(folder.at(120000), "a:11:4.5 b:20:6.0");
  folder.remove("one");
  EXPECT_TRUE(folder.events().takeChanged());
  EXPECT_EQ(folder.at(130000), "b:20:6.0");
  EXPECT_TRUE(folder.events().takeChanged());
}

TEST(EventFiles, keepWhatAHalfWrittenFileHeldUntilItIsWhole) {
  Folder folder;
  folder.write("one", eventText("a:10:4.0"), 1000);
  EXPECT_EQ(folder.at(100000), "a:10:4.0");
  folder.write("one", "", 110000);
  EXPECT_EQ(folder.at(110000), "a:10:4.0");
  EXPECT_TRUE(folder.events().isUnsettled());
  EXPECT_EQ(folder.at(110500), "a:10:4.0");
  EXPECT_TRUE(folder.events().takeMessages().isEmpty());
  folder.write("one", eventText("a:10:4.0 b:20:5.0"), 110600);
  EXPECT_EQ(folder.at(110700), "a:10:4.0 b:20:5.0");
  EXPECT_EQ(folder.at(200000), "a:10:4.0 b:20:5.0");
  EXPECT_TRUE(folder.events().takeMessages().isEmpty());
  EXPECT_FALSE(folder.events().isUnsettled());
}

TEST(EventFiles, sayOnceThatAFileIsDamagedAndReadTheOthers) {
  Folder folder;
  folder.write("bad", "<quakeml><eventParameters>", 1000);
  folder.write("good", eventText("a:10:4.0"), 1000);
  EXPECT_EQ(folder.at(100000), "a:10:4.0");
  EXPECT_TRUE(folder.events().takeMessages().isEmpty());
  folder.at(100000 + kSettleMs);
  const QStringList said = folder.events().takeMessages();
  ASSERT_EQ(said.size(), 1) << said.join('\n').toStdString();
  EXPECT_TRUE(said.front().startsWith(folder.path("bad") + ": line 1: ")) << said.front().toStdString();
  folder.at(200000);
  EXPECT_TRUE(folder.events().takeMessages().isEmpty());
  EXPECT_FALSE(folder.events().isUnsettled());
}

TEST(EventFiles, readAFileOnceMoreThatChangedWithinTheClocksStep) {
  Folder folder;
  folder.write("one", eventText("a:10:4.0"), 100000);
  EXPECT_EQ(folder.at(100001), "a:10:4.0");
  EXPECT_TRUE(folder.events().isUnsettled());
  folder.write("one", eventText("a:11:4.0"), 100000); // as long as before, and the time has not moved on
  EXPECT_EQ(folder.at(100500), "a:10:4.0");
  EXPECT_EQ(folder.at(102500), "a:11:4.0");
  EXPECT_FALSE(folder.events().isUnsettled());
}

TEST(EventFiles, holdAnEventOfSeveralFilesAsTheOneThatChangedLastHasIt) {
  Folder folder;
  folder.write("z", eventText("a:10:4.0 b:20:5.0"), 1000);
  folder.write("m", eventText("a:12:4.4"), 3000);
  folder.write("b", eventText("a:11:4.2"), 2000);
  EXPECT_EQ(folder.at(100000), "a:12:4.4 b:20:5.0");
  folder.remove("m");
  EXPECT_EQ(folder.at(100001), "a:11:4.2 b:20:5.0");
}

TEST(EventFiles, leaveOutHiddenFilesAndThoseThatProgramsAreWriting) {
  Folder folder;
  int minute = 10;
  for (const char* name : {".hidden", "backup~", "new.tmp", "download.part"})
    folder.write(name, eventText("a:" + QByteArray::number(minute++) + ":4.0"), 1000);
  EXPECT_EQ(folder.at(100000), "");
  folder.at(200000);
  EXPECT_TRUE(folder.events().takeMessages().isEmpty());
}

TEST(EventFiles, keepTheFilesOfAFolderThatChangedLast) {
  Folder folder({.files = 2});
  folder.write("a", eventText("a:10:4.0"), 1000);
  folder.write("b", eventText("b:20:4.0"), 3000);
  folder.write("c", eventText("c:30:4.0"), 2000);
  folder.write("d", eventText("d:40:4.0"), 900);
  folder.write("e", eventText("e:50:4.0"), 800);
  EXPECT_EQ(folder.at(100000), "b:20:4.0 c:30:4.0");
  folder.at(200000);
  const QStringList said = folder.events().takeMessages();
  ASSERT_EQ(said.size(), 1) << said.join('\n').toStdString();
  EXPECT_TRUE(said.front().endsWith(": found more than 2 files; the older ones are left out"));
}

TEST(EventFiles, keepTheLatestEvents) {
  Folder folder({.events = 3});
  folder.write("one", eventText("a:10:4.0 b:20:4.0 c:30:4.0 d:40:4.0"), 1000);
  EXPECT_EQ(folder.at(100000), "b:20:4.0 c:30:4.0 d:40:4.0");
  folder.write("two", eventText("e:25:4.0 f:50:4.0 g:55:4.0"), 1000);
  EXPECT_EQ(folder.at(200000), "d:40:4.0 f:50:4.0 g:55:4.0");
}

TEST(EventFiles, refuseFilesThatAreTooLarge) {
  Folder folder({.fileBytes = 100});
  folder.write("large", eventText("a:10:4.0"), 1000);
  EXPECT_EQ(folder.at(100000), "");
  folder.at(200000);
  const QStringList said = folder.events().takeMessages();
  ASSERT_EQ(said.size(), 1);
  EXPECT_TRUE(said.front().startsWith(folder.path("large") + ": ")) << said.front().toStdString();
}

TEST(EventFiles, sayRowsThatAreLeftOutOnce) {
  Folder folder;
  const QByteArray bad = "x|no time|1|2|10|||||Mw|5||\n";
  folder.write("one", eventText("a:10:4.0") + bad, 1000);
  EXPECT_EQ(folder.at(100000), "a:10:4.0");
  EXPECT_EQ(folder.events().takeMessages().size(), 1);
  folder.write("one", eventText("a:10:4.0") + bad + eventText("b:20:5.0").split('\n')[1], 110000);
  EXPECT_EQ(folder.at(120000), "a:10:4.0 b:20:5.0");
  EXPECT_TRUE(folder.events().takeMessages().isEmpty());
}

TEST(EventFiles, sayOnceThatThePathIsNotThereAndTakeItWhenItIs) {
  const TemporaryFiles files;
  EventFiles events(files.path("later"), {});
  for (const qint64 ms : {1000, 2000})
    events.look(ms, kSettleMs);
  EXPECT_EQ(events.takeMessages(), QStringList(files.path("later") + ": there is no such file or folder"));
  files.write("later", eventText("a:10:4.0"));
  events.look(3000, kSettleMs);
  events.readNext(3000);
  EXPECT_EQ(eventWords(events.events()), "a:10:4.0");
  EXPECT_TRUE(events.takeMessages().isEmpty());
}
