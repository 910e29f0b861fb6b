#include "apps/desk/panes/PlotRequest.h"

#include <gtest/gtest.h>

#include <QJsonArray>
#include <QSize>

namespace xov::desk {
namespace {

PlotRequest drumRequest() {
  PlotRequest request;
  request.kind = "drum";
  request.options = {"--rows", "4"};
  request.steps = {{"--detrend", "mean"}, {"--filter", "bandpass", "1", "5"}};
  request.properties = {{"lineWidth", "2"}, {"title", "A day"}};
  request.files = {"/data/it's.sac", "/data/two.sac"};
  return request;
}

TEST(PlotRequest, isTheWordsOfACommandLine) {
  EXPECT_EQ(drumRequest().words(),
            QStringList({"drum", "--rows", "4", "--detrend", "mean", "--filter", "bandpass", "1", "5", "--set",
                         "lineWidth=2", "--set", "title=A day", "--", "/data/it's.sac", "/data/two.sac"}));
}

TEST(PlotRequest, leavesOutStepsThatAreOffAndAllOfRawData) {
  PlotRequest request = drumRequest();
  request.steps[0].prepend("#");
  EXPECT_FALSE(request.words().contains("--detrend"));
  EXPECT_TRUE(request.words().contains("--filter"));
  request.isRaw = true;
  EXPECT_FALSE(request.words().contains("--filter"));
  EXPECT_EQ(PlotRequest::fromJson(request.toJson()), request);
}

TEST(PlotRequest, needsNoFilesAtItsEnd) {
  PlotRequest request;
  request.kind = "map";
  request.options = {"--events", "quakes.csv"};
  EXPECT_EQ(request.words(), QStringList({"map", "--events", "quakes.csv"}));
}

TEST(PlotRequest, writesALineThatAShellTakes) {
  EXPECT_EQ(drumRequest().commandLine({640, 480}),
            "xov drum --size 640 480 --rows 4 --detrend mean --filter bandpass 1 5 --set lineWidth=2 "
            "--set 'title=A day' -- '/data/it'\\''s.sac' /data/two.sac");
}

TEST(PlotRequest, comesBackFromItsJson) { EXPECT_EQ(PlotRequest::fromJson(drumRequest().toJson()), drumRequest()); }

TEST(PlotRequest, takesNothingFromJsonOfAnotherShape) {
  EXPECT_EQ(PlotRequest::fromJson({{"kind", 3}, {"options", "text"}, {"files", QJsonArray{1, QJsonArray()}}}),
            PlotRequest());
}

TEST(PlotRequest, quotesWhatAShellWouldTakeApart) {
  EXPECT_EQ(shellWord("a-b_c.sac"), "a-b_c.sac");
  EXPECT_EQ(shellWord(""), "''");
  EXPECT_EQ(shellWord("$HOME"), "'$HOME'");
  EXPECT_EQ(shellWord("a\nb"), "'a\nb'");
}

} // namespace
} // namespace xov::desk
