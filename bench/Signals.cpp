#include "bench/Signals.h"

#include "XOV_Graphics/seismic/signal/Butterworth.h"
#include "XOV_Graphics/seismic/signal/Envelope.h"
#include "XOV_Graphics/seismic/signal/Resample.h"
#include "XOV_Graphics/seismic/signal/Spectrogram.h"
#include "bench/Contest.h"
#include "bench/RivalProcess.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QTemporaryDir>

#include <algorithm>
#include <complex>
#include <cstdio>
#include <functional>
#include <kissfft.hh>
#include <random>

namespace xov::bench {

namespace {

constexpr std::size_t kSamples = 8640000;
constexpr double kInterval = 0.01;
constexpr std::size_t kFactor = 10;
constexpr double kLimitSeconds = 60;
constexpr std::size_t kWindow = 1024;    // of the spectrogram, which overlaps by half
constexpr std::size_t kSegments = 17600; // of its 800 columns, 22 in each: 10800 samples at hops of no more than 512
constexpr char kSpectrogram[] = "spectrogram";
constexpr char kTransforms[] = "transforms";

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

void drawSpectrogram(const std::vector<float>& samples) {
  const SpectrogramPiece piece{samples, 0, kInterval};
  if (spectrogram({&piece, 1}, {.windowSeconds = double(kWindow) * kInterval}).isEmpty())
    std::fprintf(stderr, "xov_bench: the spectrogram is empty\n");
}

// Of as many segments as the spectrogram has, and nothing else: what it is held against.
void transformSegments(const std::vector<double>& samples) {
  const kissfft<double> transform(kWindow / 2, false);
  std::vector<std::complex<double>> spectrum(kWindow / 2 + 1);
  for (std::size_t i = 0; i < kSegments; ++i)
    transform.transform_real(samples.data() + i * (samples.size() - kWindow) / kSegments, spectrum.data());
}

std::vector<Operation> operations(const std::vector<float>& day) {
  const std::vector<Biquad> bandPass = *designButterworth(ButterworthFilter::bandPass(1, 10), kInterval);
  return {
      {"band-pass of order 4, causal", "filter",
       [bandPass](auto& samples) { applyFilter(samples, bandPass, FilterPhase::Causal); }},
      {"band-pass of order 4, zero phase", "filtfilt",
       [bandPass](auto& samples) { applyFilter(samples, bandPass, FilterPhase::Zero); }},
      {"decimation by 10, zero phase", "decimate",
       [](auto& samples) { samples = decimate(samples, kFactor, FilterPhase::Zero); }},
      {"envelope", "envelope", [](auto& samples) { applyEnvelope(samples); }},
      {"spectrogram of 800 columns", kSpectrogram, [&day](auto&) { drawSpectrogram(day); }},
      {"its Fourier transforms alone", kTransforms, [](auto& samples) { transformSegments(samples); }},
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
  std::vector<Operation> all = operations(samples);
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
  const auto timeOf = [&all](const char* word) {
    return median(std::ranges::find(all, QLatin1String(word), [](const Operation& operation) {
                    return QLatin1String(operation.word);
                  })->ours);
  };
  table += QStringLiteral("\nThe spectrogram takes %1 times its transforms (limit 1.5).\n")
               .arg(timeOf(kSpectrogram) / timeOf(kTransforms), 0, 'f', 2);
  return table;
}

} // namespace xov::bench
