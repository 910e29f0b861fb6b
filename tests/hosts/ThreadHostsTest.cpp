// Hosts that draw from several threads at once, a view each, and read files so.
#include "XOV_Graphics/seismic/io/Readers.h"
#include "XOV_Graphics/seismic/io/events/EventReaders.h"
#include "tests/hosts/HostedPlots.h"
#include "tests/seismic/MiniSeedBytes.h"
#include "tests/seismic/TemporaryFiles.h"
#include "tests/seismic/realtime/EventWords.h"

#include <gtest/gtest.h>

#include <QTemporaryDir>

#include <thread>

namespace xov {
namespace {

constexpr int kThreads = 4;

// Does the same in several threads at once.
template <typename Work>
void inThreads(Work work) {
  std::vector<std::thread> threads;
  for (int i = 0; i < kThreads; ++i)
    threads.emplace_back([&work, i] { work(i); });
  for (std::thread& thread : threads)
    thread.join();
}

struct Drawn {
  QImage picture;
  QByteArray page;
  QByteArray svg;
  bool operator==(const Drawn&) const = default;
};

Drawn drawn(XOVView& view) {
  return {view.pictureOfRect(view.bounds()), view.dataWithPDFInsideRect(view.bounds()),
          view.dataWithSVGInsideRect(view.bounds())};
}

class ThreadHosts : public ::testing::TestWithParam<testing::RecordPlot> {};
INSTANTIATE_TEST_SUITE_P(Plots, ThreadHosts, ::testing::ValuesIn(testing::recordPlots()), testing::recordPlotName);

TEST_P(ThreadHosts, drawTheSameFromFourThreadsAtOnce) {
  testing::HostedPlot alone = testing::hostedPlot(GetParam());
  const Drawn expected = drawn(*alone.view);
  std::vector<testing::HostedPlot> hosts;
  for (int i = 0; i < kThreads; ++i)
    hosts.push_back(testing::hostedPlot(GetParam()));
  std::vector<Drawn> found(kThreads);
  inThreads([&](int i) { found[std::size_t(i)] = drawn(*hosts[std::size_t(i)].view); });
  for (const Drawn& each : found) {
    EXPECT_EQ(each.picture, expected.picture);
    EXPECT_EQ(each.page, expected.page);
    EXPECT_EQ(each.svg, expected.svg);
  }
}

TEST(ThreadHostsOfFiles, writeFromFourThreadsAtOnce) {
  const QTemporaryDir folder;
  std::vector<testing::HostedPlot> hosts;
  for (int i = 0; i < kThreads; ++i)
    hosts.push_back(testing::hostedPlot(testing::recordPlots()[std::size_t(i)]));
  std::array<bool, kThreads> written{};
  inThreads([&](int i) {
    const QString path = folder.filePath(QString::number(i));
    XOVView& view = *hosts[std::size_t(i)].view;
    written[std::size_t(i)] = view.writePDFToFile(path + QStringLiteral(".pdf")) &&
                              view.writePNGToFile(path + QStringLiteral(".png")) &&
                              view.writeTIFToFile(path + QStringLiteral(".tif"));
  });
  for (const bool each : written)
    EXPECT_TRUE(each);
}

TEST(ThreadHostsOfFiles, readFromFourThreadsAtOnce) {
  const test::TemporaryFiles files;
  const QString events = files.write("events", test::eventText("a:10:4.0"));
  std::vector<std::int32_t> values(96);
  for (int i = 0; i < 96; ++i)
    values[std::size_t(i)] = i * i;
  const QString records =
      files.write("records", test::MiniSeedBytes().codes("GE", "WLF", "00", "BHZ").integers(values).bytes());
  std::array<int, kThreads> right{};
  inThreads([&](int i) {
    for (int turn = 0; turn < 5; ++turn) {
      const auto seismograms = readSeismogramFile(records);
      const auto hypocentres = readEvents(events);
      const bool isRight = seismograms && seismograms->records.size() == 1 && seismograms->records[0]->npts() == 96 &&
                           seismograms->records[0]->GetSacSeis()[95] == 95.0f * 95 && hypocentres &&
                           hypocentres->events.size() == 1;
      right[std::size_t(i)] += isRight ? 1 : 0;
    }
  });
  for (const int each : right)
    EXPECT_EQ(each, 5);
}

} // namespace
} // namespace xov
