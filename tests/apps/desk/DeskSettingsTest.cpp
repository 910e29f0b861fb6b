#include "apps/desk/settings/DeskSettings.h"

#include <gtest/gtest.h>

#include <QFile>
#include <QTemporaryDir>

namespace xov::desk {
namespace {

DeskSettings someSettings() {
  DeskSettings settings;
  settings.geometry = QByteArray("\0\1\2", 3);
  settings.workspace = "panes";
  PlotRequest request;
  request.kind = "drum";
  request.files = {"/data/a.sac"};
  settings.panes = {{3, 1, request}, {5, 0, request}};
  settings.current = 5;
  settings.recent = {"/data/a.sac", "/data/b.sac"};
  settings.theme = "dark";
  settings.darkPlots = true;
  settings.sampleMegabytes = 64;
  settings.picks = "/data/picks.xml";
  settings.isPicking = true;
  return settings;
}

void writeText(const QString& path, const QByteArray& text) {
  QFile file(path);
  ASSERT_TRUE(file.open(QIODevice::WriteOnly));
  file.write(text);
}

TEST(DeskSettings, comeBackFromTheirFile) {
  const QTemporaryDir folder;
  const QString path = folder.filePath("new/desk.json");
  ASSERT_TRUE(writeSettings(someSettings(), path));
  QString note;
  EXPECT_EQ(readSettings(path, &note), someSettings());
  EXPECT_EQ(note, "");
}

TEST(DeskSettings, areThoseAtFirstWithoutAFile) {
  QString note;
  EXPECT_EQ(readSettings("/nonexistent/desk.json", &note), DeskSettings());
  EXPECT_EQ(note, "");
}

TEST(DeskSettings, ofABrokenFileAreLaidAside) {
  const QTemporaryDir folder;
  const QString path = folder.filePath("desk.json");
  for (const char* const text : {"", "{", "[1, 2]", "\xff\xfe", "{\"panes\": [}"}) {
    writeText(path, text);
    QString note;
    EXPECT_EQ(readSettings(path, &note), DeskSettings()) << text;
    EXPECT_TRUE(note.startsWith(path + ": found ")) << qPrintable(note);
    EXPECT_FALSE(QFile::exists(path));
    EXPECT_TRUE(QFile::exists(path + ".broken"));
  }
}

TEST(DeskSettings, keepWhatIsWellFormed) {
  const Result<DeskSettings> settings = DeskSettings::fromJson(
      R"({"panes": [7, {}, {"number": -1, "request": {"kind": "drum"}}, {"number": 1e300, "request": {"kind": "drum"}},
          {"number": 2, "page": -5, "request": {"kind": "drum"}}, {"number": 2, "request": {"kind": "map"}}],
          "geometry": 12, "recent": ["/a", 3, "", "/b", "/a"], "current": "x", "theme": [], "darkPlots": "yes"})");
  ASSERT_TRUE(settings) << qPrintable(settings.error());
  PlotRequest drum;
  drum.kind = "drum";
  DeskSettings expected;
  expected.panes = {{2, 0, drum}};
  expected.recent = {"/a", "/b"};
  EXPECT_EQ(*settings, expected);
}

TEST(DeskSettings, rememberTwentyFilesAndTheLastOneFirst) {
  DeskSettings settings;
  for (int i = 0; i < 25; ++i)
    settings.addRecent(QStringLiteral("/data/%1").arg(i));
  settings.addRecent("/data/20");
  settings.addRecent("");
  ASSERT_EQ(settings.recent.size(), 20);
  EXPECT_EQ(settings.recent.front(), "/data/20");
  EXPECT_EQ(settings.recent[1], "/data/24");
  EXPECT_EQ(settings.recent.back(), "/data/5");
}

} // namespace
} // namespace xov::desk
