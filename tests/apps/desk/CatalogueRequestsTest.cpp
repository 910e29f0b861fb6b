#include "apps/desk/files/CatalogueRequests.h"

#include <gtest/gtest.h>

namespace xov::desk {
namespace {

FileEntry channelOf(FileKind kind, const QString& path, const char* channel, qint64 seconds = 60,
                    std::int64_t samples = 100) {
  FileEntry entry{kind, path, {}, {}};
  entry.channel.codes = {"II", "TLY", "", channel};
  entry.channel.start = QDateTime(QDate(2011, 3, 11), QTime(0, 0), Qt::UTC);
  entry.channel.end = entry.channel.start.addSecs(seconds);
  entry.channel.sampleCount = samples;
  return entry;
}

PlotRequest onlyRequest(const FileEntries& entries, int rowsOfEach = 1, const OpeningOptions& options = {}) {
  const auto requests = requestsForEntries(
      entries, [rowsOfEach](const QString&) { return rowsOfEach; }, options);
  EXPECT_EQ(requests.size(), 1U);
  return requests.empty() ? PlotRequest() : requests.front();
}

TEST(CatalogueRequests, showSeismogramsAsASectionAndOneThatIsLongAsADrum) {
  const FileEntry hour = channelOf(FileKind::Seismograms, "/a", "BHZ", 3600);
  const FileEntry day = channelOf(FileKind::Seismograms, "/b", "BHZ", 86400);
  EXPECT_EQ(onlyRequest({hour, day}).words(), QStringList({"section", "--", "/a", "/b"}));
  EXPECT_EQ(onlyRequest({hour}).kind, "section");
  EXPECT_EQ(onlyRequest({day}).words(), QStringList({"drum", "--", "/b"}));
}

TEST(CatalogueRequests, readTheChannelsThatWereChosenOnly) {
  const FileEntries two = {channelOf(FileKind::Seismograms, "/a", "BHZ"),
                           channelOf(FileKind::Seismograms, "/a", "BHN")};
  EXPECT_EQ(onlyRequest(two, 2).words(), QStringList({"section", "--", "/a"})) << "all that there are";
  EXPECT_EQ(onlyRequest(two, 3).words(),
            QStringList({"section", "--channels", "II.TLY.--.BHZ,II.TLY.--.BHN", "--", "/a"}));
}

TEST(CatalogueRequests, readLargeFilesAsTheyAreDrawn) {
  const FileEntry month = channelOf(FileKind::Seismograms, "/a", "BHZ", 30 * 86400, std::int64_t(259200000));
  OpeningOptions options;
  options.indexFolder = "/cache";
  EXPECT_EQ(onlyRequest({month}, 1, options).words(), QStringList({"drum", "--index-cache", "/cache", "--", "/a"}));
  options.sampleMegabytes = 64;
  EXPECT_EQ(onlyRequest({month}, 1, options).options,
            QStringList({"--index-cache", "/cache", "--sample-memory", "64"}));
  EXPECT_EQ(onlyRequest({channelOf(FileKind::Seismograms, "/a", "BHZ")}, 1, options).options, QStringList());
}

TEST(CatalogueRequests, takeTheLastDayOfAnArchiveOrTheTimeThatIsAskedFor) {
  const FileEntry channel = channelOf(FileKind::Archive, "/sds", "BHZ", 30 * 86400 - 1, -1);
  EXPECT_EQ(onlyRequest({channel}).words(),
            QStringList({"drum", "--archive", "/sds", "--between", "2011-04-09T00:00:00.000Z",
                         "2011-04-10T00:00:00.000Z", "--", "II.TLY.--.BHZ"}));
  OpeningOptions options;
  options.from = QDateTime(QDate(2011, 3, 12), QTime(1, 0), Qt::UTC);
  options.to = options.from.addSecs(60);
  EXPECT_EQ(onlyRequest({channel}, 1, options).words(),
            QStringList({"section", "--archive", "/sds", "--between", "2011-03-12T01:00:00.000Z",
                         "2011-03-12T01:01:00.000Z", "--", "II.TLY.--.BHZ"}));
}

TEST(CatalogueRequests, showEachOtherFileByItself) {
  const auto entry = [](FileKind kind) { return FileEntry{kind, "/f", {}, {}}; };
  const FileEntries all = {entry(FileKind::Events), entry(FileKind::Stations), entry(FileKind::Lines),
                           entry(FileKind::Grid), entry(FileKind::Columns)};
  QStringList lines;
  for (const PlotRequest& request : requestsForEntries(all, [](const QString&) { return 1; }, {}))
    lines.append(request.words().join(' '));
  EXPECT_EQ(lines,
            (QStringList{"map --events /f", "map --stations /f", "map --polygons /f", "grid -- /f", "xy -- /f"}));
  EXPECT_TRUE(requestsForEntries({}, {}, {}).empty());
}

} // namespace
} // namespace xov::desk
