#include "bench/RivalProcess.h"

#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>

namespace xov::bench {

namespace {

constexpr const char* kPrograms[] = {"rival_qcustomplot", "rival_pyqtgraph.py", "rival_matplotlib.py", "rival_agg",
                                     "rival_cairo"};
constexpr const char* kPython = "/usr/bin/python3"; // the one that the system's packages are for

} // namespace

std::vector<RivalProgram> rivalPrograms(const QString& scripts) {
  std::vector<RivalProgram> found;
  for (const char* file : kPrograms) {
    const QString name = QString::fromLatin1(file);
    const bool isScript = name.endsWith(QLatin1String(".py"));
    const QString folder = isScript ? scripts : QCoreApplication::applicationDirPath();
    const QString path = QDir(folder).filePath(name);
    if (QFileInfo::exists(path)) found.push_back({QFileInfo(name).baseName().mid(6), path});
  }
  return found;
}

double peakMegabytesOf(qint64 process) {
  QFile status(QStringLiteral("/proc/%1/status").arg(process));
  if (!status.open(QIODevice::ReadOnly)) return 0;
  for (const QByteArray& line : status.readAll().split('\n')) {
    if (line.startsWith("VmHWM:")) return line.mid(6).trimmed().split(' ').first().toDouble() / 1024;
  }
  return 0;
}

RivalProcess::RivalProcess(const QString& name, const QString& program, const Work& work, const QString& samplesFile,
                           double limitSeconds)
    : name_(name),
      limitSeconds_(limitSeconds) {
  const Trace& first = work.traces.front();
  QStringList arguments = {samplesFile,
                           QString::number(work.traces.size()),
                           QString::number(first.last - first.first),
                           QString::number(work.size.width()),
                           QString::number(work.size.height()),
                           QString::number(work.ratio),
                           QString::number(first.yScale)};
  if (program.endsWith(QLatin1String(".py"))) {
    arguments.prepend(program);
    process_.start(QString::fromLatin1(kPython), arguments);
  } else {
    process_.start(program, arguments);
  }
  // Libraries greet and warn on the way.
  while (const auto said = answer()) {
    if (!said->startsWith(QLatin1String("ready "))) continue;
    prepared_ = said->mid(6).toDouble();
    return;
  }
  if (isRunning()) {
    stopAtLimit();
    complain(QStringLiteral("was not ready after %1 s").arg(limitSeconds_));
  } else {
    end();
    if (complaint_.isEmpty()) complain(QStringLiteral("ended before it was ready"));
  }
}

RivalProcess::~RivalProcess() { end(); }

bool RivalProcess::end() {
  constexpr int kMilliseconds = 2000;
  if (stopped_ || !complaint_.isEmpty()) return complaint_.isEmpty();
  process_.closeWriteChannel();
  if (!process_.waitForFinished(kMilliseconds) && isRunning()) stopAtLimit();
  if (stopped_) return true;
  if (process_.error() == QProcess::FailedToStart)
    complain(process_.errorString());
  else if (process_.exitStatus() != QProcess::NormalExit)
    complain(QStringLiteral("crashed"));
  else if (process_.exitCode() != 0)
    complain(QStringLiteral("ended with status %1").arg(process_.exitCode()));
  return complaint_.isEmpty();
}

void RivalProcess::stopAtLimit() {
  stopped_ = true;
  process_.kill();
  process_.waitForFinished();
}

void RivalProcess::complain(const QString& what) {
  const QString last =
      QString::fromLocal8Bit(process_.readAllStandardError()).trimmed().section(QLatin1Char('\n'), -1);
  complaint_ = last.isEmpty() ? what : what + QStringLiteral("; ") + last;
}

std::optional<QString> RivalProcess::answer() {
  QElapsedTimer timer;
  timer.start();
  const auto limit = qint64(limitSeconds_ * 1000);
  while (!process_.canReadLine()) {
    const qint64 left = limit - timer.elapsed();
    if (left <= 0) return std::nullopt;
    if (!process_.waitForReadyRead(int(left)) && !process_.canReadLine()) return std::nullopt;
  }
  return QString::fromLocal8Bit(process_.readLine()).trimmed();
}

std::optional<double> RivalProcess::ask(const QString& command) {
  if (!isRunning()) return std::nullopt;
  process_.write(command.toLocal8Bit() + '\n');
  while (const auto said = answer()) {
    bool isNumber = false;
    const double milliseconds = said->toDouble(&isNumber);
    if (isNumber) return milliseconds;
    if (*said == QLatin1String("no") || *said == QLatin1String("saved")) return std::nullopt;
  }
  if (isRunning())
    stopAtLimit();
  else if (end())
    complain(QStringLiteral("ended without an answer"));
  return std::nullopt;
}

double RivalProcess::processorMilliseconds() const {
  double nanoseconds = 0;
  const QDir tasks(QStringLiteral("/proc/%1/task").arg(process_.processId()));
  for (const QString& task : tasks.entryList(QDir::Dirs | QDir::NoDotAndDotDot)) {
    QFile file(tasks.filePath(task + QStringLiteral("/schedstat")));
    if (file.open(QIODevice::ReadOnly)) nanoseconds += file.readAll().split(' ').first().toDouble();
  }
  return nanoseconds / 1e6;
}

double RivalProcess::peakMegabytes() const { return peakMegabytesOf(process_.processId()); }

} // namespace xov::bench
