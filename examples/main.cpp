#include "examples/synthetic/ArrayWave.h"
#include "examples/synthetic/EventSection.h"
#include "examples/synthetic/RegionalMotion.h"
#include "examples/synthetic/SyntheticDay.h"
#include "examples/synthetic/WorldCatalogue.h"
#include "examples/synthetic/XyTables.h"

#include <QDir>

#include <XOV_Graphics/base/WholeFile.h>
#include <XOV_Graphics/seismic/io/sac/SacWriter.h>
#include <cstdio>

// Writes the example data: xov_examples OUTDIR. The same files, byte for byte, at every run.

namespace {

using xov::Error;
using xov::SacSeismogram;
using xov::Status;
namespace synthetic = xov::synthetic;

Status makeFolder(const QDir& folder) {
  if (folder.mkpath(QStringLiteral("."))) return {};
  return Error{folder.path() + QStringLiteral(": cannot make this folder")};
}

Status writeText(const QString& path, const QByteArray& text) {
  QString error;
  if (xov::writeFileAtomically(path, text, &error)) return {};
  return Error{error};
}

Status writeSection(const QDir& folder) {
  if (Status made = makeFolder(folder); !made) return made;
  const synthetic::SyntheticEvent event = synthetic::sectionEvent();
  for (const synthetic::Station& station : synthetic::sectionStations()) {
    for (const std::shared_ptr<SacSeismogram>& trace : synthetic::stationTraces(event, station)) {
      const QString path = folder.filePath(trace->labelString() + QStringLiteral(".SAC"));
      if (Status written = writeSac(*trace, path); !written) return written;
    }
  }
  return {};
}

Status writePanels(const QDir& folder) {
  if (Status made = makeFolder(folder); !made) return made;
  const synthetic::SyntheticEvent event = synthetic::sectionEvent();
  for (const synthetic::Station& station : synthetic::sectionStations()) {
    const auto compared = synthetic::modelComparison(event, station);
    if (!compared) continue;
    const QString name = folder.filePath(compared->data->labelString());
    if (Status written = writeSac(*compared->data, name + QStringLiteral(".data.SAC")); !written) return written;
    if (Status written = writeSac(*compared->model, name + QStringLiteral(".model.SAC")); !written) return written;
  }
  return {};
}

Status writeDay(const QDir& folder) {
  if (Status made = makeFolder(folder); !made) return made;
  int number = 0;
  for (const std::shared_ptr<SacSeismogram>& trace : synthetic::dayTraces()) {
    const QString path = folder.filePath(QStringLiteral("%1.%2.SAC").arg(trace->labelString()).arg(++number));
    if (Status written = writeSac(*trace, path); !written) return written;
  }
  return writeText(folder.filePath(QStringLiteral("catalogue.csv")), synthetic::dayCatalogue());
}

Status writeArray(const QDir& folder) {
  if (Status made = makeFolder(folder); !made) return made;
  synthetic::PlaneWave wave;
  wave.noise = 0.4;
  for (const std::shared_ptr<SacSeismogram>& trace : synthetic::arrayTraces(wave)) {
    const QString path = folder.filePath(trace->labelString() + QStringLiteral(".SAC"));
    if (Status written = writeSac(*trace, path); !written) return written;
  }
  return {};
}

Status writeGrids(const QDir& folder) {
  const QString beams = folder.filePath(QStringLiteral("fk_plane_wave.txt"));
  if (Status written = writeText(beams, synthetic::beamPowerTable({})); !written) return written;
  const QString residuals = folder.filePath(QStringLiteral("grid_residuals.txt"));
  if (Status written = writeText(residuals, synthetic::residualTable()); !written) return written;
  return writeText(folder.filePath(QStringLiteral("grid_relief.i2")), synthetic::reliefGrid());
}

Status writeTables(const QDir& folder) {
  const QString times = folder.filePath(QStringLiteral("xy_travel_times.txt"));
  if (Status written = writeText(times, synthetic::travelTimeTable()); !written) return written;
  const QString velocities = folder.filePath(QStringLiteral("xy_group_velocity.txt"));
  if (Status written = writeText(velocities, synthetic::groupVelocityTable()); !written) return written;
  return writeText(folder.filePath(QStringLiteral("xy_source_durations.csv")), synthetic::sourceDurationTable());
}

Status writeMapData(const QDir& folder) {
  if (Status made = makeFolder(folder); !made) return made;
  const struct {
    const char* name;
    QByteArray (*text)();
  } files[] = {{"world_catalogue.csv", synthetic::worldCatalogue},
               {"world_mechanisms.xml", synthetic::worldMechanisms},
               {"velocities.txt", synthetic::regionalVelocityTable},
               {"fault.nxy", synthetic::regionalFaultLine},
               {"network.nxy", synthetic::regionalNetworkLine}};
  for (const auto& file : files) {
    const QString path = folder.filePath(QString::fromLatin1(file.name));
    if (Status written = writeText(path, file.text()); !written) return written;
  }
  return {};
}

Status writeExamples(const QDir& folder) {
  if (Status written = writeSection(QDir(folder.filePath(QStringLiteral("section")))); !written) return written;
  if (Status written = writePanels(QDir(folder.filePath(QStringLiteral("panels")))); !written) return written;
  if (Status written = writeDay(QDir(folder.filePath(QStringLiteral("day")))); !written) return written;
  if (Status written = writeMapData(QDir(folder.filePath(QStringLiteral("map")))); !written) return written;
  if (Status written = writeArray(QDir(folder.filePath(QStringLiteral("array")))); !written) return written;
  if (Status written = writeGrids(folder); !written) return written;
  return writeTables(folder);
}

} // namespace

int main(int argc, char** argv) {
  constexpr int kFailed = 1;
  constexpr int kWrongUse = 2;
  if (argc != 2 || argv[1][0] == '-' || argv[1][0] == '\0') {
    std::fputs(
        "usage: xov_examples OUTDIR\nWrites example seismograms, catalogues, map data and tables into OUTDIR.\n",
        stderr);
    return kWrongUse;
  }
  const Status written = writeExamples(QDir(QString::fromLocal8Bit(argv[1])));
  if (written) return 0;
  std::fprintf(stderr, "xov_examples: %s\n", qPrintable(written.error()));
  return kFailed;
}
