#pragma once

#include <array>
#include <string>
#include <vector>

namespace xov::oracle {

/// What a call of ADrawAxis() and the state before it come to.
struct Call {
  int left = 0;
  int right = 0;
  int top = 0;
  int bottom = 0;
  int fontSize = 18;
  int axis = 1;
  int side = 3;
  int mode = 2;
  float lower = 0;
  float upper = 1;
  float interval = 0;
  int powerFlag = 0;
  int secondaryTicks = 1;
  int positiveDown = 0;

  /// All fields by name, to find a failing case again.
  std::string toText() const;
};

struct Text {
  std::string text;
  int justify = 0;
  int x = 0;
  int y = 0;
  bool operator==(const Text&) const = default;
};

/// The lines from (x1, y1) to (x2, y2) in pen order, and the strings with the points they are justified about.
struct Drawing {
  std::vector<std::array<float, 4>> lines;
  std::vector<Text> texts;
  std::string suffix;

  // Which of the rules took part, so that a test can tell that it has met them all.
  int minors = 0;
  bool blankSign = false;
  bool negativeWidth = false;
  bool noTicks = false;
};

/// A second reckoning of an axis, to hold the library's own against. It goes through the steps one after the other
/// with C's number formatting, forces every single-precision operation through memory, takes logarithms in extended
/// precision and powers of ten from decimal text, and shares no code with the library. It guards nothing: limits must
/// differ and be finite.
Drawing drawAxis(const Call& call);

} // namespace xov::oracle
