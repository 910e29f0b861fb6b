#include "bench/Report.h"

#include <QFile>
#include <QJsonArray>
#include <QSysInfo>
#include <QThread>

#include <algorithm>

namespace xov::bench {

namespace {

const Measurement* scanOf(const Measurement& m, const std::vector<Measurement>& all) {
  const auto found = std::ranges::find_if(
      all, [&m](const Measurement& other) { return other.work == m.work && other.engine == "scan"; });
  return found == all.end() ? nullptr : &*found;
}

QString ratio(const Measurement& m, const std::vector<Measurement>& all) {
  const Measurement* const scan = scanOf(m, all);
  if (!m.processorMilliseconds || scan == nullptr || scan->processorMilliseconds.value_or(0) <= 0)
    return QStringLiteral("-");
  return QString::asprintf("%.1f", *m.processorMilliseconds / *scan->processorMilliseconds);
}

// A process of ours that only scans holds the samples and Qt.
QString memory(const Measurement& m, const std::vector<Measurement>& all) {
  if (m.peakMegabytes <= 0) return QStringLiteral("-");
  const QString peak = QString::asprintf("%.0f MB", m.peakMegabytes);
  const Measurement* const scan = scanOf(m, all);
  if (m.engine != "xov" || scan == nullptr || scan->peakMegabytes <= 0) return peak;
  return peak + QString::asprintf(" (scan + %.0f)", m.peakMegabytes - scan->peakMegabytes);
}

QString time(const Measurement& m) {
  if (!m.milliseconds) return QString::asprintf("> %.0f s", m.limitSeconds);
  const QString drawing = QString::asprintf("%.1f ms", *m.milliseconds);
  return m.prepareMilliseconds > 0 ? drawing + QString::asprintf(" (+%.0f)", m.prepareMilliseconds) : drawing;
}

} // namespace

QString commit() { return qEnvironmentVariable("XOV_BENCH_COMMIT"); }

QString machine() {
  QString processor = QSysInfo::currentCpuArchitecture();
  QFile file(QStringLiteral("/proc/cpuinfo"));
  if (file.open(QIODevice::ReadOnly)) {
    for (const QByteArray& line : file.readAll().split('\n')) {
      if (line.startsWith("model name")) {
        processor = QString::fromLatin1(line.mid(line.indexOf(':') + 1).trimmed());
        break;
      }
    }
  }
  const QString text = QStringLiteral("%1, %2 cores, %3, Qt %4")
                           .arg(processor, QString::number(QThread::idealThreadCount()),
                                QSysInfo::prettyProductName(), QString::fromLatin1(qVersion()));
  const QString measured = commit();
  return measured.isEmpty() ? text : text + QStringLiteral(", commit ") + measured;
}

QString table(const std::vector<Measurement>& measurements) {
  QString text =
      QStringLiteral("| work | engine | median | fastest-slowest | CPU | x scan | peak memory | data | file |\n"
                     "|---|---|---:|---:|---:|---:|---:|---:|---:|\n");
  for (const Measurement& m : measurements) {
    const QString processor =
        m.processorMilliseconds ? QString::asprintf("%.1f ms", *m.processorMilliseconds) : QStringLiteral("-");
    text += QStringLiteral("| %1 | %2 | %3 | %4 | %5 | %6 | %7 | %8 | %9 |\n")
                .arg(QString::fromStdString(m.work), QString::fromStdString(m.engine), time(m),
                     m.milliseconds ? QString::asprintf("%.1f-%.1f", m.fastest, m.slowest) : QStringLiteral("-"),
                     processor, ratio(m, measurements), memory(m, measurements),
                     QString::asprintf("%.0f MB", m.sampleMegabytes),
                     m.fileMegabytes > 0 ? QString::asprintf("%.2f MB", m.fileMegabytes) : QStringLiteral("-"));
  }
  return text;
}

QJsonObject json(const std::vector<Measurement>& measurements) {
  QJsonArray rows;
  for (const Measurement& m : measurements) {
    QJsonObject row;
    row[QStringLiteral("work")] = QString::fromStdString(m.work);
    row[QStringLiteral("engine")] = QString::fromStdString(m.engine);
    if (m.milliseconds) row[QStringLiteral("milliseconds")] = *m.milliseconds;
    if (m.processorMilliseconds) row[QStringLiteral("processorMilliseconds")] = *m.processorMilliseconds;
    if (m.prepareMilliseconds > 0) row[QStringLiteral("prepareMilliseconds")] = m.prepareMilliseconds;
    row[QStringLiteral("fastest")] = m.fastest;
    row[QStringLiteral("slowest")] = m.slowest;
    row[QStringLiteral("rounds")] = m.rounds;
    row[QStringLiteral("limitSeconds")] = m.limitSeconds;
    row[QStringLiteral("fileMegabytes")] = m.fileMegabytes;
    row[QStringLiteral("peakMegabytes")] = m.peakMegabytes;
    row[QStringLiteral("sampleMegabytes")] = m.sampleMegabytes;
    rows.append(row);
  }
  return {{QStringLiteral("machine"), machine()},
          {QStringLiteral("commit"), commit()},
          {QStringLiteral("measurements"), rows}};
}

} // namespace xov::bench
