#pragma once

#include "tests/apps/CliFixture.h"

#include <QDir>

#include <vector>

namespace xov::cli {

/// A file that a command writes.
struct Export {
  const char* name;
  QStringList arguments; ///< without -o
};

/// Each kind of file that the command writes, of inputs that CliExports makes.
inline std::vector<Export> everyExport() {
  const QStringList section = {"section", "a.SAC", "b.SAC", "--size", "300", "200"};
  return {{"plot.pdf", section},
          {"plot.svg", section},
          {"plot.png", section},
          {"plot.tif", section},
          {"plot.jpg", section},
          {"both.mseed", {"convert", "a.SAC", "b.SAC"}},
          {"copy.SAC", {"convert", "a.SAC"}},
          {"pages.pdf", section + QStringList{"--page", "1"}},
          {"map.pdf", {"map", "--size", "300", "200"}},
          {"hist.svg", {"hist", "points.txt", "--size", "300", "200"}}};
}

/// Writes files alone into a folder, where another one of the same name stands. `Base` is CliTest or derived from it.
template <typename Base>
class CliExports : public Base {
protected:
  void SetUp() override {
    this->writeRecord("a.SAC", {.arrival = 5});
    this->writeRecord("b.SAC", {.component = "BHN", .arrival = 5});
    this->writeFile("points.txt", "1 2\n3 4\n2 5\n");
    ASSERT_TRUE(QDir(this->at("out")).mkpath("."));
  }

  QString pathOf(const Export& made) const { return QStringLiteral("out/") + QLatin1String(made.name); }
  QStringList arguments(const Export& made) const {
    return made.arguments + QStringList{"-o", this->at(pathOf(made))};
  }

  void putOldFile(const Export& made) {
    QDir(this->at("out")).removeRecursively();
    this->writeFile(pathOf(made), "old");
  }

  /// What the command writes when all goes well.
  QByteArray whole(const Export& made) {
    const Outcome outcome = this->xov(arguments(made));
    EXPECT_EQ(outcome.status, 0) << made.name << ": " << qPrintable(outcome.err);
    return this->contents(pathOf(made));
  }

  /// The files in the folder of the output, hidden ones included.
  QString written() const {
    return QDir(this->at("out"))
        .entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot)
        .join(QLatin1Char(' '));
  }
};

} // namespace xov::cli
