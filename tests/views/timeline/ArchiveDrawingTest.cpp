#include "TimelineDrawing.h"
#include "XOV_Graphics/base/PagedSamples.h"
#include "XOV_Graphics/seismic/SacSeismogram.h"
#include "XOV_Graphics/seismic/io/Readers.h"
#include "XOV_Graphics/seismic/io/archive/Archive.h"
#include "XOV_Graphics/seismic/io/sac/SacWriter.h"
#include "XOV_Graphics/seismic/prepare/DrumPage.h"
#include "XOV_Graphics/views/seismic/MultiSeisView.h"
#include "XOV_Graphics/views/seismic/SeisView01.h"
#include "XOV_Graphics/views/timeline/helicorderView.h"

#include <gtest/gtest.h>

#include <QFile>
#include <QTemporaryDir>

#include <cmath>

namespace xov::testing {
namespace {

// Noise over a slow wave, with a gap; so many samples that pictures ask the index.
QString longFile(const QTemporaryDir& folder) {
  std::mt19937 random(7);
  std::vector<float> samples = noise(random, 2'000'000, 40);
  for (std::size_t i = 0; i < samples.size(); ++i)
    samples[i] += 100 * std::sin(1e-5F * float(i));
  std::fill_n(samples.begin() + 1'200'000, 30'000, std::nanf(""));
  SacHeader header;
  header.delta = 0.01F;
  header.b = 0;
  header.kstnm = "TLY";
  setReferenceTime(header, utc(2011, 3, 11));
  const QString path = folder.filePath(QStringLiteral("long.sac"));
  EXPECT_TRUE(bool(writeSac(SacSeismogram(header, std::move(samples)), path)));
  return path;
}

struct Drawn {
  QImage picture;
  QByteArray page;
};

template <typename ViewOfRecords, typename SetUp>
Drawn drawn(const SeismogramArray& records, const SetUp& setUp) {
  ViewOfRecords view(QRectF(0, 0, 200, 260));
  const auto shown = std::make_shared<const SeismogramArray>(records);
  setUp(view, shown);
  return {view.pictureOfRect(view.bounds()), view.dataWithPDFInsideRect(view.bounds())};
}

// Shows what lies between two times.
class SectionOfSeconds : public MultiSeisView {
public:
  using MultiSeisView::MultiSeisView;
  void computePlotLimits() override {
    MultiSeisView::computePlotLimits();
    setXLimitsMinMax(start, end);
  }
  float start = 0, end = 20000;
};

void expectSame(const Drawn& found, const Drawn& expected) {
  EXPECT_FALSE(expected.picture.isNull());
  EXPECT_EQ(found.picture, expected.picture);
  EXPECT_EQ(found.page, expected.page);
}

} // namespace

TEST(ArchiveDrawing, isThatOfRecordsInMemory) {
  const QTemporaryDir folder;
  const QString path = longFile(folder);
  const SeismogramArray read = readSeismograms(path).value();
  const SeismogramArray opened = openSeismogramFile(path)->records;
  ASSERT_NE(opened[0]->borrowedSamples().source, nullptr);
  for (const float end : {20000.0F, 107.0F}) { // all of it, and a few seconds
    const auto section = [end](SectionOfSeconds& view, const auto& records) {
      view.setWvfrmsArray(records);
      view.start = end < 1000 ? 100.0F : 0.0F;
      view.end = end;
    };
    expectSame(drawn<SectionOfSeconds>(opened, section), drawn<SectionOfSeconds>(read, section));
  }
  const auto filled = [](SeisView01& view, const auto& records) {
    view.setWvfrmsArray(records);
    view.setFillPositive(true);
  };
  expectSame(drawn<SeisView01>(opened, filled), drawn<SeisView01>(read, filled));
}

TEST(ArchiveDrawing, isThatOfRecordsInMemoryOnADrum) {
  const QTemporaryDir folder;
  const QString path = longFile(folder);
  const auto page = [](SeismogramArray records) { return layOutDrum(std::move(records), 3600).value().pieces; };
  const SeismogramArray read = page(readSeismograms(path).value());
  SeismogramFile file = openSeismogramFile(path).value();
  const SeismogramArray opened = page(std::move(file.records));
  ASSERT_NE(opened[0]->borrowedSamples().source, nullptr);
  const auto drum = [](helicorderView& view, const auto& pieces) {
    view.setWvfrmArray(pieces);
    view.setNRows(6);
  };
  expectSame(drawn<helicorderView>(opened, drum), drawn<helicorderView>(read, drum));
}

} // namespace xov::testing
