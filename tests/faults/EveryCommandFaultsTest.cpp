#include "tests/faults/FaultTest.h"

#include <QDir>
#include <QFile>
#include <QRegularExpression>

#include <algorithm>

namespace xov::cli {
namespace {

/// A command that reads a file and, with `output`, writes another one.
struct Row {
  const char* command;
  QStringList inputs;  ///< the last one is that which fails
  QStringList options; ///< behind the inputs
  const char* output = "plot.png";
};

/// Every command of xov while its input cannot be read or its output not written.
class EveryCommand : public FaultTest {
protected:
  void SetUp() override {
    for (const char* component : {"BHE", "BHN", "BHZ"})
      writeRecord(QStringLiteral("c.%1.SAC").arg(component), {.component = component, .arrival = 5});
    ASSERT_EQ(xov({"convert", "c.BHZ.SAC", "-o", "c.mseed"}).status, 0);
    SacHeader header;
    header.delta = 0.1F;
    header.b = 0;
    std::vector<float> samples(20'000); // 2000 s
    for (std::size_t i = 0; i < samples.size(); ++i)
      samples[i] = float(i * 7919 % 2003);
    writeRecord("long.SAC", SacSeismogram(header, std::move(samples)));
    ASSERT_TRUE(QFile::copy(QStringLiteral(XOV_CORPORA) + "/quakeml/corpus/mechanism.xml", at("events.xml")));
    ASSERT_TRUE(QFile::copy(QStringLiteral(XOV_CORPORA) + "/ndk/corpus/two-events.ndk", at("cmt.ndk")));
    writeFile("pairs.txt", "1 2\n3 4\n2 5\n");
    writeFile("grid.txt", "0 0 1\n1 0 2\n0 1 3\n1 1 4\n");
    writeFile("plane.txt", "0 0 1\n1 0 2\n0 1 3\n1 1 4\n");
    writeFile("bird.txt", "AF-AN  PB2002\n 1,2\n 3,4\n*** end of line segment ***\n");
    environment_.insert("XOV_DATA_ROOT", at("root"));
  }

  static std::vector<Row> rows() {
    const QStringList one = {"c.BHZ.SAC"};
    const QStringList three = {"c.BHE.SAC", "c.BHN.SAC", "c.BHZ.SAC"};
    return {{"section", three, {}},
            {"panels", three, {}},
            {"stack", three, {}},
            {"three", three, {}},
            {"motion", three, {}},
            {"drum", one, {}},
            {"monitor", one, {}},
            {"spectrogram", one, {}},
            {"spectrum", three, {}},
            {"ppsd", {"long.SAC"}, {"--segment", "500"}},
            {"xy", {"pairs.txt"}, {}},
            {"scatter", {"pairs.txt"}, {}},
            {"hist", {"pairs.txt"}, {}},
            {"map", {"--image", "0", "--size", "300", "160", "--events", "events.xml"}, {}},
            {"mechanism", {"cmt.ndk"}, {}},
            {"grid", {"grid.txt"}, {}},
            {"fk", {"plane.txt"}, {}},
            {"convert", one, {}, "out.mseed"},
            {"serve", {"--port", "0", "c.mseed"}, {}, nullptr},
            {"info", one, {}, nullptr},
            {"resources", {"--pb2002", "bird.txt"}, {}, nullptr}};
  }
  /// Its files are the session's, and their faults are tried in KeptFilesFaults.
  static QStringList triedElsewhere() { return {"desk"}; }

  static QStringList words(const Row& row) {
    QStringList words = QStringList(QLatin1String(row.command)) + row.inputs + row.options;
    if (row.output != nullptr) words += QStringList{"-q", "-o", QStringLiteral("out/") + QLatin1String(row.output)};
    return words;
  }

  void makeOutputFolder() {
    QDir(at("out")).removeRecursively();
    ASSERT_TRUE(QDir(at("out")).mkpath("."));
  }
  QStringList written() const {
    return QDir(at("out")).entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot);
  }
};

TEST_F(EveryCommand, isTriedUnderFaults) {
  QStringList tried = triedElsewhere();
  for (const Row& row : rows())
    tried.append(QLatin1String(row.command));
  QStringList known;
  const QString help = xov({"help"}).out.section("Subcommands:\n", 1).section("\n\n", 0, 0);
  for (const QString& line : help.split('\n', Qt::SkipEmptyParts))
    known.append(line.simplified().section(' ', 0, 0));
  EXPECT_GT(known.size(), 20);
  std::ranges::sort(tried);
  std::ranges::sort(known);
  EXPECT_EQ(tried, known) << "a new command needs a row above";
}

TEST_F(EveryCommand, tellsOfAnInputThatCannotBeRead) {
  for (const Row& row : rows()) {
    const QString file = row.inputs.back();
    for (const Fault& fault : {Fault{"read", "EIO", "fail", "on"}, Fault{"read", "EIO", "shortfail", "on"},
                               Fault{"open", "EMFILE", "fail", "on"}}) {
      SCOPED_TRACE(row.command);
      makeOutputFolder();
      Outcome outcome = xovUnder(fault, file, words(row));
      EXPECT_GT(faultsMet(), 0U) << qPrintable(textOf(fault));
      // It needs all three, and says that as well.
      if (QByteArrayView(row.command) == "motion") outcome.err = outcome.err.section('\n', 0, 0) + '\n';
      EXPECT_TRUE(namesFileAndCause(outcome, file, fault));
      // What can be drawn of several is drawn.
      const bool hasOthers = row.inputs.filter(".SAC").size() > 1 || QByteArrayView(row.command) == "map";
      EXPECT_LE(written().size(), hasOthers ? 1 : 0);
    }
  }
}

TEST_F(EveryCommand, tellsOfAnOutputThatCannotBeWritten) {
  for (const Row& row : rows()) {
    if (row.output == nullptr) continue;
    SCOPED_TRACE(row.command);
    makeOutputFolder();
    ASSERT_EQ(xov(words(row)).status, 0);
    EXPECT_EQ(written(), QStringList(QLatin1String(row.output)));
    const Fault full{"write", "ENOSPC", "fail", "on"};
    makeOutputFolder();
    EXPECT_TRUE(namesFileAndCause(xovUnder(full, at("out"), words(row)), QLatin1String(row.output), full));
    EXPECT_EQ(written(), QStringList());
  }
}

// As on a machine that is full: from some moment on there are no blocks as pictures, samples and files are read into.
TEST_F(EveryCommand, tellsOfMemoryThatIsRefused) {
  constexpr qint64 kPictureBlock = 65536;
  int endedByQt = 0;
  for (const Row& row : rows()) {
    if (row.output == nullptr) continue;
    SCOPED_TRACE(row.command);
    const QString output = QStringLiteral("out/") + QLatin1String(row.output);
    makeOutputFolder();
    ASSERT_EQ(xovUnder({"malloc", "ENOMEM", "fail", "once", 0, kPictureBlock}, {}, words(row)).status, 0);
    const QByteArray whole = contents(output);
    for (const int n : callsToFail(callsCounted())) {
      const Fault fault{"malloc", "ENOMEM", "fail", "on", n, kPictureBlock};
      makeOutputFolder();
      const Outcome outcome = xovUnder(fault, {}, words(row));
      // With another font, when that of plots could not be loaded.
      QString errors = outcome.err;
      errors.remove(QRegularExpression("^xov: no memory for [^\n]*\n"));
      const bool hasOtherFont = errors.startsWith("xov: the font ");
      if (hasOtherFont) errors = errors.section('\n', 1);
      EXPECT_LE(errors.count('\n'), 1) << qPrintable(textOf(fault)) << ": " << qPrintable(outcome.err);
      if (outcome.status == 0) {
        EXPECT_TRUE(contents(output) == whole || hasOtherFont) << qPrintable(textOf(fault));
      } else {
        endedByQt += outcome.status == -1 ? 1 : 0;
        EXPECT_TRUE(outcome.status == -1 || !errors.isEmpty()) << qPrintable(textOf(fault));
        EXPECT_EQ(written(), QStringList()) << qPrintable(textOf(fault));
      }
    }
  }
  // Qt does not look at the memory for outlines of letters, of which few are so large.
  EXPECT_LE(endedByQt, 1);
}

TEST_F(EveryCommand, tellsOfAStandardOutputThatIsFull) {
  for (const char* line :
       {"info c.BHZ.SAC", "hist pairs.txt --dump", "resources", "serve c.mseed --port 0", "help", "section --help"}) {
    const Outcome outcome = shell(QStringLiteral("timeout 20 $XOV %1 > /dev/full").arg(line));
    EXPECT_EQ(outcome.status, 1) << line;
    EXPECT_EQ(outcome.err, "xov: standard output: No space left on device\n") << line;
  }
}

TEST_F(EveryCommand, importsBoundariesWholeOrNotAtAll) {
  ASSERT_TRUE(QDir(folder_.path()).mkpath("root/resources"));
  writeFile("root/resources/PB2002_boundaries.txt", "old");
  for (const Fault& fault : {Fault{"write", "ENOSPC", "fail", "on"}, Fault{"fsync", "EIO"}, Fault{"rename", "EIO"}}) {
    const Outcome outcome = xovUnder(fault, at("root"), {"resources", "--pb2002", "bird.txt"});
    EXPECT_TRUE(namesFileAndCause(outcome, "PB2002_boundaries.txt", fault));
    EXPECT_EQ(contents("root/resources/PB2002_boundaries.txt"), "old");
    EXPECT_EQ(QDir(at("root/resources")).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot).size(), 1);
  }
  EXPECT_EQ(xov({"resources", "--pb2002", "bird.txt"}).status, 0);
}

TEST_F(EveryCommand, listsTheOtherResourcesWhereOneCannotBeRead) {
  const QString whole = xov({"resources"}).out;
  for (const char* name : {"natural_wide.jpg", "ridge.txt"}) {
    for (const Fault& fault : {Fault{"read", "EIO", "fail", "on"}, Fault{"open", "EMFILE", "fail", "on"}}) {
      Outcome outcome = xovUnder(fault, name, {"resources"});
      const QStringList row = outcome.out.split('\n').filter(QRegularExpression('^' + QLatin1String(name)));
      ASSERT_EQ(row.size(), 1);
      EXPECT_EQ(row.front().simplified().section(' ', 1, 1), "unreadable");
      EXPECT_EQ(outcome.out.count('\n'), whole.count('\n'));
      outcome.out.clear();
      EXPECT_TRUE(namesFileAndCause(outcome, name, fault));
    }
  }
}

} // namespace
} // namespace xov::cli
