#pragma once

#include <QByteArray>
#include <QByteArrayList>

#include <cstdio>
#include <vector>

namespace xov::test {

/// Spells an alphanumeric SAC file out line by line, knowing nothing of the library: 14 lines of five floats, 8 of
/// five integers, 8 of text, then the samples.
class SacTextLines {
public:
  SacTextLines() {
    for (int i = 0; i < 14; ++i)
      lines_ << floats({-12345, -12345, -12345, -12345, -12345});
    for (int i = 0; i < 8; ++i)
      lines_ << integers({-12345, -12345, -12345, -12345, -12345});
    for (int i = 0; i < 8; ++i)
      lines_ << QByteArray("-12345  -12345  -12345  ");
    // delta 0.5, then b 10 at the start of line 2; line 16 holds nzmsec nvhdr norid nevid npts, line 18 starts with
    // iftype, line 22 with leven.
    line(1, floats({0.5, -12345, -12345, -12345, -12345}));
    line(2, floats({10, -12345, -12345, -12345, -12345}));
    line(18, integers({1, -12345, -12345, -12345, -12345}));
    line(22, integers({1, -12345, -12345, -12345, -12345}));
    npts(0);
  }

  SacTextLines& line(int number, const QByteArray& text) {
    lines_[number - 1] = text;
    return *this;
  }
  SacTextLines& npts(int count) { return line(16, integers({-12345, 6, -12345, -12345, count})); }
  SacTextLines& add(const QByteArray& text) {
    lines_ << text;
    return *this;
  }
  QByteArray bytes(const char* lineEnd = "\n") const { return lines_.join(lineEnd) + lineEnd; }
  QByteArrayList lines() const { return lines_; }

  static QByteArray floats(const std::vector<double>& values) {
    QByteArray text;
    for (const double value : values)
      text += print("%15.7f", value);
    return text;
  }
  static QByteArray integers(const std::vector<int>& values) {
    QByteArray text;
    for (const int value : values)
      text += print("%10d", value);
    return text;
  }

private:
  template <typename Number>
  static QByteArray print(const char* format, Number value) {
    char text[64];
    std::snprintf(text, sizeof(text), format, value);
    return text;
  }

  QByteArrayList lines_;
};

} // namespace xov::test
