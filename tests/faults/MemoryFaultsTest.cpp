#include "tests/faults/FaultTest.h"

#include <QDir>
#include <QFile>

#include <algorithm>
#include <numeric>

namespace xov::cli {
namespace {

/// Reads while memory is refused: the whole file, or a line that says why not, and never a crash. Of blocks that hold
/// more than a few words: Qt 6.4 fills small lists without a look at whether it was given memory for them.
class MemoryFaults : public FaultTest {
protected:
  static constexpr qint64 kBlock = 512;
  using Run = std::function<Outcome(const Fault&, const QString& file)>;

  /// Each of some allocations between the opening of the file and the end of the program is refused once.
  void expectWholeOrTold(const QString& file, const Run& run) {
    SCOPED_TRACE(qPrintable(file));
    const Fault counting{"malloc", "ENOMEM", "fail", "once", 0, kBlock};
    (void)run(counting, "missing.file");
    const quint64 before = callsCounted() - std::min(kToldBy, callsCounted());
    const Outcome whole = run(counting, file);
    ASSERT_EQ(whole.status, 0) << qPrintable(whole.err);
    const quint64 all = callsCounted();
    ASSERT_GT(all, before);
    for (const int number : chosen(all - before)) {
      const Fault fault{"malloc", "ENOMEM", "fail", "once", int(before) + number, kBlock};
      const Outcome found = run(fault, file);
      EXPECT_EQ(faultsMet(), 1U) << qPrintable(textOf(fault));
      EXPECT_TRUE(isWholeOrTold(found, whole)) << qPrintable(textOf(fault)) << " of " << all;
    }
  }

  static ::testing::AssertionResult isWholeOrTold(const Outcome& found, const Outcome& whole) {
    const bool isPrinted = found.out == whole.out;
    if (found.status == 0 && isPrinted && found.err == whole.err) return ::testing::AssertionSuccess();
    // Notes that the file is worth come first.
    QStringList lines = found.err.split('\n', Qt::SkipEmptyParts);
    const QString last = lines.isEmpty() ? QString() : lines.takeLast();
    const QStringList notes = whole.err.split('\n', Qt::SkipEmptyParts);
    const bool areNotes = std::ranges::all_of(lines, [&notes](const QString& line) { return notes.contains(line); });
    const bool isTold = last.startsWith("xov: ") && last.contains("not enough memory");
    if (found.status == 1 && areNotes && isTold && (isPrinted || found.out.isEmpty()))
      return ::testing::AssertionSuccess();
    return ::testing::AssertionFailure() << "status " << found.status << ", standard error: " << qPrintable(found.err)
                                         << "standard output: " << qPrintable(found.out);
  }

  /// How many allocations it takes a program to say that there is no such file.
  static constexpr quint64 kToldBy = 5;

  /// Some numbers from 1 on that are spread over all, or all.
  static std::vector<int> chosen(quint64 count) {
    constexpr quint64 kSome = 12;
    std::vector<int> numbers(triesAllFaults() ? count : std::min(count, kSome));
    for (std::size_t i = 0; i < numbers.size(); ++i)
      numbers[i] = int((i + 1) * count / numbers.size());
    return numbers;
  }

  Run info() {
    return [this](const Fault& fault, const QString& file) {
      return xovUnder(fault, {}, {"--threads", "1", "info", file});
    };
  }
  Run reader(const char* what) {
    return [this, what](const Fault& fault, const QString& file) { return subjectUnder(fault, {}, what, file); };
  }
  void expectTold(const QString& corpus, const QString& name, const Run& run) {
    ASSERT_TRUE(QFile::copy(QStringLiteral(XOV_CORPORA) + '/' + corpus, at(name))) << qPrintable(corpus);
    expectWholeOrTold(name, run);
  }
};

TEST_F(MemoryFaults, ofRecordReadersAreTold) {
  expectTold("sac/corpus/binary-7-big.sac", "seven.SAC", info());
  expectTold("sac/corpus/text.sac", "text.SAC", info());
  expectTold("mseed/corpus/v3-steim1.mseed3", "three.mseed", info());
  writeRecord("a.SAC", {.arrival = 5});
  ASSERT_EQ(xov({"convert", "a.SAC", "-o", "two.mseed"}).status, 0);
  expectWholeOrTold("two.mseed", info());
}

TEST_F(MemoryFaults, ofEventReadersAreTold) {
  writeFile("table.csv", "time,latitude,longitude,depth,mag\n2024-01-01T00:00:01Z,10,20,30,4.5\n");
  expectWholeOrTold("table.csv", info());
  for (const auto& [from, name] : {std::pair("quakeml/corpus/mechanism.xml", "mechanism.xml"),
                                   {"ndk/corpus/two-events.ndk", "cmt.ndk"},
                                   {"nordic/corpus/s-file", "s.file"},
                                   {"hypodd/corpus/hypoDD.reloc", "dd.reloc"},
                                   {"zmap/corpus/tabs.dat", "zmap.dat"},
                                   {"mchedr/corpus/event.dat", "mchedr.dat"}})
    expectTold(from, name, info());
}

TEST_F(MemoryFaults, ofOtherReadersAreTold) {
  environment_.insert("QT_QPA_PLATFORM", "offscreen");
  writeFile("stations.txt", "II|TLY|51.68|103.64|579|Talaya|1990-01-01T00:00:00|\n");
  writeFile("picks.csv", "time,phase,network,station\n2011-03-11T05:47:33Z,P,II,TLY\n");
  writeFile("line.nxy", "3\n10 10\n20 20\n30 10\n");
  writeFile("grid.txt", "0 0 1\n1 0 2\n0 1 3\n1 1 4\n");
  expectWholeOrTold("stations.txt", reader("read-stations"));
  expectWholeOrTold("picks.csv", reader("read-picks"));
  expectWholeOrTold("line.nxy", reader("read-line"));
  expectWholeOrTold("grid.txt", reader("read-grid"));
}

// As on a machine that is full: nothing of a page or more is given from some moment on.
TEST_F(MemoryFaults, thatLastAreTold) {
  writeRecord("a.SAC", {.arrival = 5});
  writeFile("table.csv",
            "time,latitude,longitude,depth,mag\n" + QByteArray("2024-01-01T00:00:01Z,10,20,30,4.5\n").repeated(1000));
  constexpr qint64 kPage = 4096;
  for (const QStringList& words : {QStringList{"info", "a.SAC"}, QStringList{"info", "table.csv"},
                                   QStringList{"convert", "a.SAC", "-o", "out.mseed"}}) {
    SCOPED_TRACE(qPrintable(words.join(' ')));
    const Outcome whole = xovUnder({"malloc", "ENOMEM", "fail", "on", 0, kPage}, {}, words);
    ASSERT_EQ(whole.status, 0);
    for (const int n : chosen(callsCounted())) {
      const Fault fault{"malloc", "ENOMEM", "fail", "on", n, kPage};
      EXPECT_TRUE(isWholeOrTold(xovUnder(fault, {}, words), whole)) << qPrintable(textOf(fault));
    }
  }
}

// Real limits of memory, from what a drawing takes up to what a page takes: Qt packs a page and its fonts without a
// look at whether it was given memory, so that this must be there before.
TEST_F(MemoryFaults, ofALimitLeaveTheOldPageOrTheNew) {
  writeRecord("a.SAC", {.arrival = 5});
  const auto draw = [this](int megabytes, const char* name) {
    writeFile(name, "old");
    return shell(QStringLiteral("ulimit -v %1; $XOV --threads 1 section a.SAC --size 300 200 -o %2")
                     .arg(megabytes * 1024)
                     .arg(QLatin1String(name)));
  };
  int least = 64;
  int most = 1024;
  if (draw(most, "plot.svg").status != 0) GTEST_SKIP() << "this build needs more than a gigabyte of addresses";
  while (most - least > 1)
    (draw((least + most) / 2, "plot.svg").status == 0 ? most : least) = (least + most) / 2;
  ASSERT_EQ(draw(1024, "plot.pdf").status, 0);
  const QByteArray whole = contents("plot.pdf");
  const int step = triesAllFaults() ? 1 : 12;
  constexpr int kPageMegabytes = 96;
  int refused = 0;
  for (int megabytes = most + 1; megabytes < most + kPageMegabytes; megabytes += step) {
    const Outcome outcome = draw(megabytes, "plot.pdf");
    const bool isDone = outcome.status == 0;
    EXPECT_EQ(contents("plot.pdf"), isDone ? whole : QByteArray("old")) << megabytes;
    EXPECT_EQ(outcome.err, isDone ? "" : "xov: plot.pdf: not enough memory\n")
        << megabytes << ": " << qPrintable(outcome.err);
    EXPECT_EQ(outcome.status, isDone ? 0 : 1) << megabytes;
    refused += isDone ? 0 : 1;
  }
  EXPECT_GT(refused, 0) << "no limit was too low";
  EXPECT_EQ(files(), (QStringList{"a.SAC", "plot.pdf", "plot.svg"}));
}

// Whatever their headers claim: 512 megabytes of addresses and five seconds are enough for each of them, be it to
// read or to refuse it.
TEST_F(MemoryFaults, ofSmallFilesAreNoneWhateverTheyAskFor) {
  writeRecord("a.SAC", {.arrival = 5});
  const std::pair<const char*, const char*> commands[] = {
      {"sac mseed seismograms quakeml eventcsv ndk nordic hypodd zmap mchedr", "info FILE"},
      {"nxy", "map --image 0 --size 300 160 --polygons FILE -o plot.png"},
      {"xyz", "grid FILE --size 300 200 -o plot.png"},
      {"columns", "hist FILE --dump"},
      {"stations stationxml polezero", "section a.SAC --size 300 200 --stations FILE -o plot.png"},
      {"picks", "section a.SAC --size 300 200 --pick-file FILE -o plot.png"}};
  for (const auto& [formats, command] : commands) {
    const QString line = QString(QLatin1String(command)).replace("FILE", "\"$file\"");
    const Outcome outcome = shell(
        QStringLiteral("ulimit -v 524288; ulimit -t 5; for format in %1; do for file in %2/$format/corpus/*; do\n"
                       "  count=$((count + 1)); $XOV %3 > /dev/null 2> errors; status=$?\n"
                       "  [ $status -le 1 ] && ! grep memory errors || echo $file: $status\n"
                       "done; done; echo $count tried")
            .arg(QLatin1String(formats), QStringLiteral(XOV_CORPORA), line));
    EXPECT_EQ(outcome.out.count('\n'), 1) << qPrintable(outcome.out);
    EXPECT_GT(outcome.out.section(' ', 0, 0).toInt(), 3) << qPrintable(outcome.out);
  }
}

} // namespace
} // namespace xov::cli
