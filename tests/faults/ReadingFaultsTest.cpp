#include "tests/faults/FaultTest.h"

#include <QDir>
#include <QFile>

#include <cmath>

namespace xov::cli {
namespace {

constexpr Fault kOpenFaults[] = {{"open", "EMFILE"}, {"open", "EACCES", "fail", "on"}};
constexpr Fault kLastingFaults[] = {{"read", "EIO", "shortfail", "on"}, {"read", "EIO", "fail", "on"}};
constexpr Fault kPassingFaults[] = {{"read", "EIO"}, {"read", "EIO", "shortfail"}};
constexpr Fault kHarmlessFaults[] = {{"read", "EINTR"}, {"read", "EIO", "short"}, {"read", "EIO", "short", "on"}};

/// What a run left: what it said and, of a plot or another file, its bytes.
struct Work {
  Outcome outcome;
  QByteArray written;
};

/// Reads a file with the command while the disk fails.
class ReadingFaults : public FaultTest {
protected:
  /// Opening and each of some reads of the file fail in all ways: the command does all its work, or says why not.
  void expectWholeOrTold(const QString& file, const QStringList& arguments, const QString& output = {}) {
    SCOPED_TRACE(qPrintable(arguments.join(' ')));
    const Work whole = work({"read", "EIO", "fail", "once", 0}, file, arguments, output);
    ASSERT_EQ(whole.outcome.status, 0) << qPrintable(whole.outcome.err);
    const quint64 reads = callsCounted();
    ASSERT_GT(reads, 0U) << "nothing was read of " << qPrintable(file);
    for (Fault fault : kHarmlessFaults)
      expectWhole(whole, fault, file, arguments, output);
    std::vector<Fault> faults(std::begin(kLastingFaults), std::end(kLastingFaults));
    faults.insert(faults.end(), std::begin(kPassingFaults), std::end(kPassingFaults));
    for (Fault fault : faults) {
      for (const int at : callsToFail(reads)) {
        fault.at = at;
        expectWholeOrTold(whole, fault, file, arguments, output);
      }
    }
    for (const Fault& fault : kOpenFaults)
      expectWholeOrTold(whole, fault, file, arguments, output);
  }

  /// The same at the places that matter most, for commands that take longer.
  void expectDrawnOrTold(const QString& file, const QStringList& arguments) {
    const QString plot = QStringLiteral("plot.png");
    // Of several threads each reads what it needs, and how often differs.
    const QStringList all = QStringList{"--threads", "1"} + arguments + QStringList{"-q", "-o", plot};
    if (triesAllFaults()) return expectWholeOrTold(file, all, plot);
    SCOPED_TRACE(qPrintable(all.join(' ')));
    const Work whole = work({"read", "EIO", "fail", "once", 0}, file, all, plot);
    ASSERT_EQ(whole.outcome.status, 0) << qPrintable(whole.outcome.err);
    const int reads = int(callsCounted());
    ASSERT_GT(reads, 0) << "nothing was read of " << qPrintable(file);
    expectWholeOrTold(whole, {"open", "EMFILE"}, file, all, plot);
    expectWholeOrTold(whole, {"read", "EIO", "shortfail", "on", (reads + 1) / 2}, file, all, plot);
    expectWholeOrTold(whole, {"read", "EIO", "fail", "on", reads}, file, all, plot);
  }

  void copyOfCorpus(const QString& from, const QString& name) {
    QDir(folder_.path()).mkpath(".");
    ASSERT_TRUE(QFile::copy(QStringLiteral(XOV_CORPORA) + '/' + from, at(name))) << qPrintable(from);
  }

  /// A record that takes several reads: 1.2 MB.
  void writeLongRecord(const QString& name) {
    SacHeader header;
    header.delta = 0.05F;
    header.b = 0;
    header.knetwk = "II";
    header.kstnm = "TLY";
    header.kcmpnm = "BHZ";
    setReferenceTime(header, QDateTime(QDate(2011, 3, 11), QTime(5, 0), Qt::UTC));
    std::vector<float> samples(300'000);
    for (std::size_t i = 0; i < samples.size(); ++i)
      samples[i] = float(std::lround(1000 * std::sin(double(i) * 0.01)));
    writeRecord(name, SacSeismogram(header, std::move(samples)));
  }

private:
  Work work(const Fault& fault, const QString& file, const QStringList& arguments, const QString& output) {
    if (!output.isEmpty()) QFile::remove(at(output));
    Work done{xovUnder(fault, file, arguments), {}};
    if (!output.isEmpty() && QFile::exists(at(output))) done.written = contents(output);
    return done;
  }

  static void expectSame(const Work& found, const Work& whole, const Fault& fault) {
    EXPECT_EQ(found.outcome.out, whole.outcome.out) << qPrintable(textOf(fault));
    EXPECT_EQ(found.outcome.err, whole.outcome.err) << qPrintable(textOf(fault));
    EXPECT_TRUE(found.written == whole.written) << qPrintable(textOf(fault)) << ": another file was written";
  }

  void expectWhole(const Work& whole, const Fault& fault, const QString& file, const QStringList& arguments,
                   const QString& output) {
    const Work found = work(fault, file, arguments, output);
    EXPECT_GT(faultsMet(), 0U) << qPrintable(textOf(fault));
    EXPECT_EQ(found.outcome.status, 0) << qPrintable(textOf(fault));
    expectSame(found, whole, fault);
  }

  void expectWholeOrTold(const Work& whole, const Fault& fault, const QString& file, const QStringList& arguments,
                         const QString& output) {
    const Work found = work(fault, file, arguments, output);
    EXPECT_GT(faultsMet(), 0U) << qPrintable(textOf(fault));
    if (found.outcome.status == 0) return expectSame(found, whole, fault);
    EXPECT_TRUE(namesFileAndCause(found.outcome, file, fault));
  }
};

TEST_F(ReadingFaults, ofSacFilesAreTold) {
  writeLongRecord("long.SAC");
  copyOfCorpus("sac/corpus/binary-7-big.sac", "seven.SAC");
  copyOfCorpus("sac/corpus/text.sac", "text.SAC");
  for (const char* file : {"long.SAC", "seven.SAC", "text.SAC"})
    expectWholeOrTold(file, {"info", file});
}

TEST_F(ReadingFaults, ofMiniSeedFilesAreTold) {
  writeLongRecord("long.SAC");
  ASSERT_EQ(xov({"convert", "long.SAC", "-o", "long.mseed"}).status, 0);
  copyOfCorpus("mseed/corpus/v3-steim1.mseed3", "three.mseed");
  for (const char* file : {"long.mseed", "three.mseed"})
    expectWholeOrTold(file, {"info", file});
}

TEST_F(ReadingFaults, ofConvertedFilesLeaveNoHalf) {
  writeLongRecord("long.SAC");
  expectWholeOrTold("long.SAC", {"convert", "long.SAC", "-o", "out.mseed"}, "out.mseed");
}

TEST_F(ReadingFaults, ofQuakeMlAreToldAndEnd) {
  QByteArray document = "<quakeml><eventParameters>";
  for (int i = 0; i < 400; ++i) {
    const QByteArray second = QByteArray::number(i % 60).rightJustified(2, '0');
    document +=
        "<event publicID='e" + QByteArray::number(i) + "'><origin><time><value>2024-01-01T00:00:" + second +
        "Z</value></time><latitude><value>1</value></latitude><longitude><value>2</value></longitude></origin>"
        "</event>\n";
  }
  writeFile("events.xml", document + "</eventParameters></quakeml>\n");
  expectWholeOrTold("events.xml", {"info", "events.xml"});
}

TEST_F(ReadingFaults, ofCataloguesAreTold) {
  QByteArray table = "time,latitude,longitude,depth,mag\n";
  for (int i = 0; i < 1000; ++i)
    table += "2024-01-01T00:00:" + QByteArray::number(i % 60).rightJustified(2, '0') + "Z,10,20,30,4.5\n";
  writeFile("table.csv", table);
  expectWholeOrTold("table.csv", {"info", "table.csv"});
  for (const auto& [from, name] : {std::pair("ndk/corpus/two-events.ndk", "cmt.ndk"),
                                   {"nordic/corpus/s-file", "s.file"},
                                   {"hypodd/corpus/hypoDD.reloc", "dd.reloc"},
                                   {"zmap/corpus/tabs.dat", "zmap.dat"},
                                   {"mchedr/corpus/event.dat", "mchedr.dat"}}) {
    copyOfCorpus(from, name);
    expectWholeOrTold(name, {"info", name});
  }
}

TEST_F(ReadingFaults, ofColumnsAreTold) {
  QByteArray column;
  for (int i = 0; i < 3000; ++i)
    column += QByteArray::number(i) + '\n';
  writeFile("column.txt", column);
  expectWholeOrTold("column.txt", {"hist", "column.txt", "--dump"});
}

TEST_F(ReadingFaults, ofPipesAreTold) {
  QByteArray column;
  for (int i = 0; i < 30'000; ++i)
    column += QByteArray::number(i) + '\n';
  const QStringList arguments = {"hist", "-", "--dump"};
  const Outcome whole = xovUnder({"read", "EIO", "fail", "once", 0}, "fd:0", arguments, column);
  ASSERT_EQ(whole.status, 0) << qPrintable(whole.err);
  for (const int at : callsToFail(callsCounted())) {
    const Fault fault{"read", "EIO", "fail", "on", at};
    EXPECT_TRUE(namesFileAndCause(xovUnder(fault, "fd:0", arguments, column), "standard input", fault));
  }
  writeRecord("a.SAC");
  const Fault spooled{"read", "EIO", "fail", "on", 2};
  const Outcome info = xovUnder(spooled, "fd:0", {"info", "-"}, contents("a.SAC"));
  EXPECT_TRUE(namesFileAndCause(info, "standard input", spooled));
}

TEST_F(ReadingFaults, ofWhatARecordIsShownWithAreTold) {
  writeRecord("a.SAC");
  QByteArray stations = "II|TLY|51.68|103.64|579|Talaya|1990-01-01T00:00:00|\n";
  QByteArray picks = "time,phase,network,station\n2011-03-11T05:47:33Z,P,II,TLY\n";
  QByteArray events = "time,latitude,longitude,depth,mag\n2011-03-11T05:46:24Z,38.3,142.4,29,9.1\n";
  // Beyond the first pieces that readers look at to know a format.
  for (int i = 0; i < 200; ++i) {
    stations += "XX|S" + QByteArray::number(i) + "|10|20|0|Elsewhere|1990-01-01T00:00:00|\n";
    picks += "2011-03-11T05:47:33Z,S,XX,S" + QByteArray::number(i) + "\n";
  }
  writeFile("stations.txt", stations);
  writeFile("picks.csv", picks);
  writeFile("event.csv", events);
  const QStringList section = {"section", "a.SAC",     "--stations",  "stations.txt",
                               "--event", "event.csv", "--pick-file", "picks.csv"};
  for (const char* file : {"stations.txt", "event.csv", "picks.csv", "a.SAC"})
    expectDrawnOrTold(file, section);
}

TEST_F(ReadingFaults, ofGridsAreTold) {
  QByteArray grid;
  for (int y = 0; y < 40; ++y) {
    for (int x = 0; x < 40; ++x)
      grid += QByteArray::number(x) + ' ' + QByteArray::number(y) + ' ' + QByteArray::number(x * y) + '\n';
  }
  writeFile("grid.txt", grid);
  expectDrawnOrTold("grid.txt", {"grid", "grid.txt"});
  writeFile("cells.i2", QByteArray(64 * 64 * 2, '\1'));
  expectDrawnOrTold("cells.i2", {"grid", "cells.i2", "--rows", "64", "--columns", "64"});
}

TEST_F(ReadingFaults, ofWhatAMapShowsAreTold) {
  writeFile("line.nxy", "3\n10 10\n20 20\n30 10\n");
  writeFile("vectors.txt", "10 20 1 2\n30 40 2 1\n");
  writeFile("topo.i2", QByteArray(36 * 72 * 2, '\1'));
  const QStringList map = {"map",       "--image",     "0",      "--polygons", "line.nxy",
                           "--vectors", "vectors.txt", "--size", "300",        "160"};
  expectDrawnOrTold("line.nxy", map);
  expectDrawnOrTold("vectors.txt", map);
  expectDrawnOrTold("topo.i2", {"map", "--topo", "topo.i2", "--size", "300", "160"});
}

TEST_F(ReadingFaults, ofResourcesAreTold) {
  expectDrawnOrTold("living_earth_wide.jpg", {"map", "--image", "4", "--size", "300", "160"});
  expectDrawnOrTold("natural_wide.jpg", {"map", "--size", "300", "160"}); // which nobody named
  expectDrawnOrTold("trench.txt", {"map", "--image", "0", "--plates", "types", "--size", "300", "160"});
  expectDrawnOrTold("PB2002_boundaries.txt", {"map", "--image", "0", "--plates", "bird", "--size", "300", "160"});
}

TEST_F(ReadingFaults, ofLongRecordingsAreToldWhileTheyAreDrawn) {
  writeLongRecord("long.SAC");
  ASSERT_EQ(xov({"convert", "long.SAC", "-o", "long.mseed"}).status, 0);
  for (const char* file : {"long.SAC", "long.mseed"}) {
    expectDrawnOrTold(file, {"drum", file});
    // With its index, only what is drawn is read.
    ASSERT_EQ(xov({"drum", file, "--index-cache", "kept", "-o", "first.png"}).status, 0);
    expectDrawnOrTold(file, {"drum", file, "--index-cache", "kept"});
  }
}

TEST_F(ReadingFaults, ofAFolderNameTheFolder) {
  writeRecord("data/good/a.SAC");
  writeRecord("data/shut/b.SAC");
  const Fault shut{"open", "EACCES", "fail", "on"};
  // The folder itself.
  EXPECT_TRUE(namesFileAndCause(xovUnder(shut, "data", {"info", "data"}), "data: cannot be read", shut));
  // One in it: the others are listed.
  const Outcome outcome = xovUnder(shut, "shut", {"info", "data"});
  EXPECT_EQ(outcome.status, 1);
  EXPECT_EQ(outcome.err, "xov: data/shut: cannot be read: Permission denied\n");
  EXPECT_TRUE(outcome.out.contains("data/good/a.SAC")) << qPrintable(outcome.out);
  // A file in it that is a recording for all that is known.
  const Outcome file = xovUnder({"read", "EIO", "fail", "on"}, "b.SAC", {"info", "data"});
  EXPECT_EQ(file.status, 1);
  EXPECT_EQ(file.err, "xov: data/shut/b.SAC: cannot be read: Input/output error\n");
}

} // namespace
} // namespace xov::cli
