#pragma once

#include "XOV_Graphics/seismic/SacSeismogram.h"
#include "XOV_Graphics/seismic/Undefined.h"

#include <gtest/gtest.h>

#include <QProcessEnvironment>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>

#include <optional>

namespace xov::cli {

/// What a program left behind.
struct Outcome {
  int status = -1; ///< exit status; -1 when it crashed or could not be started
  QString out;
  QString err;
};

/// The header of a record that a test writes: a sine of 20 s at 10 Hz that starts at 2011-03-11T05:47:30.033.
struct RecordSpec {
  const char* network = "II";
  const char* station = "TLY";
  const char* component = "BHZ";
  float distanceDeg = 30;
  float azimuthDeg = 45;
  float arrival = kUndefinedValue; ///< a, labelled P
  float second = kUndefinedValue;  ///< t1, labelled S
  float origin = kUndefinedValue;
};

/// Runs the built command in a folder of the test's own, without a display.
class CliTest : public ::testing::Test {
protected:
  CliTest();

  Outcome xov(const QStringList& arguments, const QByteArray& input = {});
  /// Runs a line of sh, in which $XOV is the command.
  Outcome shell(const QString& line);
  /// Runs the command with -o plot.pdf and gives the text of the plot from the top down; empty where pdftotext is not
  /// installed. Anything on standard error is a failure.
  std::optional<QString> textOfPlot(const QStringList& arguments);
  /// The standard output of another program, if it is installed.
  std::optional<QString> tool(const QString& program, const QStringList& arguments);

  QString at(const QString& name) const { return folder_.filePath(name); }
  void writeRecord(const QString& name, const RecordSpec& spec = {});
  void writeRecord(const QString& name, const SacSeismogram& record);
  void writeFile(const QString& name, const QByteArray& contents);
  QByteArray contents(const QString& name) const;
  /// All files in the folder, hidden ones included, sorted.
  QStringList files() const;

  /// Runs any program in the folder.
  Outcome run(const QString& program, const QStringList& arguments, const QByteArray& input = {});

  QTemporaryDir folder_;
  QProcessEnvironment environment_;
};

/// The text of a plot as textOfPlot() gives it; the test is skipped where it cannot be read.
#define XOV_REQUIRE_TEXT(text, ...)                                                                                  \
  const auto text##OrNothing = textOfPlot(QStringList(__VA_ARGS__));                                                 \
  if (!text##OrNothing) GTEST_SKIP() << "pdftotext is not installed";                                                \
  const QString text = *text##OrNothing

/// The output of a tool that reads what the command wrote; the test is skipped where the tool is not installed.
#define XOV_REQUIRE_TOOL(text, program, ...)                                                                         \
  const auto text##OrNothing = tool(program, QStringList(__VA_ARGS__));                                              \
  if (!text##OrNothing) GTEST_SKIP() << program << " is not installed";                                              \
  const QString text = *text##OrNothing

} // namespace xov::cli
