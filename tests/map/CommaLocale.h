#pragma once

#include <QLocale>

#include <clocale>
#include <locale>
#include <string>

namespace xov::test {

class CommaPoint : public std::numpunct<char> {
  char do_decimal_point() const override { return ','; }
};

/// A locale that writes commas for points, in every way that a program may ask for one, while it lives.
class CommaLocale {
public:
  CommaLocale() : former_(std::setlocale(LC_ALL, nullptr)) {
    QLocale::setDefault(QLocale(QLocale::German));
    // The C library has such a locale only where it is installed.
    for (const char* name : {"de_DE.UTF-8", "de_DE.utf8", "fr_FR.UTF-8", "fr_FR.utf8"}) {
      if (std::setlocale(LC_ALL, name) != nullptr) break;
    }
    std::locale::global(std::locale(std::locale(), new CommaPoint));
  }
  ~CommaLocale() {
    std::locale::global(std::locale::classic());
    std::setlocale(LC_ALL, former_.c_str());
    QLocale::setDefault(QLocale::c());
  }
  CommaLocale(const CommaLocale&) = delete;
  CommaLocale& operator=(const CommaLocale&) = delete;

private:
  std::string former_;
};

} // namespace xov::test
