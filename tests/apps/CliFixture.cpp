#include "tests/apps/CliFixture.h"

#include "XOV_Graphics/seismic/io/sac/SacWriter.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QStandardPaths>

#include <cmath>

namespace xov::cli {

namespace {

constexpr int kPatienceMs = 60000;
constexpr int kSamples = 201;
constexpr float kInterval = 0.1F;

} // namespace

CliTest::CliTest() : environment_(QProcessEnvironment::systemEnvironment()) {
  for (const char* variable : {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM", "XDG_RUNTIME_DIR"})
    environment_.remove(QString::fromLatin1(variable));
  environment_.insert("XOV", XOV_COMMAND);
}

Outcome CliTest::run(const QString& program, const QStringList& arguments, const QByteArray& input) {
  QProcess process;
  process.setWorkingDirectory(folder_.path());
  process.setProcessEnvironment(environment_);
  process.start(program, arguments);
  process.write(input);
  process.closeWriteChannel();
  Outcome outcome;
  if (process.waitForFinished(kPatienceMs) && process.exitStatus() == QProcess::NormalExit)
    outcome.status = process.exitCode();
  outcome.out = QString::fromUtf8(process.readAllStandardOutput());
  outcome.err = QString::fromUtf8(process.readAllStandardError());
  return outcome;
}

Outcome CliTest::xov(const QStringList& arguments, const QByteArray& input) {
  return run(QStringLiteral(XOV_COMMAND), arguments, input);
}

Outcome CliTest::shell(const QString& line) { return run("sh", {"-c", line}, {}); }

std::optional<QString> CliTest::tool(const QString& program, const QStringList& arguments) {
  if (QStandardPaths::findExecutable(program).isEmpty()) return {};
  return run(program, arguments, {}).out;
}

void CliTest::writeRecord(const QString& name, const RecordSpec& spec) {
  SacHeader header;
  header.delta = kInterval;
  header.b = 0;
  header.knetwk = spec.network;
  header.kstnm = spec.station;
  header.kcmpnm = spec.component;
  header.gcarc = spec.distanceDeg;
  header.az = spec.azimuthDeg;
  header.o = spec.origin;
  header.a = spec.arrival;
  header.ka = "P";
  header.t1 = spec.second;
  header.kt1 = "S";
  setReferenceTime(header, QDateTime(QDate(2011, 3, 11), QTime(5, 47, 30, 33), Qt::UTC));
  std::vector<float> samples(kSamples);
  for (std::size_t i = 0; i < samples.size(); ++i)
    samples[i] = float(1000 * std::sin(double(i) * 0.3));
  writeRecord(name, SacSeismogram(header, std::move(samples)));
}

void CliTest::writeRecord(const QString& name, const SacSeismogram& record) {
  QDir(folder_.path()).mkpath(QFileInfo(name).path());
  const Status status = writeSac(record, at(name));
  ASSERT_TRUE(status) << qPrintable(status.error());
}

std::optional<QString> CliTest::textOfPlot(const QStringList& arguments) {
  const Outcome outcome = xov(arguments + QStringList{"-o", "plot.pdf"});
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(outcome.err, "");
  return tool("pdftotext", {"-layout", at("plot.pdf"), "-"});
}

void CliTest::writeFile(const QString& name, const QByteArray& contents) {
  QDir(folder_.path()).mkpath(QFileInfo(name).path());
  QFile file(at(name));
  ASSERT_TRUE(file.open(QIODevice::WriteOnly)) << qPrintable(file.fileName());
  ASSERT_EQ(file.write(contents), contents.size());
}

QByteArray CliTest::contents(const QString& name) const {
  QFile file(at(name));
  EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << qPrintable(file.fileName());
  return file.readAll();
}

QStringList CliTest::files() const {
  QStringList names =
      QDir(folder_.path()).entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot);
  names.sort();
  return names;
}

} // namespace xov::cli
