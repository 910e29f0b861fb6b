#include "apps/desk/processing/ProcessingPanel.h"

#include <gtest/gtest.h>

#include <QAbstractItemModelTester>
#include <QFile>
#include <QLabel>
#include <QTableView>
#include <QTemporaryDir>
#include <QToolButton>

namespace xov::desk {
namespace {

/// A panel whose wishes come true.
class ProcessingPanelTest : public testing::Test {
protected:
  ProcessingPanelTest() {
    QObject::connect(&panel_, &ProcessingPanel::stepsWished, &panel_,
                     [this](const ProcessingList& steps, const QString& what) {
                       changes_.append(what);
                       panel_.showSteps(steps, false);
                     });
    panel_.showSteps({}, false);
  }

  void add(const char* option) { panel_.addStep(*stepKindOf(option)); }
  QStringList options() const {
    QStringList all;
    for (const ProcessingStep& step : panel_.model().steps())
      all.append(step.option);
    return all;
  }
  QToolButton& button(const char* name) { return *panel_.findChild<QToolButton*>(name); }

  mutable ProcessingPanel panel_;
  QStringList changes_;
};

TEST_F(ProcessingPanelTest, addsMovesAndTakesAwayWhatIsSelected) {
  add("--detrend");
  add("--filter");
  add("--integrate");
  EXPECT_EQ(options(), (QStringList{"--detrend", "--filter", "--integrate"}));
  EXPECT_EQ(panel_.model().steps()[1].value, "bandpass 0.5 4");
  EXPECT_FALSE(button("stepDown").isEnabled()) << "the last one is selected";
  button("stepUp").click();
  EXPECT_EQ(options(), (QStringList{"--detrend", "--integrate", "--filter"}));
  button("stepUp").click();
  EXPECT_EQ(options(), (QStringList{"--integrate", "--detrend", "--filter"})) << "it stays selected";
  EXPECT_FALSE(button("stepUp").isEnabled());
  button("removeStep").click();
  EXPECT_EQ(options(), (QStringList{"--detrend", "--filter"}));
  add("--taper");
  EXPECT_EQ(options(), (QStringList{"--detrend", "--taper", "--filter"})) << "behind the selected one";
  EXPECT_EQ(changes_.size(), 7);
  EXPECT_EQ(changes_.last(), "Add Taper");
}

TEST_F(ProcessingPanelTest, switchesStepsOffAndChangesValues) {
  add("--filter");
  ProcessingModel& model = panel_.model();
  const QAbstractItemModelTester tester(&model, QAbstractItemModelTester::FailureReportingMode::Fatal);
  ASSERT_TRUE(model.setData(model.index(0, ProcessingModel::Step), Qt::Unchecked, Qt::CheckStateRole));
  EXPECT_FALSE(model.steps()[0].isOn);
  EXPECT_EQ(changes_.last(), "Filter off");
  ASSERT_TRUE(model.setData(model.index(0, ProcessingModel::Value), " lowpass  2", Qt::EditRole));
  EXPECT_EQ(model.steps()[0].value, "lowpass 2");
  EXPECT_FALSE(model.setData(model.index(0, ProcessingModel::Value), "lowpass", Qt::EditRole));
  EXPECT_EQ(model.steps()[0].value, "lowpass 2") << "what is no value changes nothing";
  EXPECT_TRUE(panel_.findChild<QLabel*>("processingMessage")->text().startsWith("found 'lowpass', expected"));
  add("--integrate");
  EXPECT_FALSE(model.flags(model.index(1, ProcessingModel::Value)) & Qt::ItemIsEditable) << "it takes none";
}

TEST_F(ProcessingPanelTest, opensAndSavesPresets) {
  const QTemporaryDir folder;
  const QString path = folder.filePath("p.xovsteps");
  add("--filter");
  panel_.savePreset(path);
  add("--taper");
  panel_.openPreset(path);
  EXPECT_EQ(options(), QStringList{"--filter"});
  QFile file(path);
  ASSERT_TRUE(file.open(QIODevice::WriteOnly));
  file.write("fly\ntaper 0.1\n");
  file.close();
  panel_.openPreset(path);
  EXPECT_EQ(options(), QStringList{"--taper"});
  EXPECT_TRUE(panel_.findChild<QLabel*>("processingMessage")->text().startsWith(path + ": line 1: "));
  panel_.openPreset(folder.filePath("none"));
  EXPECT_EQ(options(), QStringList{"--taper"}) << "nothing is lost";
}

TEST_F(ProcessingPanelTest, isForNothingWithoutAPane) {
  panel_.showNothing();
  EXPECT_FALSE(panel_.isEnabled());
  panel_.showSteps({{"--taper", "0.1"}}, true);
  EXPECT_TRUE(panel_.isEnabled());
  EXPECT_TRUE(button("rawData").isChecked());
  bool isRaw = true;
  QObject::connect(&panel_, &ProcessingPanel::rawWished, &panel_, [&](bool wished) { isRaw = wished; });
  button("rawData").click();
  EXPECT_FALSE(isRaw);
}

} // namespace
} // namespace xov::desk
