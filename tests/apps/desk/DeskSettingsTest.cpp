#include "apps/desk/settings/DeskSettings.h"

#include <gtest/gtest.h>

#include <QFile>
#include <QTemporaryDir>

#include <random>

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

TEST(DeskSettings, takeNoStateOfAWindowThatIsDamaged) {
  const QByteArray whole = someSettings().toJson();
  const QByteArray state = QByteArray("panes").toBase64();
  ASSERT_TRUE(whole.contains(state));
  const Result<DeskSettings> damaged =
      DeskSettings::fromJson(QByteArray(whole).replace(state, QByteArray("Panes").toBase64()));
  ASSERT_TRUE(damaged);
  EXPECT_EQ(damaged->workspace, "");
  EXPECT_EQ(damaged->geometry, someSettings().geometry);
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

// Bytes that are changed, dropped and doubled at random places: whatever is read can be written and read again.
TEST(DeskSettings, surviveDamageOfAnyKind) {
  const QByteArray whole = someSettings().toJson();
  std::mt19937 random(20110311);
  int readable = 0;
  for (int round = 0; round < 500; ++round) {
    QByteArray text = whole;
    const auto at = qsizetype(random() % std::size_t(text.size()));
    switch (random() % 3) {
    case 0:
      text[at] = char(' ' + random() % 95);
      break;
    case 1:
      text.remove(at, qsizetype(random() % 20));
      break;
    default:
      text.insert(at, text.mid(at, qsizetype(random() % 20)));
    }
    const Result<DeskSettings> settings = DeskSettings::fromJson(text);
    if (!settings) continue;
    ++readable;
    EXPECT_EQ(*DeskSettings::fromJson(settings->toJson()), *settings) << text.toStdString();
  }
  EXPECT_GT(readable, 50) << "damage to values leaves the rest";
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
