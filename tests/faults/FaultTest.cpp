#include "tests/faults/FaultTest.h"

#include <QFile>

#include <array>
#include <cstring>
#include <numeric>

namespace xov::cli {

namespace {

constexpr const char* kReport = "faults.report";

// The texts are the C locale's, in which the command runs.
struct Reason {
  const char* error;
  const char* text;
};
constexpr Reason kReasons[] = {{"EIO", "Input/output error"},       {"ENOSPC", "No space left on device"},
                               {"EDQUOT", "Disk quota exceeded"},   {"EMFILE", "Too many open files"},
                               {"EACCES", "Permission denied"},     {"EINTR", "Interrupted system call"},
                               {"ENOMEM", "Cannot allocate memory"}};

} // namespace

QString textOf(const Fault& fault) {
  return QStringLiteral("%1 %2: %3, %4, %5")
      .arg(fault.call)
      .arg(fault.at)
      .arg(QLatin1String(fault.error), QLatin1String(fault.how), QLatin1String(fault.times));
}

QString reasonOf(const Fault& fault) {
  for (const Reason& reason : kReasons) {
    if (std::strcmp(reason.error, fault.error) == 0) return QString::fromLatin1(reason.text);
  }
  return QStringLiteral("an error that has no text here");
}

bool triesAllFaults() { return qEnvironmentVariable("XOV_FAULTS") == QLatin1String("all"); }

Outcome FaultTest::xovUnder(const Fault& fault, const QString& path, const QStringList& arguments,
                            const QByteArray& input) {
  return under(fault, path, QStringLiteral(XOV_COMMAND), arguments, input);
}

Outcome FaultTest::subjectUnder(const Fault& fault, const QString& failing, const QString& what,
                                const QString& path) {
  environment_.insert("XDG_RUNTIME_DIR", folder_.path()); // else Qt says which one it takes
  return under(fault, failing, QStringLiteral(XOV_FAULT_SUBJECTS), {what, path}, {});
}

Outcome FaultTest::subject(const QString& what, const QString& path) {
  environment_.insert("XDG_RUNTIME_DIR", folder_.path());
  return run(QStringLiteral(XOV_FAULT_SUBJECTS), {what, path});
}

Outcome FaultTest::under(const Fault& fault, const QString& path, const QString& program,
                         const QStringList& arguments, const QByteArray& input) {
  const QProcessEnvironment former = environment_;
  const auto set = [this](const char* name, const QString& value) {
    environment_.insert(QLatin1String(name), value);
  };
  // Outside the folder, in which tests look for litter.
  QTemporaryDir reports;
  const QString report = reports.filePath(QLatin1String(kReport));
  set("LD_PRELOAD", QStringLiteral(XOV_FAULT_PRELOAD));
  set("XOV_FAULT_CALL", QString::fromLatin1(fault.call));
  set("XOV_FAULT_ERROR", QString::fromLatin1(fault.error));
  set("XOV_FAULT_HOW", QString::fromLatin1(fault.how));
  set("XOV_FAULT_TIMES", QString::fromLatin1(fault.times));
  set("XOV_FAULT_AT", QString::number(fault.at));
  set("XOV_FAULT_LEAST", QString::number(fault.least));
  set("XOV_FAULT_PATH", path);
  set("XOV_FAULT_REPORT", report);
  Outcome outcome = run(program, arguments, input);
  environment_ = former;

  std::array<quint64, 2> counts = {};
  QFile file(report);
  EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << "the faults were not there: " << qPrintable(outcome.err);
  EXPECT_EQ(file.read(reinterpret_cast<char*>(counts.data()), sizeof(counts)), qint64(sizeof(counts)));
  calls_ = counts[0];
  faults_ = counts[1];
  return outcome;
}

std::vector<int> FaultTest::callsToFail(quint64 count) {
  constexpr quint64 kFew = 3;
  const int last = int(count);
  if (count > kFew && !triesAllFaults()) return {1, (1 + last) / 2, last};
  std::vector<int> all(count);
  std::iota(all.begin(), all.end(), 1);
  return all;
}

::testing::AssertionResult FaultTest::namesFileAndCause(const Outcome& outcome, const QString& file,
                                                        const Fault& fault) {
  const bool isOneLine = outcome.err.endsWith('\n') && outcome.err.count('\n') == 1;
  const bool isTold = outcome.err.contains(file) && outcome.err.contains(reasonOf(fault));
  if (outcome.status == 1 && outcome.out.isEmpty() && isOneLine && isTold) return ::testing::AssertionSuccess();
  return ::testing::AssertionFailure() << qPrintable(textOf(fault)) << ": status " << outcome.status
                                       << ", standard error: " << qPrintable(outcome.err)
                                       << (outcome.out.isEmpty() ? "" : "and something on standard output");
}

} // namespace xov::cli
