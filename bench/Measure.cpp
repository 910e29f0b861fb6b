#include "bench/Measure.h"

#include "bench/Contest.h"
#include "bench/Engines.h"
#include "bench/ProcessCost.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QTemporaryDir>

#include <algorithm>
#include <cstdio>
#include <map>
#include <memory>

namespace xov::bench {

namespace {

bool draws(const Engine& engine, const Work& work) { return engine.onPages || !work.isPage; }

// Milliseconds of drawings, by the clock and of the processor.
struct Times {
  std::vector<double> wall;
  std::vector<double> processor;
};

void draw(const Engine& engine, const Work& work, Times& times) {
  QElapsedTimer timer;
  timer.start();
  const double start = ownProcessorMs();
  engine.draw(work);
  times.wall.push_back(double(timer.nsecsElapsed()) / 1e6);
  times.processor.push_back(ownProcessorMs() - start);
}

// The same in a process of its own, stopped after the limit.
Measurement measureAlone(const Engine& engine, const Work& work, double limitSeconds, const QDir& pictures) {
  Measurement m;
  m.work = work.name;
  m.engine = engine.name;
  m.limitSeconds = limitSeconds;
  m.sampleMegabytes =
      double((work.samples.size() + work.xs.size() + work.ys.size()) * sizeof(float)) / kBytesPerMegabyte;
  QProcess process;
  QStringList arguments = {QStringLiteral("--one"), QString::fromStdString(engine.name + ":" + work.name)};
  arguments << QStringLiteral("--pictures") << pictures.path();
  process.start(QCoreApplication::applicationFilePath(), arguments);
  if (!process.waitForFinished(int(limitSeconds * 1000))) {
    m.peakMegabytes = peakMegabytesOf(process.processId());
    process.kill();
    process.waitForFinished();
    return m;
  }
  const QList<QByteArray> numbers = process.readAllStandardOutput().trimmed().split(' ');
  if (process.exitCode() != 0 || numbers.size() != 4) return m;
  m.milliseconds = m.fastest = m.slowest = numbers[0].toDouble();
  m.rounds = 1;
  m.peakMegabytes = numbers[1].toDouble();
  m.fileMegabytes = numbers[2].toDouble() / kBytesPerMegabyte;
  m.processorMilliseconds = numbers[3].toDouble();
  return m;
}

void setTimes(Measurement& m, const Times& times) {
  if (times.wall.empty()) return;
  const auto [fastest, slowest] = std::ranges::minmax(times.wall);
  m.milliseconds = median(times.wall);
  m.processorMilliseconds = median(times.processor);
  m.fastest = fastest;
  m.slowest = slowest;
  m.rounds = int(times.wall.size());
}

// Other libraries at a work, in turn with our own engines.
class Rivals {
public:
  Rivals(const std::vector<RivalProgram>& programs, const Work& work, double limitSeconds, const QDir& pictures)
      : work_(work),
        limitSeconds_(limitSeconds),
        pictures_(pictures) {
    if (work.traces.empty() || programs.empty()) return;
    const QString samples = folder_.filePath(QStringLiteral("samples"));
    QFile file(samples);
    const auto bytes = qint64(work.samples.size() * sizeof(float));
    if (!file.open(QIODevice::WriteOnly) ||
        file.write(reinterpret_cast<const char*>(work.samples.data()), bytes) != bytes) {
      std::fprintf(stderr, "%s: %s\n", qPrintable(samples), qPrintable(file.errorString()));
      return;
    }
    file.close();
    for (const RivalProgram& program : programs) {
      auto process = std::make_unique<RivalProcess>(program.name, program.program, work, samples, limitSeconds);
      if (process->isRunning())
        processes_.push_back(std::move(process));
      else
        leaveOut(*process);
    }
  }

  void draw() {
    for (const auto& process : processes_) {
      for (const QString& command : commands(*process)) {
        Times& times = times_[keyOf(*process, command)];
        // What takes seconds is not drawn again and again.
        if (!times.wall.empty() && times.wall.front() > kSlowMilliseconds) continue;
        const double before = process->processorMilliseconds();
        const auto time = process->ask(command);
        if (!time) continue;
        times.wall.push_back(*time);
        times.processor.push_back(process->processorMilliseconds() - before);
      }
    }
  }

  // Writes a picture each, too.
  void finish(std::vector<Measurement>& measurements) {
    for (const auto& process : processes_) {
      std::vector<Measurement> own;
      for (const QString& command : commands(*process)) {
        const Times& times = times_[keyOf(*process, command)];
        const bool optional = command != QLatin1String("draw");
        if (times.wall.empty() && optional) continue;
        Measurement m = measurement(*process, command == QLatin1String("redraw") ? "-redraw" : "");
        if (work_.isPage) m.fileMegabytes = double(QFileInfo(pathOf(*process, ".pdf")).size()) / kBytesPerMegabyte;
        setTimes(m, times);
        own.push_back(m);
      }
      const bool isPpm = process->name() == QLatin1String("agg");
      if (!work_.isPage) process->ask(QStringLiteral("save ") + pathOf(*process, isPpm ? ".ppm" : ".png"));
      if (process->end())
        measurements.insert(measurements.end(), own.begin(), own.end());
      else
        leaveOut(*process);
    }
  }

private:
  static constexpr double kSlowMilliseconds = 2000;

  static void leaveOut(const RivalProcess& process) {
    std::fprintf(stderr, "%s is left out: it %s\n", qPrintable(process.name()), qPrintable(process.complaint()));
  }

  QStringList commands(const RivalProcess& process) const {
    if (work_.isPage) return {QStringLiteral("pdf ") + pathOf(process, ".pdf")};
    return {QStringLiteral("draw"), QStringLiteral("redraw")};
  }
  QString pathOf(const RivalProcess& process, const char* suffix) const {
    return pictures_.filePath(QString::fromStdString(work_.name) + QLatin1Char('-') + process.name() +
                              QLatin1String(suffix));
  }
  static std::string keyOf(const RivalProcess& process, const QString& command) {
    return (process.name() + QLatin1Char(' ') + command).toStdString();
  }

  Measurement measurement(const RivalProcess& process, const char* suffix) const {
    Measurement m;
    m.work = work_.name;
    m.engine = process.name().toStdString() + suffix;
    m.limitSeconds = limitSeconds_;
    m.prepareMilliseconds = process.prepareMilliseconds();
    m.sampleMegabytes = double(work_.samples.size() * sizeof(float)) / kBytesPerMegabyte;
    m.peakMegabytes = process.peakMegabytes();
    return m;
  }

  const Work& work_;
  double limitSeconds_;
  QDir pictures_;
  QTemporaryDir folder_;
  std::vector<std::unique_ptr<RivalProcess>> processes_;
  std::map<std::string, Times> times_;
};

} // namespace

int drawOnce(const std::string& engineName, const std::string& workName, const QString& path) {
  const Engine* engine = engineNamed(engineName);
  const Work work = makeWork(workName);
  if (engine == nullptr || work.name.empty()) return 2;
  QElapsedTimer timer;
  timer.start();
  const double start = ownProcessorMs();
  const Drawn drawn = engine->draw(work);
  const double milliseconds = double(timer.nsecsElapsed()) / 1e6;
  const double processor = ownProcessorMs() - start;
  std::printf("%.3f %.1f %lld %.3f\n", milliseconds, peakMegabytesOf(QCoreApplication::applicationPid()),
              static_cast<long long>(drawn.file.size()), processor);
  if (path.isEmpty()) return 0;
  if (!drawn.image.isNull()) drawn.image.save(path + QStringLiteral(".png"));
  QFile page(path + QStringLiteral(".pdf"));
  if (!drawn.file.isEmpty() && page.open(QIODevice::WriteOnly)) page.write(drawn.file);
  return 0;
}

std::vector<Measurement> measure(const Work& work, const std::vector<RivalProgram>& programs, int rounds,
                                 double limitSeconds, const QDir& pictures) {
  std::map<std::string, Times> times;
  std::vector<Measurement> measurements;
  {
    Rivals rivals(programs, work, limitSeconds, pictures);
    for (int round = 0; round < rounds; ++round) {
      for (const Engine& engine : engines()) {
        if (!engine.slow && draws(engine, work)) draw(engine, work, times[engine.name]);
      }
      rivals.draw();
    }
    rivals.finish(measurements);
  }
  std::vector<Measurement> own;
  for (const Engine& engine : engines()) {
    if (!draws(engine, work)) continue;
    Measurement m = measureAlone(engine, work, limitSeconds, pictures);
    if (!engine.slow) setTimes(m, times[engine.name]);
    own.push_back(m);
  }
  measurements.insert(measurements.begin(), own.begin(), own.end());
  return measurements;
}

} // namespace xov::bench
