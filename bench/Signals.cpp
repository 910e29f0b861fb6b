#include "bench/Signals.h"

#include "XOV_Graphics/seismic/signal/Butterworth.h"
#include "XOV_Graphics/seismic/signal/Envelope.h"
#include "XOV_Graphics/seismic/signal/Resample.h"
#include "bench/Contest.h"
#include "bench/RivalProcess.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QTemporaryDir>

#include <cstdio>
#include <functional>
#include <random>

namespace xov::bench {

namespace {

constexpr std::size_t kSamples = 8640000;
constexpr double kInterval = 0.01;
constexpr std::size_t kFactor = 10;
constexpr double kLimitSeconds = 60;

std::vector<float> noise() {
  std::mt19937 random(5);
  std::vector<float> samples(kSamples);
  for (float& sample : samples)
    sample = float(random() % 20001) - 10000;
  return samples;
}

/// What is done with the samples, in whose words the rival is asked for the same.
struct Operation {
  const char* name;
  const char* word;
  std::function<void(std::vector<double>&)> run;
  std::vector<double> ours = {};
  std::vector<double> rivals = {};
};

std::vector<Operation> operations() {
  const std::vector<Biquad> bandPass = *designButterworth(ButterworthFilter::bandPass(1, 10), kInterval);
  return {
      {"band-pass of order 4, causal", "filter",
       [bandPass](auto& samples) { applyFilter(samples, bandPass, FilterPhase::Causal); }},
      {"band-pass of order 4, zero phase", "filtfilt",
       [bandPass](auto& samples) { applyFilter(samples, bandPass, FilterPhase::Zero); }},
      {"decimation by 10, zero phase", "decimate",
       [](auto& samples) { samples = decimate(samples, kFactor, FilterPhase::Zero); }},
      {"envelope", "envelope", [](auto& samples) { applyEnvelope(samples); }},
  };
}

/// The program of scipy, once it has read the samples; null where there is none.
std::unique_ptr<RivalProcess> scipy(const QString& scripts, std::vector<float> samples, const QTemporaryDir& folder) {
  const QString program = QDir(scripts).filePath(QStringLiteral("signal_scipy.py"));
  QFile file(folder.filePath(QStringLiteral("samples")));
  const auto bytes = qint64(samples.size() * sizeof(float));
  if (scripts.isEmpty() || !QFile::exists(program) || !file.open(QIODevice::WriteOnly)) return nullptr;
  if (file.write(reinterpret_cast<const char*>(samples.data()), bytes) != bytes || !file.flush()) return nullptr;
  Work work;
  work.traces.emplace_back().last = std::int64_t(samples.size());
  auto rival = std::make_unique<RivalProcess>(QStringLiteral("scipy"), program, work, file.fileName(), kLimitSeconds);
  if (rival->isRunning()) return rival;
  std::fprintf(stderr, "xov_bench: scipy is left out: %s\n", qPrintable(rival->complaint()));
  return nullptr;
}

QString rate(const std::vector<double>& milliseconds) {
  return milliseconds.empty() ? QStringLiteral("-")
                              : QString::number(double(kSamples) / 1e3 / median(milliseconds), 'f', 1);
}

} // namespace

QString signalTable(int rounds, const QString& scripts) {
  const QTemporaryDir folder;
  const std::vector<float> samples = noise();
  std::unique_ptr<RivalProcess> rival = scipy(scripts, samples, folder);
  std::vector<Operation> all = operations();
  for (int round = 0; round <= rounds; ++round) {
    for (Operation& operation : all) {
      std::vector<double> work(samples.begin(), samples.end());
      QElapsedTimer timer;
      timer.start();
      operation.run(work);
      // The first round touches the memory.
      if (round > 0) operation.ours.push_back(double(timer.nsecsElapsed()) / 1e6);
      const auto answer = rival ? rival->ask(QString::fromLatin1(operation.word)) : std::nullopt;
      if (round > 0 && answer) operation.rivals.push_back(*answer);
    }
  }
  QString table = QStringLiteral("| a day at 100 Hz | million samples a second | scipy | of its time |\n"
                                 "|---|---:|---:|---:|\n");
  for (const Operation& operation : all) {
    const QString ratio = operation.rivals.empty()
                              ? QStringLiteral("no scipy")
                              : QString::number(median(operation.ours) / median(operation.rivals), 'f', 2);
    table += QStringLiteral("| %1 | %2 | %3 | %4 |\n")
                 .arg(QLatin1String(operation.name), rate(operation.ours), rate(operation.rivals), ratio);
  }
  return table;
}

} // namespace xov::bench
