#include "bench/Report.h"

#include <QFile>
#include <QJsonArray>
#include <QSysInfo>
#include <QThread>

namespace xov::bench {

namespace {

std::optional<double> scanTime(const std::vector<Measurement>& all, const std::string& work) {
  for (const Measurement& m : all) {
    if (m.work == work && m.engine == "scan") return m.milliseconds;
  }
  return std::nullopt;
}

QString ratio(const Measurement& m, const std::vector<Measurement>& all) {
  const auto scan = scanTime(all, m.work);
  if (!m.milliseconds || !scan || *scan <= 0) return QStringLiteral("-");
  return QString::asprintf("%.1f", *m.milliseconds / *scan);
}

QString time(const Measurement& m) {
  if (!m.milliseconds) return QString::asprintf("> %.0f s", m.limitSeconds);
  const QString drawing = QString::asprintf("%.1f ms", *m.milliseconds);
  return m.prepareMilliseconds > 0 ? drawing + QString::asprintf(" (+%.0f)", m.prepareMilliseconds) : drawing;
}

} // namespace

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
  return QStringLiteral("%1, %2 cores, %3, Qt %4")
      .arg(processor, QString::number(QThread::idealThreadCount()), QSysInfo::prettyProductName(),
           QString::fromLatin1(qVersion()));
}

QString table(const std::vector<Measurement>& measurements) {
  QString text = QStringLiteral("| work | engine | median | fastest-slowest | x scan | peak memory | data | file |\n"
                                "|---|---|---:|---:|---:|---:|---:|---:|\n");
  for (const Measurement& m : measurements) {
    text += QStringLiteral("| %1 | %2 | %3 | %4 | %5 | %6 | %7 | %8 |\n")
                .arg(QString::fromStdString(m.work), QString::fromStdString(m.engine), time(m),
                     m.milliseconds ? QString::asprintf("%.1f-%.1f", m.fastest, m.slowest) : QStringLiteral("-"),
                     ratio(m, measurements), QString::asprintf("%.0f MB", m.peakMegabytes),
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
  return {{QStringLiteral("machine"), machine()}, {QStringLiteral("measurements"), rows}};
}

} // namespace xov::bench
