#include "tests/hosts/HostedPlots.h"

#include "XOV_Graphics/seismic/Hypocentre.h"
#include "XOV_Graphics/seismic/UtcTime.h"
#include "XOV_Graphics/views/image/SpectrogramView.h"
#include "XOV_Graphics/views/seismic/MultiSeisView.h"
#include "XOV_Graphics/views/seismic/SeisView01.h"
#include "XOV_Graphics/views/seismic/SeisView02.h"
#include "XOV_Graphics/views/seismic/ThreeCompView.h"
#include "XOV_Graphics/views/seismic/uniformTimeSeriesView.h"
#include "XOV_Graphics/views/seismic/wvfrmView.h"
#include "XOV_Graphics/views/timeline/XOVRealTimeDisplayView02.h"
#include "XOV_Graphics/views/timeline/helicorderView.h"
#include "XOV_Graphics/views/timeline/realTimeDisplayView01.h"
#include "tests/support/TestRecords.h"

#include <cmath>

namespace xov::testing {

namespace {

const QRectF kHostFrame(0, 0, 300, 200);
constexpr int kSamples = 400;

// What an observation of a host's own does when it is asked: its components are those of an array.
class HookedObservation : public ThreeComponentObservation {
public:
  explicit HookedObservation(std::shared_ptr<SeismogramArray> records) : records_(std::move(records)) {}
  std::shared_ptr<SeismogramRecord> vertical() const override { return at(0); }
  std::shared_ptr<SeismogramRecord> radial() const override { return at(1); }
  std::shared_ptr<SeismogramRecord> transverse() const override { return at(2); }

private:
  std::shared_ptr<SeismogramRecord> at(std::size_t i) const {
    return i < records_->size() ? (*records_)[i] : nullptr;
  }
  std::shared_ptr<SeismogramArray> records_;
};

class HookedSignal : public UniformSignal {
public:
  explicit HookedSignal(std::vector<float> samples) : samples_(std::move(samples)) {}
  std::function<void()> asked;
  const float* dataPointer() const override { return tell(), samples_.data(); }
  int npts() const override { return tell(), int(samples_.size()); }
  float delta() const override { return tell(), 0.1f; }
  float min() const override { return tell(), -1; }
  float max() const override { return tell(), 1; }
  QString description() const override { return tell(), QStringLiteral("signal"); }

private:
  void tell() const {
    if (asked) asked();
  }
  std::vector<float> samples_;
};

class HookedEvent : public Hypocentre {
public:
  using Hypocentre::Hypocentre;
  std::function<void()> asked;
  std::shared_ptr<SeisTime> _origin_time() const override { return tell(), Hypocentre::_origin_time(); }
  QDateTime oDate() const override { return tell(), Hypocentre::oDate(); }
  float magnitude() const override { return tell(), Hypocentre::magnitude(); }

private:
  void tell() const {
    if (asked) asked();
  }
};

std::vector<float> wave(int seed) {
  std::vector<float> samples;
  for (int i = 0; i < kSamples; ++i)
    samples.push_back(float(std::sin(0.05 * i * (seed + 1))));
  return samples;
}

std::shared_ptr<HookedRecord> hookedRecord(int seed) {
  auto record = std::make_shared<HookedRecord>(wave(seed), 0.1f);
  record->station = QStringLiteral("ST%1").arg(seed);
  record->network = QStringLiteral("XX");
  record->component = QStringLiteral("BHZ");
  record->file = QStringLiteral("/data/%1.sac").arg(seed);
  record->caption = record->station;
  record->distanceDeg = float(20 + seed);
  record->azimuthDeg = float(40 * seed);
  record->arrivalSeconds = 10;
  record->firstArrivalSeconds = 10;
  record->picks[0] = 12;
  record->labels[0] = QStringLiteral("S");
  record->reference = std::make_shared<UtcTime>(onTheDay(5, 0));
  setReferenceTime(record->header, onTheDay(5, 0));
  return record;
}

template <typename ViewType>
std::unique_ptr<XOVView> ofArray(HostedPlot& host) {
  auto view = std::make_unique<ViewType>(kHostFrame);
  view->setWvfrmsArray(host.records);
  return view;
}

std::unique_ptr<XOVView> section(HostedPlot& host) {
  auto view = std::make_unique<MultiSeisView>(kHostFrame);
  view->setWvfrmsArray(host.records);
  view->setStripPlacement(MultiSeisView::StripPlacement::ByDistanceKm);
  view->setShowZeroLine(true);
  view->setLabelsGiveWay(true);
  return view;
}

std::unique_ptr<XOVView> bands(HostedPlot& host) {
  auto view = std::make_unique<SeisView02>(kHostFrame);
  view->setWvfrmsArray(host.records);
  view->setplotStyle(1);
  return view;
}

std::unique_ptr<XOVView> pairs(HostedPlot& host) {
  auto view = std::make_unique<wvfrmView>(kHostFrame);
  view->setWvfrmArray(host.records);
  return view;
}

std::unique_ptr<XOVView> components(HostedPlot& host) {
  auto view = std::make_unique<ThreeCompView>(kHostFrame);
  host.observation = std::make_shared<HookedObservation>(host.records);
  view->setObservation(host.observation);
  return view;
}

std::unique_ptr<XOVView> series(HostedPlot& host) {
  auto view = std::make_unique<uniformTimeSeriesView>(kHostFrame);
  view->setWvfrmArray(host.signals);
  return view;
}

std::unique_ptr<XOVView> drum(HostedPlot& host) {
  auto view = std::make_unique<helicorderView>(kHostFrame);
  view->setWvfrmArray(host.records);
  view->setTheHypoArray(host.events);
  view->setNRows(4);
  view->setRowDuration(20);
  view->setShowEventLabels(true);
  view->setLocalZone(QTimeZone::utc());
  return view;
}

template <typename ViewType>
std::unique_ptr<XOVView> live(HostedPlot& host) {
  auto view = std::make_unique<ViewType>(kHostFrame);
  view->setWvfrmsArray(host.records);
  view->setEventOrigins(host.events);
  view->setDrawOriginTimes(true);
  view->setShowLatency(true);
  view->setRefDate(onTheDay(5, 1));
  view->setXLimitsMinMax(0, 60);
  return view;
}

std::unique_ptr<XOVView> powers(HostedPlot& host) {
  auto view = std::make_unique<SpectrogramView>(kHostFrame);
  view->setRecords(host.records);
  view->setShowSeismogram(true);
  return view;
}

} // namespace

void HostedPlot::setAsked(const std::function<void()>& asked) const {
  for (const auto& record : *records)
    if (const auto hooked = std::dynamic_pointer_cast<HookedRecord>(record)) hooked->asked = asked;
  for (const auto& signal : *signals)
    if (const auto hooked = std::dynamic_pointer_cast<HookedSignal>(signal)) hooked->asked = asked;
  for (const auto& event : *events)
    if (const auto hooked = std::dynamic_pointer_cast<HookedEvent>(event)) hooked->asked = asked;
}

const std::vector<RecordPlot>& recordPlots() {
  static const std::vector<RecordPlot> all = {
      {"section", section},
      {"overlay", ofArray<SeisView01>},
      {"bands", bands},
      {"pairs", pairs},
      {"components", components},
      {"series", series},
      {"drum", drum},
      {"live01", live<realTimeDisplayView01>},
      {"live02", live<XOVRealTimeDisplayView02>},
      {"spectrogram", powers},
  };
  return all;
}

HostedPlot hostedPlot(const RecordPlot& plot) {
  HostedPlot host;
  for (int seed = 0; seed < 3; ++seed) {
    host.records->push_back(hookedRecord(seed));
    host.signals->push_back(std::make_shared<HookedSignal>(wave(seed)));
  }
  for (int k = 0; k < 2; ++k) {
    HypocentreValues values;
    values.originTime = onTheDay(5, 0, 10 + 10 * k);
    values.preferredMagnitude = 5;
    values.Mw = 5;
    host.events->push_back(std::make_shared<HookedEvent>(values));
  }
  host.view = plot.make(host);
  return host;
}

} // namespace xov::testing
