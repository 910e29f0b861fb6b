// The boundary readers against the C library's own lines and numbers, over random texts.

#include "XOV_Graphics/map/BoundaryText.h"
#include "tests/map/MapPrinting.h"

#include <gtest/gtest.h>

#include <array>
#include <cstdio>
#include <cstring>
#include <random>
#include <string>

using namespace xov;
using namespace xov::test;

namespace {

struct Segment {
  std::string title;
  Points points;
};

/// Reads as a plain C program would: fgets with a buffer of 128 bytes, sscanf into arrays that are never cleared.
class PlainReader {
public:
  void readByType(std::string text) {
    open(text);
    bool header = false;
    if (next()) title_ = line_.data();
    while (next()) {
      if (line_[0] == '>') {
        close();
        header = false;
      } else if (!header) {
        title_ = line_.data();
        header = true;
      } else {
        addPoint();
      }
    }
    std::fclose(file_);
  }

  void readBySegment(std::string text) {
    open(text);
    bool header = false;
    while (next()) {
      if (std::strncmp(line_.data(), "***", 3) == 0) {
        close();
        header = false;
      } else if (!header) {
        title_ = line_.data();
        header = true;
      } else {
        addPoint();
      }
    }
    std::fclose(file_);
  }

  std::vector<Segment> segments;

private:
  void open(std::string& text) {
    file_ = fmemopen(text.data(), text.size(), "r");
    title_ = "Untitled";
    count_ = 0;
  }
  bool next() { return std::fgets(line_.data(), int(line_.size()), file_) != nullptr; }
  void addPoint() {
    (void)std::sscanf(line_.data(), "%f %f", &x_[count_], &y_[count_]);
    if (x_[count_] < 0) x_[count_] += 360;
    ++count_;
  }
  void close() {
    Segment segment{title_, {}};
    for (std::size_t i = 0; i < count_; ++i)
      segment.points.emplace_back(x_[i], y_[i]);
    segments.push_back(segment);
    title_ = "Untitled";
    count_ = 0;
  }

  std::FILE* file_ = nullptr;
  std::array<char, 128> line_{};
  std::array<float, 1024> x_{};
  std::array<float, 1024> y_{};
  std::size_t count_ = 0;
  std::string title_;
};

/// Texts with whole and broken lines, short and long, as a damaged file may have them.
class RandomText {
public:
  explicit RandomText(unsigned seed) : random_(seed) {}

  std::string text() {
    std::string all;
    for (unsigned lines = below(60); lines > 0; --lines)
      all += line();
    if (below(3) == 0 && !all.empty()) all.pop_back();
    return all.empty() ? "\n" : all;
  }

private:
  unsigned below(unsigned limit) { return unsigned(random_() % limit); }

  std::string number() {
    std::string text = std::array{"", "-", "+", ""}[below(4)];
    if (below(8) != 0) text += std::to_string(below(400));
    if (below(2) == 0) text += '.';
    if (below(8) != 0) text += std::to_string(below(1000));
    return text;
  }

  std::string word() {
    constexpr std::array kWords = {"***", ">", "*", "x", "title", ",", ".", "-", "+-1", "\t"};
    return below(4) == 0 ? kWords[below(kWords.size())] : number();
  }

  std::string line() {
    switch (below(8)) {
    case 0:
      return "***\n";
    case 1:
      return ">\n";
    case 2: {
      std::string text;
      for (unsigned words = below(50); words > 0; --words)
        text += word() + std::array{" ", "  ", " ", ","}[below(4)];
      return text + '\n';
    }
    case 3:
      return std::string(below(300), ' ') + word() + ' ' + word() + '\n';
    default:
      return number() + ' ' + number() + '\n';
    }
  }

  std::mt19937 random_;
};

void expectSame(const XOVPolygonArray& polygons, const std::vector<Segment>& segments) {
  ASSERT_EQ(polygons.size(), segments.size());
  for (std::size_t i = 0; i < segments.size(); ++i) {
    EXPECT_EQ(polygons[i]->title().toStdString(), segments[i].title);
    EXPECT_EQ(pointsOf(*polygons[i]), segments[i].points);
    EXPECT_EQ(polygons[i]->npts(), int(segments[i].points.size()));
  }
}

constexpr unsigned kTexts = 3000;

} // namespace

TEST(BirdBoundaries, agreeWithAPlainReaderOverDamagedTexts) {
  for (unsigned seed = 0; seed < kTexts && !::testing::Test::HasFailure(); ++seed) {
    SCOPED_TRACE("seed " + std::to_string(seed));
    const std::string text = RandomText(seed).text();
    XOVPolygonArray polygons;
    SegmentCollector segments(kBirdSegmentPoints, SegmentCollector::Bounds::NotComputed, polygons);
    readBirdBoundaries(QByteArray::fromStdString(text), segments);
    PlainReader plain;
    plain.readBySegment(text);
    expectSame(polygons, plain.segments);
  }
}

TEST(TypedBoundaries, agreeWithAPlainReaderOverDamagedTexts) {
  for (unsigned seed = 0; seed < kTexts && !::testing::Test::HasFailure(); ++seed) {
    SCOPED_TRACE("seed " + std::to_string(seed));
    RandomText random(seed);
    XOVPolygonArray polygons;
    SegmentCollector segments(kTypedSegmentPoints, SegmentCollector::Bounds::Computed, polygons);
    PlainReader plain;
    for (int file = 0; file < 3; ++file) {
      const std::string text = random.text();
      readTypedBoundaries(QByteArray::fromStdString(text), segments);
      plain.readByType(text);
    }
    expectSame(polygons, plain.segments);
  }
}
