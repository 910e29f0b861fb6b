#pragma once

#include "bench/Works.h"

#include <QProcess>
#include <QString>

#include <memory>
#include <optional>
#include <vector>

namespace xov::bench {

/// Another library, in a program of its own that draws when it is asked to: see rivals/Rival.h for what it is told
/// and what it answers.
class RivalProcess {
public:
  /// Starts the program and waits until it has prepared the samples of a work of traces, which `samplesFile` holds.
  /// Not running afterwards when it could not, or took longer than the limit.
  RivalProcess(const QString& name, const QString& program, const Work& work, const QString& samplesFile,
               double limitSeconds);
  ~RivalProcess();
  RivalProcess(const RivalProcess&) = delete;
  RivalProcess& operator=(const RivalProcess&) = delete;

  const QString& name() const { return name_; }
  bool isRunning() const { return process_.state() == QProcess::Running; }
  /// Why it is not running, in one line: how it ended, and the last line of its standard error. Empty while all is
  /// well; warnings alone are no complaint.
  const QString& complaint() const { return complaint_; }
  double prepareMilliseconds() const { return prepared_; }

  /// Milliseconds of a command, such as "draw" or "pdf page.pdf". Nothing when the library has no such thing; a
  /// program that takes longer than the limit is stopped.
  std::optional<double> ask(const QString& command);
  /// Of the processor, that all of its threads have taken so far.
  double processorMilliseconds() const;
  /// Lets it end. False, with a complaint, when it does so with another status than 0, or did before it was asked to:
  /// then what it answered counts for nothing. A program that was stopped at the limit has done what it could.
  bool end();
  /// Peak memory so far.
  double peakMegabytes() const;

private:
  std::optional<QString> answer();
  void stopAtLimit();
  void complain(const QString& what);

  QString name_;
  QProcess process_;
  double limitSeconds_;
  double prepared_ = 0;
  bool stopped_ = false;
  QString complaint_;
};

/// Name and program of every rival that stands beside this program or, in Python, in the folder `scripts`.
struct RivalProgram {
  QString name;
  QString program;
};
std::vector<RivalProgram> rivalPrograms(const QString& scripts);

/// Peak memory of a running process; 0 when it has ended. Unlike getrusage() it leaves out what a parent had when it
/// started the process.
double peakMegabytesOf(qint64 process);

} // namespace xov::bench
