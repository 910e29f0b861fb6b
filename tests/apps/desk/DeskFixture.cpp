#include "tests/apps/desk/DeskFixture.h"

#include "XOV_Graphics/seismic/SacSeismogram.h"
#include "XOV_Graphics/seismic/UtcTime.h"
#include "XOV_Graphics/seismic/io/sac/SacWriter.h"
#include "apps/xov/commands/CommandLine.h"

#include <QFile>
#include <QTest>

#include <cmath>

namespace xov::desk {

namespace {

constexpr int kDeskPatienceMs = 20000;
constexpr float kDeskInterval = 0.1F;

} // namespace

DeskTest::DeskTest() : window_(std::make_unique<MainWindow>(runner())) {}

DeskTest::~DeskTest() {
  window_.reset();
  PlotMaker::waitForAll();
}

CommandRunner DeskTest::runner() {
  return [](const std::vector<std::string>& words) { return int(cli::CommandLine().run(words)); };
}

QString DeskTest::writeRecord(const QString& name, const char* station, const char* component, int samples) {
  SacHeader header;
  header.delta = kDeskInterval;
  header.b = 0;
  header.knetwk = "XX";
  header.kstnm = station;
  header.kcmpnm = component;
  setReferenceTime(header, QDateTime(QDate(2011, 3, 11), QTime(5, 47, 30), Qt::UTC));
  std::vector<float> values(std::size_t(samples), 0.F);
  for (std::size_t i = 0; i < values.size(); ++i)
    values[i] = float(1000 * std::sin(double(i) * 0.3));
  const Status status = writeSac(SacSeismogram(header, std::move(values)), at(name));
  EXPECT_TRUE(status) << qPrintable(status.error());
  return at(name);
}

void DeskTest::writeFile(const QString& name, const QByteArray& contents) {
  QFile file(at(name));
  ASSERT_TRUE(file.open(QIODevice::WriteOnly)) << qPrintable(file.fileName());
  ASSERT_EQ(file.write(contents), contents.size());
}

PlotRequest DeskTest::request(const QString& kind, const QStringList& files) const {
  PlotRequest request;
  request.kind = kind;
  request.files = files;
  return request;
}

bool DeskTest::hasPlot(const Pane& pane) {
  return QTest::qWaitFor([&pane] { return !pane.isBusy(); }, kDeskPatienceMs) && pane.view() != nullptr;
}

} // namespace xov::desk
