#pragma once

#include "tests/apps/CliFixture.h"

#include <vector>

namespace xov::cli {

/// What goes wrong, in the words of FaultPreload.cpp.
struct Fault {
  const char* call;           ///< "read", "open", "fsync" ...
  const char* error = "EIO";  ///< "ENOSPC" ...
  const char* how = "fail";   ///< or "short", "shortfail"
  const char* times = "once"; ///< or "on"
  int at = 1;                 ///< the how manieth call; 0 only counts
  qint64 least = 0;           ///< of malloc: the least size that counts
};

/// The fault in one line, for messages of tests.
QString textOf(const Fault& fault);
/// Whether tests go through every call.
bool triesAllFaults();
/// The system's own words for the fault's error.
QString reasonOf(const Fault& fault);

/// Runs the command while the n-th call about a file fails. Each test takes a few of the n that there are, or, with
/// XOV_FAULTS=all in the environment, every one.
class FaultTest : public CliTest {
protected:
  /// Runs the command under a fault of the calls about files whose path holds `path`; all files when it is empty.
  Outcome xovUnder(const Fault& fault, const QString& path, const QStringList& arguments,
                   const QByteArray& input = {});
  /// The same of FaultSubjects, which does one thing with a file or folder as the desk and others do it: the calls
  /// that fail are about files whose path holds `failing`.
  Outcome subjectUnder(const Fault& fault, const QString& failing, const QString& what, const QString& path);
  Outcome subject(const QString& what, const QString& path);
  /// How many calls were counted in the last run, and how many of them failed or were short.
  quint64 callsCounted() const { return calls_; }
  quint64 faultsMet() const { return faults_; }
  /// The calls among `count` at which a fault is tried: the first, the last and one between them, or all.
  static std::vector<int> callsToFail(quint64 count);
  /// Whether `outcome` is a failure that is told as failures are: status 1, nothing on standard output, one line on
  /// standard error that names the file and the system's reason.
  static ::testing::AssertionResult namesFileAndCause(const Outcome& outcome, const QString& file,
                                                      const Fault& fault);

private:
  Outcome under(const Fault& fault, const QString& path, const QString& program, const QStringList& arguments,
                const QByteArray& input);

  quint64 calls_ = 0;
  quint64 faults_ = 0;
};

} // namespace xov::cli
