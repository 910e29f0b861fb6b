#include "apps/xov/prepare/PreparationStep.h"

#include "apps/xov/prepare/StepWords.h"

#include <gtest/gtest.h>

namespace xov::cli {
namespace {

using Words = std::vector<std::string>;
using Parse = Result<PreparationStep> (*)(const QString&);

/// What a value says under a title; the error where it is none.
std::string said(Parse parse, const char* value, const StepSettings& settings = {}) {
  const Result<PreparationStep> step = parse(QString::fromUtf8(value));
  return (step ? describe({*step}, settings) : step.error()).toStdString();
}

TEST(PreparationStep, isReadAndWrittenUnderTheTitle) {
  EXPECT_EQ(said(parseStart, "2011-03-11T05:46:23"), "from 2011-03-11T05:46:23");
  EXPECT_EQ(said(parseStart, "2011-03-11T05:46:23.5Z"), "from 2011-03-11T05:46:23.500");
  EXPECT_EQ(said(parseEnd, "-12.5"), "to -12.5 s");
  EXPECT_EQ(said(parseAround, "P -10 60"), "-10 to 60 s after P");
  EXPECT_EQ(said(parseFilter, "lowpass 2"), "lowpass 2 Hz");
  EXPECT_EQ(said(parseFilter, "highpass,0.5"), "highpass 0.5 Hz");
  EXPECT_EQ(said(parseFilter, "bandpass 1 10"), "bandpass 1-10 Hz");
  EXPECT_EQ(said(parseFilter, "bandstop 49 51"), "bandstop 49-51 Hz");
  EXPECT_EQ(said(parseDetrend, "mean"), "less the mean");
  EXPECT_EQ(said(parseDetrend, "linear"), "less the trend");
  EXPECT_EQ(said(parseDetrend, "3"), "less a polynomial of order 3");
  EXPECT_EQ(said(parseTaper, "0.1"), "tapered over 10 %");
  EXPECT_EQ(said(parseTaper, "10s"), "tapered over 10 s");
  EXPECT_EQ(said(parseNormalize, "section"), "normalised");
  EXPECT_EQ(said(parseDecimate, "4"), "decimated by 4");
  EXPECT_EQ(said(parseRemoveResponse, "disp"), "response removed to displacement");
  EXPECT_EQ(said(parseRotate, "zrt"), "turned to ZRT");
  EXPECT_EQ(said(parseRotate, "LQT"), "turned to LQT");
  EXPECT_EQ(said(parseRotate, "lqt 25.5"), "turned to LQT at 25.5°");
}

TEST(PreparationStep, tellsOfFilterSettingsThatAreNotUsual) {
  StepSettings settings;
  settings.filterOrder = 2;
  settings.filterPhase = FilterPhase::Zero;
  EXPECT_EQ(said(parseFilter, "lowpass 2", settings), "lowpass 2 Hz with 2 poles, zero phase");
}

TEST(PreparationStep, keepsNumbersForWhatTheyAre) {
  const auto filter = std::get<FilterStep>(*parseFilter(QStringLiteral("bandpass 1 10"))).filter;
  EXPECT_EQ(filter.lowHz, 1);
  EXPECT_EQ(filter.highHz, 10);
  EXPECT_EQ(std::get<FilterStep>(*parseFilter(QStringLiteral("lowpass 2"))).filter.highHz, 2);
  EXPECT_EQ(std::get<FilterStep>(*parseFilter(QStringLiteral("highpass 2"))).filter.lowHz, 2);
  const auto around = std::get<AroundStep>(*parseAround(QStringLiteral("PcP -1.5 2")));
  EXPECT_EQ(around.phase, QStringLiteral("PcP"));
  EXPECT_EQ(around.from, -1.5);
  EXPECT_EQ(around.to, 2);
}

TEST(PreparationStep, isRefusedInOneLine) {
  constexpr char kTimes[] = ", expected a time as 2011-03-11T05:46:23 or seconds on the time axis";
  constexpr char kBands[] = ", expected lowpass F, highpass F, bandpass F1 F2 or bandstop F1 F2 in Hz";
  EXPECT_EQ(said(parseStart, "noon"), std::string("found 'noon'") + kTimes);
  EXPECT_EQ(said(parseEnd, "nan"), std::string("found 'nan'") + kTimes);
  for (const char* value : {"", "bandpass", "bandpass 1", "bandpass 10 1", "bandpass 1 1", "lowpass 0", "lowpass -1",
                            "lowpass 1 2", "lowpass x", "notch 1", "lowpass inf"})
    EXPECT_EQ(said(parseFilter, value), "found '" + std::string(value) + "'" + kBands);
  for (const char* value : {"", "P", "P 1", "P 60 -10", "P 1 1", "P a b", "P 1 2 3"})
    EXPECT_EQ(said(parseAround, value),
              "found '" + std::string(value) +
                  "', expected a phase and the seconds from it on and up to it, as 'P -10 60'");
  EXPECT_EQ(said(parseDetrend, "31"), "found '31', expected mean, linear or an order from 0 to 30");
  for (const char* value : {"0", "0.6", "-1", "s", "x", "0s", "-1s"})
    EXPECT_EQ(said(parseTaper, value),
              "found '" + std::string(value) + "', expected a share above 0 and up to 0.5, or seconds as 10s");
  EXPECT_EQ(said(parseDecimate, "1"), "found '1', expected a whole number from 2 to 10000");
  EXPECT_EQ(said(parseRemoveResponse, "speed"), "found 'speed', expected disp, vel or acc");
  for (const char* value : {"", "NEZ", "ZRT 25", "LQT 91", "LQT -1", "LQT nan", "LQT 1 2"})
    EXPECT_EQ(said(parseRotate, value), "found '" + std::string(value) +
                                            "', expected ZRT, LQT, or LQT and the incidence in degrees from 0 to 90");
}

TEST(StepWords, joinsTheValuesOfAStep) {
  EXPECT_EQ(withStepValues({"section", "--filter", "bandpass", "1", "10", "a.SAC"}),
            (Words{"section", "--filter", "bandpass 1 10", "a.SAC"}));
  EXPECT_EQ(withStepValues({"--filter", "lowpass", "1", "2"}), (Words{"--filter", "lowpass 1", "2"}))
      << "2 is a file: a low-pass has one corner";
  EXPECT_EQ(withStepValues({"--around", "P", "-10", "60", "-3"}), (Words{"--around", "P -10 60", "-3"}));
  EXPECT_EQ(withStepValues({"--around", "P -10 60", "7"}), (Words{"--around", "P -10 60", "7"}));
  EXPECT_EQ(withStepValues({"--filter=bandpass", "1", "10"}), (Words{"--filter", "bandpass 1 10"}));
  EXPECT_EQ(withStepValues({"--filter=bandpass,1,10", "5"}), (Words{"--filter", "bandpass,1,10", "5"}));
}

TEST(StepWords, giveWhatMayLackItsUsualValue) {
  EXPECT_EQ(withStepValues({"--taper", "a.SAC"}), (Words{"--taper", "0.05", "a.SAC"}));
  EXPECT_EQ(withStepValues({"--taper", "10s", "--detrend", "mean"}), (Words{"--taper", "10s", "--detrend", "mean"}));
  EXPECT_EQ(withStepValues({"--detrend", "--normalize", "section", "--remove-response"}),
            (Words{"--detrend", "linear", "--normalize", "section", "--remove-response", "vel"}));
}

TEST(StepWords, leaveOtherWordsAlone) {
  const Words words = {"fk", "--window", "1", "2", "--filter"};
  EXPECT_EQ(withStepValues(words), words) << "a value that is forgotten is for the parser to say";
  EXPECT_EQ(withStepValues({"info", "--", "--taper", "--filter", "x", "1"}),
            (Words{"info", "--", "--taper", "--filter", "x", "1"}))
      << "names of files";
}

} // namespace
} // namespace xov::cli
