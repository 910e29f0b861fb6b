#include "bench/Records.h"

#include "XOV_Graphics/seismic/SacSeismogram.h"
#include "XOV_Graphics/views/seismic/MultiSeisView.h"
#include "XOV_Graphics/views/seismic/SeisView01.h"
#include "XOV_Graphics/views/seismic/SeisView02.h"
#include "XOV_Graphics/views/timeline/helicorderView.h"
#include "bench/Contest.h"

#include <QPainter>

#include <cmath>
#include <functional>
#include <memory>
#include <random>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace xov::bench {

namespace {

constexpr QSize kSize(900, 600);
constexpr float kDelta = 0.01F;
constexpr float kDeviation = 100;

using Records = std::shared_ptr<const SeismogramArray>;

enum class Signal { Noise, Sine, Walk, NoiseWithGaps };

// Records that begin at the same time.
Records recordsOf(std::size_t count, std::size_t samples, Signal signal = Signal::Noise) {
  std::mt19937 random(2009);
  auto records = std::make_shared<SeismogramArray>();
  for (std::size_t k = 0; k < count; ++k) {
    std::vector<float> values(samples);
    for (std::size_t i = 0; i < samples; ++i) {
      const double noise = double(random()) / 4294967296.0 - 0.5;
      const double sine = std::sin(0.05 * double(i) + double(k));
      values[i] = kDeviation * float(signal == Signal::Sine ? sine : noise);
      if (signal == Signal::NoiseWithGaps && i % 100 == 99) values[i] = std::nanf("");
    }
    SacHeader header;
    header.delta = kDelta;
    header.b = 0;
    const std::string station = std::string("S").append(std::to_string(k));
    header.kstnm = std::string_view(station);
    header.gcarc = 10 + 0.01F * float(k);
    header.az = float(k % 360);
    records->push_back(std::make_shared<SacSeismogram>(header, std::move(values)));
  }
  return records;
}

template <class ViewOfRecords>
std::unique_ptr<ViewOfRecords> viewOf(const Records& records) {
  auto view = std::make_unique<ViewOfRecords>(QRectF(QPointF(0, 0), QSizeF(kSize)));
  view->setWvfrmsArray(records);
  return view;
}

std::unique_ptr<helicorderView> drumOf(const Records& pieces) {
  auto view = std::make_unique<helicorderView>(QRectF(QPointF(0, 0), QSizeF(kSize)));
  view->setWvfrmArray(pieces);
  return view;
}

// A quarter of its rows' time.
std::unique_ptr<helicorderView> sixHoursOf(const Records& pieces) {
  auto view = drumOf(pieces);
  view->showPart(PlotPart{.x = {0, 21600}, .y = {}});
  return view;
}

// A month at 100 Hz, with or without an index of its extremes.
class Month : public SacSeismogram {
public:
  using SacSeismogram::SacSeismogram;
  const SampleIndex* sampleIndex() const override { return isIndexed ? SacSeismogram::sampleIndex() : nullptr; }
  BorrowedSamples borrowedSamples() const override {
    BorrowedSamples samples = SacSeismogram::borrowedSamples();
    samples.index = sampleIndex();
    return samples;
  }
  bool isIndexed = true;
};

std::shared_ptr<Month> month(Signal signal) {
  constexpr std::size_t kSamples = 30ULL * 8640000;
  constexpr std::size_t kGapEvery = 8640000, kGap = 10000;
  std::mt19937 random(2009);
  std::vector<float> values(kSamples);
  double walk = 0;
  for (std::size_t i = 0; i < kSamples; ++i) {
    const double noise = double(random()) / 4294967296.0 - 0.5;
    walk += noise;
    values[i] = float(signal == Signal::Walk ? walk : noise * double(kDeviation));
    if (signal == Signal::NoiseWithGaps && i % kGapEvery < kGap) values[i] = std::nanf("");
  }
  SacHeader header;
  header.delta = kDelta;
  header.b = 0;
  return std::make_shared<Month>(header, std::move(values));
}

// All records over each other, or in a band each.
void paintHairlines(const Records& records, std::size_t bands) {
  QImage paper(kSize, QImage::Format_ARGB32_Premultiplied);
  paper.fill(Qt::white);
  QPainter painter(&paper);
  painter.setRenderHint(QPainter::Antialiasing);
  QPen pen(Qt::black, 1);
  pen.setCosmetic(true);
  painter.setPen(pen);
  const double band = kSize.height() / double(bands);
  for (std::size_t k = 0; k < records->size(); ++k) {
    const SeismogramRecord& record = *(*records)[k];
    const auto flush = [&painter](QPolygonF& line) {
      painter.drawPolyline(line);
      line.clear();
    };
    QPolygonF line;
    for (int i = 0; i < record.npts(); ++i) {
      const double value = double(record.GetSacSeis()[i]);
      if (!std::isfinite(value)) {
        flush(line);
        continue;
      }
      line << QPointF(i * double(kSize.width()) / record.npts(),
                      (double(k % bands) + 0.5 + value / double(kDeviation)) * band);
    }
    flush(line);
  }
}

} // namespace

std::shared_ptr<const SeismogramArray> dayInPieces(int pieces) {
  constexpr int kSamples = 8640000;
  std::mt19937 random(2009);
  auto records = std::make_shared<SeismogramArray>();
  for (int k = 0; k < pieces; ++k) {
    std::vector<float> values(std::size_t(kSamples / pieces));
    for (float& value : values)
      value = float(random() % 2000) - 1000;
    SacHeader header;
    header.delta = kDelta;
    header.b = kDelta * float(values.size()) * float(k);
    header.nzyear = 2024;
    header.nzjday = 100;
    header.nzhour = header.nzmin = header.nzsec = header.nzmsec = 0;
    records->push_back(std::make_shared<SacSeismogram>(header, std::move(values)));
  }
  return records;
}

QString recordTable(int rounds) {
  struct Fill {
    const char* name;
    Records records;
  };
  const Fill fills[] = {{"filled stack of 10 x 360,000 samples of noise", recordsOf(10, 360000)},
                        {"the same with a gap every 100", recordsOf(10, 360000, Signal::NoiseWithGaps)},
                        {"filled stack of 10 x 1,000 samples of a sine", recordsOf(10, 1000, Signal::Sine)},
                        {"filled stack of 1,000 x 1,000 samples", recordsOf(1000, 1000)}};
  QImage drawn;
  const auto draw = [&drawn](XOVView& view) { drawn = view.pictureOfRect(view.bounds()); };
  const auto pageOf = [](XOVView& view) { return view.dataWithPDFInsideRect(view.bounds()); };
  std::vector<Contest> contests;
  std::vector<std::unique_ptr<XOVView>> views;
  const auto add = [&](const char* name, std::unique_ptr<XOVView> view, std::function<void()> rival) {
    contests.push_back({name, [&draw, &shown = *view] { draw(shown); }});
    contests.push_back({"", std::move(rival)});
    views.push_back(std::move(view));
  };
  for (const Fill& fill : fills) {
    auto plain = viewOf<SeisView01>(fill.records), filled = viewOf<SeisView01>(fill.records);
    filled->setFillPositive(true);
    XOVView& stroked = *views.emplace_back(std::move(plain));
    add(fill.name, std::move(filled), [&draw, &stroked] { draw(stroked); });
    contests.push_back({"its PDF page", [&pageOf, &shown = *views.back()] { pageOf(shown); }});
    contests.push_back({"", [&pageOf, &stroked] { pageOf(stroked); }});
  }
  const Records zoomed = recordsOf(100, 240), thousand = recordsOf(1000, 1000), many = recordsOf(10000, 1000);
  add("section of 100 x 240 samples", viewOf<MultiSeisView>(zoomed), [&] { paintHairlines(zoomed, 100); });
  add("section of 1,000 x 1,000 samples", viewOf<MultiSeisView>(thousand), [&] { paintHairlines(thousand, 1000); });
  add("section of 10,000 x 1,000 samples", viewOf<MultiSeisView>(many), [&] { paintHairlines(many, 10000); });
  auto bands = viewOf<SeisView02>(many);
  bands->setplotStyle(SeisView02::kBands);
  add("bands of 10,000 x 1,000 samples", std::move(bands), [&] { paintHairlines(many, 10000); });
  const Records oneDay = dayInPieces(1), pieces = dayInPieces(8640);
  XOVView& whole = *views.emplace_back(drumOf(oneDay));
  add("drum of a day in 8,640 pieces", drumOf(pieces), [&draw, &whole] { draw(whole); });
  XOVView& sixHours = *views.emplace_back(sixHoursOf(oneDay));
  add("zoomed to six hours", sixHoursOf(pieces), [&draw, &sixHours] { draw(sixHours); });
  const std::pair<const char*, std::shared_ptr<Month>> months[] = {
      {"a month at 100 Hz, noise", month(Signal::Noise)},
      {"a month, a random walk", month(Signal::Walk)},
      {"a month with 30 gaps", month(Signal::NoiseWithGaps)}};
  std::vector<Records> monthRecords;
  for (const auto& [name, record] : months) {
    monthRecords.push_back(std::make_shared<const SeismogramArray>(SeismogramArray{record}));
    XOVView& view = *views.emplace_back(viewOf<MultiSeisView>(monthRecords.back()));
    const auto drawMonth = [&draw, &view, &samples = *record](bool isIndexed) {
      samples.isIndexed = isIndexed;
      draw(view);
    };
    contests.push_back({name, [drawMonth] { drawMonth(true); }});
    contests.push_back({"", [drawMonth] { drawMonth(false); }});
  }
  runInTurn(contests, rounds);
  return QStringLiteral(
             "| 900 × 600 points | CPU ms | stroke, QPainter, one piece, no index: CPU ms | ratio | ms | its ms |\n"
             "|---|---:|---:|---:|---:|---:|\n") +
         pairedRows(contests);
}

} // namespace xov::bench
