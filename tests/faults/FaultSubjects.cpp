// Does one thing with a file or a folder as a program does in the middle of its work, so that a test can let it fail:
// the places of a SeedLink client, what the desk keeps, the version of base maps, and readers behind plots.
//
//     xov_fault_subjects WHAT PATH
//
// What was read goes to standard output, what failed to standard error, a line each; then the status is 1.
#include "XOV_Graphics/grid/XyzGrid.h"
#include "XOV_Graphics/map/XOVPolygon.h"
#include "XOV_Graphics/seismic/io/picks/PickFiles.h"
#include "XOV_Graphics/seismic/io/picks/PickJournal.h"
#include "XOV_Graphics/seismic/io/stations/InventoryReader.h"
#include "XOV_Graphics/seismic/realtime/seedlink/SeedLinkState.h"
#include "apps/desk/processing/ProcessingSteps.h"
#include "apps/desk/settings/DeskSettings.h"
#include "apps/desk/window/Desk.h"
#include "apps/resources/Maker.h"
#include "apps/xov/terminal/LittleMemory.h"

#include <QApplication>
#include <QTimer>

#include <cstdio>
#include <functional>
#include <map>
#include <memory>

namespace {

using namespace xov;

/// What was read, and what failed.
struct Done {
  QString text;
  QStringList failures;
};

Done failed(const Status& status) { return {{}, status ? QStringList() : QStringList(status.error())}; }

template <typename T>
Done of(const Result<T>& result, const std::function<QString(const T&)>& text) {
  return result ? Done{text(*result), {}} : Done{{}, {result.error()}};
}

Done writeState(const QString& path) {
  SeedLinkPlaces places;
  for (int station = 0; station < 5; ++station)
    places["XX_S" + QByteArray::number(station)] = {std::uint64_t(station), 1'000'000 * station};
  return failed(writeSeedLinkState(places, path));
}

Done readState(const QString& path) {
  return of<SeedLinkPlaces>(readSeedLinkState(path), [](const SeedLinkPlaces& places) {
    return QStringLiteral("%1 stations").arg(places.size());
  });
}

Done writeDesk(const QString& path) {
  desk::DeskSettings settings;
  settings.theme = QStringLiteral("new");
  return failed(desk::writeSettings(settings, path));
}

Done readDesk(const QString& path) {
  QString note;
  const desk::DeskSettings settings = desk::readSettings(path, &note);
  return {settings.theme, note.isEmpty() ? QStringList() : QStringList(note)};
}

Done writeSteps(const QString& path) {
  return failed(desk::writePreset(path, {{QStringLiteral("--demean"), {}, true}}));
}

Done readSteps(const QString& path) {
  return of<desk::Preset>(desk::readPreset(path), [](const desk::Preset& preset) {
    return QStringLiteral("%1 steps, %2 problems").arg(preset.steps.size()).arg(preset.problems.size());
  });
}

/// Picks one after the other, as a user sets them, whatever becomes of the first.
Done keepJournal(const QString& folder) {
  PickJournal journal(folder);
  journal.setDocument(QStringLiteral("picks.xml"));
  Done done;
  for (const char* phase : {"P", "S", "PP", "SS"}) {
    Pick pick;
    pick.id = QStringLiteral("smi:local/pick/") + QLatin1String(phase);
    pick.phase = QLatin1String(phase);
    const Status status = journal.append({0, {}, pick});
    done.text += status ? pick.phase + QLatin1Char(' ') : QString();
    if (!status) done.failures.append(status.error());
  }
  return done;
}

/// What a program finds that starts after that one.
Done recoverJournal(const QString& folder) {
  PickJournal journal(folder);
  PickDocument document;
  Done done;
  for (const QString& left : journal.leftBehind()) {
    const Result<RecoveredPicks> found = journal.recover(left, document);
    if (!found) {
      done.failures.append(found.error());
      continue;
    }
    done.text += found->document + QLatin1Char(':');
    done.failures += found->notes;
  }
  for (const Pick& pick : document.picks())
    done.text += QLatin1Char(' ') + pick.phase;
  return done;
}

Done missingMaps(const QString& root) {
  return of<std::vector<maker::Task>>(maker::missingResources(root), [](const std::vector<maker::Task>& tasks) {
    return QStringLiteral("%1 missing").arg(tasks.size());
  });
}

Done markMaps(const QString& root) { return failed(maker::markMade(root)); }

/// Opens the desk and closes it at once; its folder is given by the environment.
Done runTheDesk(const QString& /*folder*/) {
  QTimer::singleShot(0, [] { QApplication::closeAllWindows(); });
  const bool isKept = desk::runDesk([](const std::vector<std::string>&) { return 0; }, {});
  return {isKept ? QStringLiteral("kept") : QStringLiteral("not kept"), {}};
}

template <typename File, typename List>
Done readCount(const Result<File>& file, List File::*list) {
  return of<File>(file, [list](const File& read) { return QStringLiteral("%1 read").arg((read.*list).size()); });
}

Done readLine(const QString& path) {
  XOVPolygon line;
  QString error;
  if (!line.loadNXYFromPath(path, &error)) return {{}, {error}};
  return {QStringLiteral("%1 read").arg(line.pointCount()), {}};
}

Done readCells(const QString& path) {
  return of<Grid>(readXyzGrid(path),
                  [](const Grid& grid) { return QStringLiteral("%1 read").arg(grid.values.size()); });
}

const std::map<QString, std::function<Done(const QString&)>> kSubjects = {
    {"read-stations",
     [](const QString& path) { return readCount(readInventory(path), &StationInventory::stations); }},
    {"read-picks", [](const QString& path) { return readCount(readPicks(path), &PickFile::picks); }},
    {"read-line", readLine},
    {"read-grid", readCells},
    {"write-state", writeState},
    {"read-state", readState},
    {"write-settings", writeDesk},
    {"read-settings", readDesk},
    {"write-preset", writeSteps},
    {"read-preset", readSteps},
    {"keep-journal", keepJournal},
    {"missing-maps", missingMaps},
    {"mark-maps", markMaps},
    {"recover-journal", recoverJournal},
    {"desk", runTheDesk},
};

} // namespace

int main(int argc, char** argv) {
  const QString what = QString::fromLocal8Bit(argc == 3 ? argv[1] : "");
  std::unique_ptr<QCoreApplication> application;
  if (what == QLatin1String("desk"))
    application = std::make_unique<QApplication>(argc, argv);
  else
    application = std::make_unique<QCoreApplication>(argc, argv);
  cli::prepareForLittleMemory();
  const auto subject = kSubjects.find(what);
  if (subject == kSubjects.end()) return 2;
  const Done done = subject->second(QString::fromLocal8Bit(argv[2]));
  if (!done.text.isEmpty()) std::printf("%s\n", qUtf8Printable(done.text));
  for (const QString& failure : done.failures)
    std::fprintf(stderr, "xov: %s\n", qUtf8Printable(failure));
  return done.failures.isEmpty() ? 0 : 1;
}
