#include "bench/Steadiness.h"

#include "bench/Contest.h"
#include "bench/Report.h"

#include <QDir>
#include <QFile>

#include <algorithm>
#include <unistd.h>

namespace xov::bench {

namespace {

double residentMegabytes() {
  QFile file(QStringLiteral("/proc/self/statm"));
  if (!file.open(QIODevice::ReadOnly)) return 0;
  return file.readAll().split(' ').value(1).toDouble() * double(sysconf(_SC_PAGESIZE)) / kBytesPerMegabyte;
}

qsizetype openHandles() {
  return QDir(QStringLiteral("/proc/self/fd"))
      .entryList(QDir::NoDotAndDotDot | QDir::AllEntries | QDir::System)
      .size();
}

double slope(std::span<const Moment> moments) {
  double done = 0;
  double megabytes = 0;
  for (const Moment& m : moments) {
    done += m.done / double(moments.size());
    megabytes += m.megabytes / double(moments.size());
  }
  double above = 0;
  double below = 0;
  for (const Moment& m : moments) {
    above += (m.done - done) * (m.megabytes - megabytes);
    below += (m.done - done) * (m.done - done);
  }
  return below > 0 ? above / below : 0;
}

double medianWork(std::span<const Moment> moments) {
  std::vector<double> times;
  for (const Moment& m : moments)
    times.push_back(m.workMilliseconds);
  return median(times);
}

} // namespace

Moment momentNow(double done, double workMilliseconds) {
  return {done, residentMegabytes(), openHandles(), workMilliseconds};
}

Steadiness steadiness(std::span<const Moment> moments, double warm, double per) {
  const auto first = std::ranges::find_if(moments, [warm](const Moment& m) { return m.done >= warm; });
  const std::span<const Moment> measured(first, moments.end());
  if (measured.empty()) return {};
  const std::size_t quarter = std::max<std::size_t>(measured.size() / 4, 1);
  return {.moments = measured.size(),
          .megabytesWhenWarm = measured.front().megabytes,
          .megabytesAtEnd = measured.back().megabytes,
          .growth = slope(measured) * per,
          .handlesWhenWarm = measured.front().handles,
          .handlesAtEnd = measured.back().handles,
          .workOfFirstQuarter = medianWork(measured.first(quarter)),
          .workOfLastQuarter = medianWork(measured.last(quarter))};
}

QString steadinessHeading(const char* per, const char* work) {
  return QString::asprintf("| MB when warm | MB at the end | MB a %s | handles when warm | at the end | %ss | "
                           "CPU ms of the first quarter | of the last |",
                           per, work);
}

QString steadinessRow(const Steadiness& s) {
  return QString::asprintf("| %.1f | %.1f | %+.2f | %lld | %lld | %zu | %.1f | %.1f |", s.megabytesWhenWarm,
                           s.megabytesAtEnd, s.growth, static_cast<long long>(s.handlesWhenWarm),
                           static_cast<long long>(s.handlesAtEnd), s.moments, s.workOfFirstQuarter,
                           s.workOfLastQuarter);
}

} // namespace xov::bench
