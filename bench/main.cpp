// xov_bench: times the drawing of long seismograms by this library and by plain QPainter against a scan of the same
// samples, all in one run and in turn, and reads the peak memory of a process that does nothing else.
#include "XOV_Graphics/base/Threads.h"
#include "bench/Archives.h"
#include "bench/Desk.h"
#include "bench/DeskWeek.h"
#include "bench/Figures.h"
#include "bench/Grids.h"
#include "bench/LiveDisplay.h"
#include "bench/Lobes.h"
#include "bench/Maps.h"
#include "bench/Measure.h"
#include "bench/Navigation.h"
#include "bench/Pictures.h"
#include "bench/Plots.h"
#include "bench/Reading.h"
#include "bench/Records.h"
#include "bench/Report.h"
#include "bench/Sharing.h"
#include "bench/Signals.h"
#include "bench/Smallest.h"
#include "bench/Soak.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QDir>
#include <QFile>
#include <QJsonDocument>

#include <algorithm>
#include <cstdio>
#include <functional>

using namespace xov::bench;

int main(int argc, char** argv) {
  if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  QApplication app(argc, argv);
  QCommandLineParser parser;
  parser.addHelpOption();
  parser.addOption({QStringLiteral("works"),
                    QStringLiteral("Comma-separated names, such as W1,W2@2,W4,reading,signals."),
                    QStringLiteral("names")});
  parser.addOption({QStringLiteral("rounds"), QStringLiteral("Rounds of the quick engines."), QStringLiteral("n"),
                    QStringLiteral("9")});
  parser.addOption({QStringLiteral("limit"), QStringLiteral("Seconds after which a slow engine is stopped."),
                    QStringLiteral("seconds"), QStringLiteral("30")});
  parser.addOption({QStringLiteral("pictures"), QStringLiteral("Folder for what the engines drew."),
                    QStringLiteral("folder"), QStringLiteral(".")});
  parser.addOption({QStringLiteral("json"), QStringLiteral("File for the figures."), QStringLiteral("file")});
  parser.addOption({QStringLiteral("rivals"),
                    QStringLiteral("Draw with other libraries, too; those in Python are scripts in this folder."),
                    QStringLiteral("folder")});
  parser.addOption({QStringLiteral("one"),
                    QStringLiteral("Draw ENGINE:WORK once and print milliseconds and megabytes."),
                    QStringLiteral("what")});
  parser.addOption({QStringLiteral("threads"),
                    QStringLiteral("Threads of our own library; its rivals have one, and so does it unless told."),
                    QStringLiteral("n"), QStringLiteral("1")});
  parser.addOption(
      {QStringLiteral("soak"),
       QStringLiteral("Only play so many hours of 36 channels through a socket to a display, and print what "
                      "that does to samples, memory and redraws; 24 take three minutes."),
       QStringLiteral("hours")});
  parser.addOption({QStringLiteral("speed"), QStringLiteral("Of soak and desk: recorded seconds a second."),
                    QStringLiteral("n"), QStringLiteral("500")});
  parser.addOption(
      {QStringLiteral("desk-hours"),
       QStringLiteral("Only leave a desk open while it receives so many hours of a station, and print what "
                      "that does to memory and open files; 168 at --speed 5000 take two minutes."),
       QStringLiteral("hours")});
  parser.addOption({QStringLiteral("figures"),
                    QStringLiteral("Only make so many figures, and print what that does to memory and open files."),
                    QStringLiteral("n")});
  parser.process(app);
  xov::setThreadCount(std::max(1, parser.value(QStringLiteral("threads")).toInt()));

  if (parser.isSet(QStringLiteral("soak"))) {
    const SoakResult result = soak(std::max(0.01, parser.value(QStringLiteral("soak")).toDouble()),
                                   std::max(1.0, parser.value(QStringLiteral("speed")).toDouble()));
    std::printf("%s\n\n%s", qPrintable(machine()), qPrintable(result.table));
    return result.isComplete ? 0 : 1;
  }

  if (parser.isSet(QStringLiteral("desk-hours"))) {
    const QString table = deskWeekTable(std::max(0.01, parser.value(QStringLiteral("desk-hours")).toDouble()),
                                        std::max(1.0, parser.value(QStringLiteral("speed")).toDouble()));
    std::printf("%s\n\n%s", qPrintable(machine()), qPrintable(table));
    return 0;
  }
  if (parser.isSet(QStringLiteral("figures"))) {
    const QString table = figuresTable(std::max(1, parser.value(QStringLiteral("figures")).toInt()));
    std::printf("%s\n\n%s", qPrintable(machine()), qPrintable(table));
    return table.isEmpty() ? 1 : 0;
  }

  const QDir pictures(parser.value(QStringLiteral("pictures")));
  if (parser.isSet(QStringLiteral("one"))) {
    const QStringList what = parser.value(QStringLiteral("one")).split(QLatin1Char(':'));
    if (what.size() != 2) return 2;
    return drawOnce(what[0].toStdString(), what[1].toStdString(),
                    pictures.filePath(what[1] + QLatin1Char('-') + what[0]));
  }

  // Tables of their own, by the names that --works knows them by.
  const QString scripts = parser.value(QStringLiteral("rivals"));
  const std::pair<const char*, std::function<QString(int)>> tables[] = {
      {"W4", gridTable},
      {"reading", readingTable},
      {"P1", plotTable},
      {"M1", mapTable},
      {"P2", recordTable},
      {"threads", sharingTable},
      {"archives", archiveTable},
      {"lobes", lobesTable},
      {"navigation", navigationTable},
      {"desk", deskTable},
      {"smallest", smallestTable},
      {"pictures", pictureTable},
      {"signals", [&](int rounds) { return signalTable(rounds, scripts); }},
  };

  std::vector<std::string> names = workNames();
  for (const std::string& name : liveDisplayNames())
    names.push_back(name);
  for (const auto& [name, make] : tables)
    names.emplace_back(name);
  if (parser.isSet(QStringLiteral("works"))) {
    names.clear();
    for (const QString& name : parser.value(QStringLiteral("works")).split(QLatin1Char(',')))
      names.push_back(name.toStdString());
  }
  std::vector<RivalProgram> rivals;
  if (parser.isSet(QStringLiteral("rivals"))) rivals = rivalPrograms(scripts);
  const int rounds = std::max(1, parser.value(QStringLiteral("rounds")).toInt());
  const auto isTable = [&](const std::string& name) {
    return std::ranges::any_of(tables, [&](const auto& each) { return name == each.first; });
  };
  std::vector<Measurement> all;
  for (const std::string& name : names) {
    if (isTable(name)) continue;
    if (isLiveDisplay(name)) {
      constexpr int kRedraws = 60;
      all.push_back(measureLiveDisplay(name, kRedraws));
      continue;
    }
    const Work work = makeWork(name);
    if (work.name.empty()) {
      std::fprintf(stderr, "xov_bench: there is no work named %s\n", name.c_str());
      return 2;
    }
    const auto measured =
        measure(work, rivals, rounds, std::max(1.0, parser.value(QStringLiteral("limit")).toDouble()), pictures);
    all.insert(all.end(), measured.begin(), measured.end());
    std::fprintf(stderr, "%s", qPrintable(table(measured)));
  }
  std::printf("%s\n\n%s\n%s", qPrintable(machine()), qPrintable(table(all)), qPrintable(frameShares(all)));
  for (const auto& [name, make] : tables) {
    if (std::ranges::find(names, name) != names.end()) std::printf("\n%s", qPrintable(make(rounds)));
  }
  if (parser.isSet(QStringLiteral("json"))) {
    QFile file(parser.value(QStringLiteral("json")));
    if (!file.open(QIODevice::WriteOnly) || file.write(QJsonDocument(json(all)).toJson()) < 0) {
      std::fprintf(stderr, "xov_bench: %s: %s\n", qPrintable(file.fileName()), qPrintable(file.errorString()));
      return 1;
    }
  }
  return 0;
}
