// xov_bench: times the drawing of long seismograms by this library and by plain QPainter against a scan of the same
// samples, all in one run and in turn, and reads the peak memory of a process that does nothing else.
#include "bench/Grids.h"
#include "bench/LiveDisplay.h"
#include "bench/Maps.h"
#include "bench/Measure.h"
#include "bench/Plots.h"
#include "bench/Reading.h"
#include "bench/Records.h"
#include "bench/Report.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QDir>
#include <QFile>
#include <QJsonDocument>

#include <algorithm>
#include <cstdio>

using namespace xov::bench;

int main(int argc, char** argv) {
  if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  QApplication app(argc, argv);
  QCommandLineParser parser;
  parser.addHelpOption();
  parser.addOption({QStringLiteral("works"), QStringLiteral("Comma-separated names, such as W1,W2@2,W4,reading."),
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
  parser.process(app);

  const QDir pictures(parser.value(QStringLiteral("pictures")));
  if (parser.isSet(QStringLiteral("one"))) {
    const QStringList what = parser.value(QStringLiteral("one")).split(QLatin1Char(':'));
    if (what.size() != 2) return 2;
    return drawOnce(what[0].toStdString(), what[1].toStdString(),
                    pictures.filePath(what[1] + QLatin1Char('-') + what[0]));
  }

  std::vector<std::string> names = workNames();
  bool wantsGrids = true;
  bool wantsReading = true;
  bool wantsPlots = true;
  bool wantsMaps = true;
  bool wantsRecords = true;
  for (const std::string& name : liveDisplayNames())
    names.push_back(name);
  if (parser.isSet(QStringLiteral("works"))) {
    names.clear();
    wantsGrids = false;
    wantsReading = false;
    wantsPlots = false;
    wantsMaps = false;
    wantsRecords = false;
    for (const QString& name : parser.value(QStringLiteral("works")).split(QLatin1Char(','))) {
      if (name == QLatin1String("W4"))
        wantsGrids = true;
      else if (name == QLatin1String("reading"))
        wantsReading = true;
      else if (name == QLatin1String("P1"))
        wantsPlots = true;
      else if (name == QLatin1String("M1"))
        wantsMaps = true;
      else if (name == QLatin1String("P2"))
        wantsRecords = true;
      else
        names.push_back(name.toStdString());
    }
  }
  std::vector<RivalProgram> rivals;
  if (parser.isSet(QStringLiteral("rivals"))) rivals = rivalPrograms(parser.value(QStringLiteral("rivals")));
  std::vector<Measurement> all;
  for (const std::string& name : names) {
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
    const auto measured = measure(work, rivals, std::max(1, parser.value(QStringLiteral("rounds")).toInt()),
                                  std::max(1.0, parser.value(QStringLiteral("limit")).toDouble()), pictures);
    all.insert(all.end(), measured.begin(), measured.end());
    std::fprintf(stderr, "%s", qPrintable(table(measured)));
  }
  std::printf("%s\n\n%s\n%s", qPrintable(machine()), qPrintable(table(all)), qPrintable(frameShares(all)));
  if (wantsGrids)
    std::printf("\n%s", qPrintable(gridTable(std::max(1, parser.value(QStringLiteral("rounds")).toInt()))));
  if (wantsReading)
    std::printf("\n%s", qPrintable(readingTable(std::max(1, parser.value(QStringLiteral("rounds")).toInt()))));
  if (wantsPlots)
    std::printf("\n%s", qPrintable(plotTable(std::max(1, parser.value(QStringLiteral("rounds")).toInt()))));
  if (wantsMaps)
    std::printf("\n%s", qPrintable(mapTable(std::max(1, parser.value(QStringLiteral("rounds")).toInt()))));
  if (wantsRecords)
    std::printf("\n%s", qPrintable(recordTable(std::max(1, parser.value(QStringLiteral("rounds")).toInt()))));
  if (parser.isSet(QStringLiteral("json"))) {
    QFile file(parser.value(QStringLiteral("json")));
    if (!file.open(QIODevice::WriteOnly) || file.write(QJsonDocument(json(all)).toJson()) < 0) {
      std::fprintf(stderr, "xov_bench: %s: %s\n", qPrintable(file.fileName()), qPrintable(file.errorString()));
      return 1;
    }
  }
  return 0;
}
