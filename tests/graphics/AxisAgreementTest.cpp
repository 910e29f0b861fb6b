#include "AxisFixture.h"
#include "AxisOracle.h"

#include <cmath>
#include <random>
#include <string>

namespace xov {
namespace {

// Case number i is drawn from this seed + i alone, so that a failure can be repeated from the number it prints.
constexpr std::uint32_t kFirstSeed = 20240611;
constexpr int kLayoutCases = 60'000;
constexpr int kDrawnCases = 4'000;

class CaseMaker {
public:
  explicit CaseMaker(std::uint32_t seed) : random_(seed) {}

  oracle::Call make() {
    oracle::Call call;
    call.left = between(-300, 300);
    call.right = call.left + between(50, 2000);
    call.bottom = between(-300, 300);
    call.top = call.bottom + (oneIn(12) ? 0 : between(50, 2000));
    call.fontSize = between(6, 24);
    call.axis = between(1, 2);
    call.side = between(1, 4);
    if (!oneIn(8)) call.side = call.axis == 1 ? between(3, 4) : between(1, 2);
    call.mode = oneIn(3) ? between(0, 1) : 2;
    call.powerFlag = between(0, 1);
    call.secondaryTicks = oneIn(4) ? 0 : 1;
    call.positiveDown = oneIn(4) ? 1 : 0;
    makeLimits(call);
    if (call.axis == 2 && call.top == call.bottom) call.top = call.bottom + 50;
    return call;
  }

private:
  int between(int low, int high) { return std::uniform_int_distribution<int>(low, high)(random_); }
  bool oneIn(int n) { return between(1, n) == 1; }
  float real(double low, double high) { return float(std::uniform_real_distribution<double>(low, high)(random_)); }

  // Over many decades; every other number has two digits, so that ticks fall on the very ends of axes.
  float number(int lowestDecade, int highestDecade) {
    const double decade = std::pow(10.0, between(lowestDecade, highestDecade));
    return oneIn(2) ? float(between(1, 99) * decade) : float(double(real(1, 99)) * decade);
  }

  void makeLimits(oracle::Call& call) {
    const float range = number(-12, 12);
    switch (between(0, 4)) {
    case 0:
      call.lower = 0;
      break;
    case 1:
      call.lower = -range / 2;
      break;
    case 2:
      call.lower = -range;
      break;
    case 3:
      call.lower = (oneIn(2) ? 1.0f : -1.0f) * range * number(-3, 3);
      break;
    default:
      call.lower = (oneIn(2) ? 1.0f : -1.0f) * number(-12, 8);
      break;
    }
    call.upper = call.lower + range;
    if (call.upper == call.lower || std::abs(call.lower) > 1e6f * range) {
      call.lower = 0;
      call.upper = range;
    }
    if (oneIn(4)) call.interval = oneIn(2) ? range / float(between(1, 60)) : range / real(0.3, 60);
    if (!oneIn(20)) return;
    std::swap(call.lower, call.upper);
    // Falling limits choose a step of 2, which must not be lost in limits many decades larger.
    if (std::abs(call.lower) > 1e6f || std::abs(call.upper) > 1e6f) std::swap(call.lower, call.upper);
  }

  std::mt19937 random_;
};

LinearAxisRequest requestOf(const oracle::Call& call) {
  LinearAxisRequest request;
  request.direction = call.axis == 1 ? AxisDirection::X : AxisDirection::Y;
  request.frame = {std::int16_t(call.top), std::int16_t(call.left), std::int16_t(call.bottom),
                   std::int16_t(call.right)};
  request.line = call.side == 2 ? AxisLine::AtEnd : AxisLine::AtStart;
  request.detail = AxisDetail(call.mode);
  request.fontSize = call.fontSize;
  request.lower = call.lower;
  request.upper = call.upper;
  request.interval = call.interval;
  request.mayScaleLabels = call.powerFlag != 0;
  request.minorTicks = call.secondaryTicks != 0;
  request.invertSigns = call.positiveDown != 0;
  return request;
}

std::string lineText(const std::array<float, 4>& line) {
  char text[100];
  std::snprintf(text, sizeof text, "(%.9g, %.9g)-(%.9g, %.9g)", double(line[0]), double(line[1]), double(line[2]),
                double(line[3]));
  return text;
}

// A drawing as lines of text, for the message of a failure.
std::vector<std::string> described(const oracle::Drawing& drawing) {
  std::vector<std::string> all;
  for (const auto& line : drawing.lines)
    all.push_back(lineText(line));
  for (const oracle::Text& t : drawing.texts) {
    all.push_back("'" + t.text + "' justified " + std::to_string(t.justify) + " about " + std::to_string(t.x) + ", " +
                  std::to_string(t.y));
  }
  return all;
}

oracle::Drawing drawingOf(const LinearAxis& axis, int justify) {
  oracle::Drawing drawing;
  for (const AxisSegment& s : axis.frame)
    drawing.lines.push_back({s.x1, s.y1, s.x2, s.y2});
  for (const AxisSegment& s : axis.ticks)
    drawing.lines.push_back({s.x1, s.y1, s.x2, s.y2});
  for (const AxisLabel& label : axis.labels)
    drawing.texts.push_back({label.text, justify, label.x, label.y});
  drawing.suffix = axis.suffix;
  return drawing;
}

bool isAnAxis(const oracle::Call& call) {
  return call.axis == 1 ? call.side == 3 || call.side == 4 : call.side == 1 || call.side == 2;
}

TEST(AxisAgreement, aSecondReckoningHasTheSameLinesTextsPositionsAndSuffix) {
  int minorsMet[10] = {};
  int suffixes = 0, blankSigns = 0, negativeWidths = 0, emptyRanges = 0;
  int compared = 0;
  std::size_t labels = 0;
  for (int i = 0; i < kLayoutCases; ++i) {
    const std::uint32_t seed = kFirstSeed + std::uint32_t(i);
    const oracle::Call call = CaseMaker(seed).make();
    if (!isAnAxis(call)) continue;
    oracle::Drawing expected = oracle::drawAxis(call);
    if (call.mode > 1) expected.texts.pop_back(); // the axis label is drawn apart from the layout
    const oracle::Drawing got = drawingOf(layoutLinearAxis(requestOf(call)), call.axis == 1 ? 2 : 3);
    if (got.lines != expected.lines || got.texts != expected.texts) {
      ASSERT_EQ(described(got), described(expected)) << "seed " << seed << ": " << call.toText();
      FAIL() << "seed " << seed << ": " << call.toText();
    }
    ASSERT_EQ(got.suffix, expected.suffix) << "seed " << seed << ": " << call.toText();
    ++compared;
    ++minorsMet[expected.minors];
    suffixes += !expected.suffix.empty();
    blankSigns += expected.blankSign;
    negativeWidths += expected.negativeWidth;
    emptyRanges += expected.noTicks;
    labels += expected.texts.size();
  }
  EXPECT_GT(compared, 40'000);
  // The cases have gone through every rule often enough to mean something.
  for (int minors : {1, 3, 4, 9})
    EXPECT_GT(minorsMet[minors], 1000) << minors << " secondary ticks";
  EXPECT_GT(suffixes, 1000);
  EXPECT_GT(blankSigns, 1000);
  EXPECT_GT(negativeWidths, 1000);
  EXPECT_GT(emptyRanges, 1000);
  EXPECT_GT(labels, 100'000u);
}

class DrawnAxisAgreement : public AxisFixture {
protected:
  oracle::Drawing draw(const oracle::Call& call) {
    AInitGraphLib();
    ASetPath(path_);
    ASetAxisRect(float(call.left), float(call.right), float(call.top), float(call.bottom));
    ASetFontSize(call.fontSize);
    ASetXAxisPowerFlag(call.powerFlag);
    ASetYAxisPowerFlag(call.powerFlag);
    gXsecTic = gYsecTic = call.secondaryTicks;
    gPosDown = call.positiveDown;
    drawAxis(call.axis, call.side, call.mode, call.lower, call.upper, call.interval);

    oracle::Drawing drawing;
    for (const AxisSegment& s : segments())
      drawing.lines.push_back({s.x1, s.y1, s.x2, s.y2});
    return drawing;
  }

  // Where a justified string starts.
  QPointF startOf(const oracle::Text& text) const {
    const double width = sizeOf(QString::fromStdString(text.text)).width();
    const double shift = text.justify == 2 ? width / 2 : text.justify == 3 ? width : 0;
    return {text.x - shift, double(text.y)};
  }
};

TEST_F(DrawnAxisAgreement, theDrawnAxisHasTheSameLinesAndTextsAsASecondReckoning) {
  for (int i = 0; i < kDrawnCases; ++i) {
    const std::uint32_t seed = kFirstSeed + std::uint32_t(i);
    const oracle::Call call = CaseMaker(seed).make();
    oracle::Drawing expected = oracle::drawAxis(call);
    // An empty frame edge leaves no line in a path.
    std::erase_if(expected.lines, [](const auto& l) { return l[0] == l[2] && l[1] == l[3]; });
    std::erase_if(expected.texts, [](const oracle::Text& t) { return t.text.empty(); });
    const oracle::Drawing got = draw(call);
    ASSERT_EQ(got.lines, expected.lines) << "seed " << seed << ": " << call.toText();
    ASSERT_EQ(recording_.items().size(), expected.texts.size()) << "seed " << seed << ": " << call.toText();
    for (std::size_t j = 0; j < expected.texts.size(); ++j) {
      const RecordedItem& item = recording_.items()[j];
      ASSERT_EQ(item.text.toStdString(), expected.texts[j].text) << "seed " << seed << ": " << call.toText();
      ASSERT_EQ(item.position, startOf(expected.texts[j])) << "seed " << seed << ": " << call.toText();
    }
  }
}

} // namespace
} // namespace xov
