// xov_bench: times the drawing of long seismograms by this library and by plain QPainter against a scan of the same
// samples, all in one run and in turn, and reads the peak memory of a process that does nothing else.
#include "bench/Engines.h"
#include "bench/Report.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QJsonDocument>
#include <QProcess>

#include <algorithm>
#include <cstdio>
#include <map>
#include <sys/resource.h>

namespace {

using namespace xov::bench;

double peakMegabytes() {
  rusage usage{};
  getrusage(RUSAGE_SELF, &usage);
  return double(usage.ru_maxrss) / 1024;
}

double drawMilliseconds(const Engine& engine, const Work& work) {
  QElapsedTimer timer;
  timer.start();
  engine.draw(work);
  return double(timer.nsecsElapsed()) / 1e6;
}

// Draws once and says what it took: the time, the peak memory of this process and the size of the file.
int drawOnce(const std::string& engineName, const std::string& workName, const QString& picture) {
  const Engine* engine = engineNamed(engineName);
  const Work work = makeWork(workName);
  if (engine == nullptr || work.name.empty()) return 2;
  QElapsedTimer timer;
  timer.start();
  const Drawn drawn = engine->draw(work);
  const double milliseconds = double(timer.nsecsElapsed()) / 1e6;
  std::printf("%.3f %.1f %lld\n", milliseconds, peakMegabytes(), static_cast<long long>(drawn.fileBytes));
  if (!picture.isEmpty() && !drawn.image.isNull()) drawn.image.save(picture);
  return 0;
}

// The same in a process of its own, stopped after the limit.
Measurement measureAlone(const Engine& engine, const Work& work, double limitSeconds, const QDir& pictures) {
  Measurement m;
  m.work = work.name;
  m.engine = engine.name;
  m.limitSeconds = limitSeconds;
  m.sampleMegabytes = double((work.samples.size() + work.xs.size() + work.ys.size()) * sizeof(float)) / 1048576;
  QProcess process;
  QStringList arguments = {QStringLiteral("--one"), QString::fromStdString(engine.name + ":" + work.name)};
  arguments << QStringLiteral("--pictures") << pictures.path();
  process.start(QCoreApplication::applicationFilePath(), arguments);
  if (!process.waitForFinished(int(limitSeconds * 1000))) {
    QFile status(QStringLiteral("/proc/%1/status").arg(process.processId()));
    if (status.open(QIODevice::ReadOnly)) {
      for (const QByteArray& line : status.readAll().split('\n')) {
        if (line.startsWith("VmHWM:")) m.peakMegabytes = line.mid(6).trimmed().split(' ').first().toDouble() / 1024;
      }
    }
    process.kill();
    process.waitForFinished();
    return m;
  }
  const QList<QByteArray> numbers = process.readAllStandardOutput().trimmed().split(' ');
  if (process.exitCode() != 0 || numbers.size() != 3) return m;
  m.milliseconds = m.fastest = m.slowest = numbers[0].toDouble();
  m.rounds = 1;
  m.peakMegabytes = numbers[1].toDouble();
  m.fileMegabytes = numbers[2].toDouble() / 1048576;
  return m;
}

// Times the quick engines in turn, so that a change of the machine's mood meets all of them.
std::vector<Measurement> measure(const Work& work, int rounds, double limitSeconds, const QDir& pictures) {
  std::map<std::string, std::vector<double>> times;
  for (int round = 0; round < rounds; ++round) {
    for (const Engine& engine : engines()) {
      if (!engine.slow) times[engine.name].push_back(drawMilliseconds(engine, work));
    }
  }
  std::vector<Measurement> measurements;
  for (const Engine& engine : engines()) {
    Measurement m = measureAlone(engine, work, limitSeconds, pictures);
    if (!engine.slow) {
      std::vector<double>& all = times[engine.name];
      std::sort(all.begin(), all.end());
      m.milliseconds = all[all.size() / 2];
      m.fastest = all.front();
      m.slowest = all.back();
      m.rounds = rounds;
    }
    measurements.push_back(m);
  }
  return measurements;
}

} // namespace

int main(int argc, char** argv) {
  if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  QApplication app(argc, argv);
  QCommandLineParser parser;
  parser.addHelpOption();
  parser.addOption(
      {QStringLiteral("works"), QStringLiteral("Comma-separated names, such as W1,W2@2."), QStringLiteral("names")});
  parser.addOption({QStringLiteral("rounds"), QStringLiteral("Rounds of the quick engines."), QStringLiteral("n"),
                    QStringLiteral("9")});
  parser.addOption({QStringLiteral("limit"), QStringLiteral("Seconds after which a slow engine is stopped."),
                    QStringLiteral("seconds"), QStringLiteral("30")});
  parser.addOption({QStringLiteral("pictures"), QStringLiteral("Folder for what the engines drew."),
                    QStringLiteral("folder"), QStringLiteral(".")});
  parser.addOption({QStringLiteral("json"), QStringLiteral("File for the figures."), QStringLiteral("file")});
  parser.addOption({QStringLiteral("one"),
                    QStringLiteral("Draw ENGINE:WORK once and print milliseconds and megabytes."),
                    QStringLiteral("what")});
  parser.process(app);

  const QDir pictures(parser.value(QStringLiteral("pictures")));
  if (parser.isSet(QStringLiteral("one"))) {
    const QStringList what = parser.value(QStringLiteral("one")).split(QLatin1Char(':'));
    if (what.size() != 2) return 2;
    return drawOnce(what[0].toStdString(), what[1].toStdString(),
                    pictures.filePath(what[1] + QLatin1Char('-') + what[0] + QStringLiteral(".png")));
  }

  std::vector<std::string> names = workNames();
  if (parser.isSet(QStringLiteral("works"))) {
    names.clear();
    for (const QString& name : parser.value(QStringLiteral("works")).split(QLatin1Char(','))) {
      names.push_back(name.toStdString());
    }
  }
  std::vector<Measurement> all;
  for (const std::string& name : names) {
    const Work work = makeWork(name);
    if (work.name.empty()) {
      std::fprintf(stderr, "xov_bench: there is no work named %s\n", name.c_str());
      return 2;
    }
    const auto measured = measure(work, std::max(1, parser.value(QStringLiteral("rounds")).toInt()),
                                  std::max(1.0, parser.value(QStringLiteral("limit")).toDouble()), pictures);
    all.insert(all.end(), measured.begin(), measured.end());
    std::fprintf(stderr, "%s", qPrintable(table(measured)));
  }
  std::printf("%s\n\n%s", qPrintable(machine()), qPrintable(table(all)));
  if (parser.isSet(QStringLiteral("json"))) {
    QFile file(parser.value(QStringLiteral("json")));
    if (!file.open(QIODevice::WriteOnly) || file.write(QJsonDocument(json(all)).toJson()) < 0) {
      std::fprintf(stderr, "xov_bench: %s: %s\n", qPrintable(file.fileName()), qPrintable(file.errorString()));
      return 1;
    }
  }
  return 0;
}
