#pragma once

#include "XOV_Graphics/seismic/SacSeismogram.h"
#include "XOV_Graphics/seismic/io/mseed/MiniSeedWriter.h"

#include <gtest/gtest.h>

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <filesystem>
#include <fstream>

namespace xov::test {

/// An archive of days that lives as long as the test. Days have a sample each 864 s, 100 of them.
class SdsFiles {
public:
  static constexpr float kInterval = 864;

  SdsFiles() = default;
  /// Also files whose names Qt does not know how to call.
  ~SdsFiles() { std::filesystem::remove_all(folder_.path().toStdString()); }
  SdsFiles(const SdsFiles&) = delete;
  SdsFiles& operator=(const SdsFiles&) = delete;

  QString root() const { return folder_.path(); }

  /// Writes a file, whose name may hold any bytes, and the folders above it.
  void write(const std::string& name, const std::string& contents) const {
    const std::filesystem::path path = std::filesystem::path(folder_.path().toStdString()) / name;
    std::filesystem::create_directories(path.parent_path());
    std::ofstream file(path, std::ios::binary);
    file << contents;
    EXPECT_TRUE(file.good());
  }

  void addEmpty(const char* network, const char* station, const char* location, const char* channel,
                const QDate& day) const {
    write(nameOf(network, station, location, channel, day), {});
  }

  /// A file with samples that begin at midnight: first, first + 1, ...
  void addDay(const char* network, const char* station, const char* location, const char* channel, const QDate& day,
              int first, int count = 100) const {
    addEmpty(network, station, location, channel, day);
    SacHeader header;
    header.knetwk = network;
    header.kstnm = station;
    header.khole = location;
    header.kcmpnm = channel;
    header.b = 0;
    header.delta = kInterval;
    setReferenceTime(header, QDateTime(day, QTime(0, 0), Qt::UTC));
    std::vector<float> samples;
    for (int i = first; i < first + count; ++i)
      samples.push_back(float(i));
    const SeismogramArray records = {std::make_shared<SacSeismogram>(header, std::move(samples))};
    const QString path =
        QDir(root()).filePath(QString::fromStdString(nameOf(network, station, location, channel, day)));
    EXPECT_TRUE(bool(writeMiniSeed(records, path)));
  }

private:
  static std::string nameOf(const char* network, const char* station, const char* location, const char* channel,
                            const QDate& day) {
    return QStringLiteral("%1/%2/%3/%5.D/%2.%3.%4.%5.D.%1.%6")
        .arg(day.year(), 4, 10, QLatin1Char('0'))
        .arg(QLatin1String(network), QLatin1String(station), QLatin1String(location), QLatin1String(channel))
        .arg(day.dayOfYear(), 3, 10, QLatin1Char('0'))
        .toStdString();
  }

  QTemporaryDir folder_;
};

} // namespace xov::test
