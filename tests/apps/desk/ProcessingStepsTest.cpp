#include "apps/desk/processing/ProcessingSteps.h"

#include <gtest/gtest.h>

#include <QFile>
#include <QTemporaryDir>

namespace xov::desk {
namespace {

ProcessingList list() {
  return {{"--detrend", "mean", true},
          {"--filter", "bandpass 1 10", true},
          {"--zero-phase", {}, true},
          {"--integrate", {}, false},
          {"--stations", "/data/my stations.xml", true}};
}

TEST(ProcessingSteps, areTheWordsOfOptionsInTheirOrder) {
  EXPECT_EQ(wordsOf(list()), (QList<QStringList>{{"--detrend", "mean"},
                                                 {"--filter", "bandpass", "1", "10"},
                                                 {"--zero-phase"},
                                                 {"--stations", "/data/my stations.xml"}}))
      << "without the one that is off; the name of a file is one word";
}

TEST(ProcessingSteps, leaveOutSettingsOfAStepThatIsOff) {
  ProcessingList steps = list();
  steps[1].isOn = false;
  const QList<QStringList> words = wordsOf(steps);
  EXPECT_FALSE(words.contains(QStringList{"--zero-phase"}));
  EXPECT_EQ(words.size(), 2);
}

TEST(ProcessingSteps, comeBackFromWhatIsKept) {
  EXPECT_EQ(listOfKept(keptWords(list())), list());
  EXPECT_TRUE(listOfKept({{}, {"#"}, {"--nothing", "1"}, {"# --filter"}}).empty());
}

TEST(ProcessingSteps, comeBackFromTheTextOfAPreset) {
  const QString text = presetText(list());
  EXPECT_EQ(text, "# xov processing 1\ndetrend mean\nfilter bandpass 1 10\nzero-phase\noff integrate\n"
                  "stations /data/my stations.xml\n");
  const Preset preset = parsePreset(text, "p");
  EXPECT_EQ(preset.steps, list());
  EXPECT_TRUE(preset.problems.isEmpty());
}

TEST(ProcessingSteps, ofABadLineSayWhichAndWhy) {
  const Preset preset = parsePreset(
      "filter bandpass 10 1\n\n  # of ours \n  taper 10s \nfly\noff\nintegrate twice\ncorners 99\r\n", "p");
  EXPECT_EQ(preset.steps, (ProcessingList{{"--taper", "10s", true}}));
  ASSERT_EQ(preset.problems.size(), 5);
  EXPECT_EQ(preset.problems[0], "p: line 1: found 'bandpass 10 1', expected lowpass F, highpass F, bandpass F1 F2 or "
                                "bandstop F1 F2 in Hz");
  EXPECT_TRUE(preset.problems[1].startsWith("p: line 5: found '--fly', expected a step"));
  EXPECT_TRUE(preset.problems[2].startsWith("p: line 6: "));
  EXPECT_EQ(preset.problems[3], "p: line 7: found 'twice', expected nothing behind");
  EXPECT_EQ(preset.problems[4], "p: line 8: found '99', expected a whole number from 1 to 20");
}

TEST(ProcessingSteps, haveUsualValuesWithoutAProblem) {
  for (const StepKind& kind : stepKinds()) {
    const QString option = kind.option;
    const QString value = takesFile(option) ? QStringLiteral("/f") : QString::fromUtf8(kind.usual);
    EXPECT_EQ(problemOf({option, value}), QString()) << kind.option;
    EXPECT_FALSE(stepTitle(kind).isEmpty());
  }
}

TEST(ProcessingSteps, takeNoAbsurdSettings) {
  for (const ProcessingStep& step : {ProcessingStep{"--corners", "0"},
                                     {"--corners", "1e300"},
                                     {"--pre-filter", "1 2 3"},
                                     {"--pre-filter", "4 3 2 1"},
                                     {"--pre-filter", "nan nan nan nan"},
                                     {"--water-level", "-1"},
                                     {"--water-level", "inf"},
                                     {"--stations", ""},
                                     {"--decimate", "99999999999"},
                                     {"--nothing", ""}})
    EXPECT_FALSE(problemOf(step).isEmpty()) << qPrintable(step.option + ' ' + step.value);
}

TEST(ProcessingSteps, areKeptInFiles) {
  const QTemporaryDir folder;
  const QString path = folder.filePath("p.xovsteps");
  ASSERT_TRUE(bool(writePreset(path, list())));
  EXPECT_EQ(readPreset(path)->steps, list());
  EXPECT_TRUE(readPreset(folder.filePath("none")).error().startsWith(folder.filePath("none")));
  EXPECT_FALSE(writePreset(folder.filePath("no/such/folder"), list()));
  QFile large(folder.filePath("large"));
  ASSERT_TRUE(large.open(QIODevice::WriteOnly));
  ASSERT_TRUE(large.resize((1 << 20) + 1));
  EXPECT_FALSE(readPreset(large.fileName()));
}

} // namespace
} // namespace xov::desk
