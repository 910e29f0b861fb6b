#include "tests/views/all/RandomHost.h"

#include "XOV_Graphics/seismic/UtcTime.h"

#include <cmath>
#include <limits>

namespace xov::testing {

std::uint32_t RandomHost::take(int bytes) {
  std::uint32_t value = 0;
  for (; bytes > 0 && !bytes_.empty(); --bytes) {
    value = value << 8 | bytes_.front();
    bytes_ = bytes_.subspan(1);
  }
  return value;
}

bool RandomHost::chance(double probability) {
  if (isOfBytes_) return take(1) >= 256 * (1 - probability);
  return std::bernoulli_distribution(probability)(random_);
}

int RandomHost::count(int most) {
  if (!isOfBytes_) return std::uniform_int_distribution<int>(0, most)(random_);
  if (most <= 0) return 0;
  const int bytes = most > 0xFFFF ? 4 : most > 0xFF ? 2 : 1;
  return int(take(bytes) % (std::uint32_t(most) + 1));
}

double RandomHost::between(double lower, double upper) {
  if (isOfBytes_) return lower + (upper - lower) * take(2) / 0xFFFF;
  return std::uniform_real_distribution<double>(lower, upper)(random_);
}

float RandomHost::number() {
  constexpr float kOdd[] = {0,
                            -0.0f,
                            1e-38f,
                            3e38f,
                            -3e38f,
                            kUndefinedValue,
                            std::numeric_limits<float>::quiet_NaN(),
                            std::numeric_limits<float>::infinity(),
                            -std::numeric_limits<float>::infinity(),
                            std::numeric_limits<float>::denorm_min()};
  if (chance(0.2)) return kOdd[count(int(std::size(kOdd)) - 1)];
  const double magnitude = between(-3, 6);
  const double sign = chance(0.5) ? 1 : -1;
  return float(sign * std::pow(10, magnitude));
}

std::vector<float> RandomHost::samples(int most) {
  std::vector<float> values(std::size_t(count(most)));
  const bool odd = chance(0.3);
  const float scale = number();
  // One byte for all of them: they would use up what a fuzzer has.
  if (isOfBytes_) random_.seed(take(1));
  std::normal_distribution<float> noise;
  for (float& value : values)
    value = odd && chance(0.1) ? number() : noise(random_) * scale;
  return values;
}

QDateTime RandomHost::time() {
  if (chance(0.05)) return QDateTime(QDate(9999, 12, 31), QTime(23, 59, 59), Qt::UTC);
  if (chance(0.05)) return QDateTime(QDate(1, 1, 1), QTime(0, 0), Qt::UTC);
  return QDateTime(QDate(2011, 3, 11), QTime(5, 46, 23), Qt::UTC).addMSecs(count(600000));
}

std::shared_ptr<SeismogramRecord> RandomHost::record() {
  if (chance(0.05)) return nullptr;
  auto record =
      std::make_shared<FakeRecord>(samples(3000), chance(0.7) ? 0.05f : number(), chance(0.7) ? 0 : number());
  record->station = QStringLiteral("STA");
  record->network = QStringLiteral("XX");
  record->component = QStringLiteral("BHZ");
  record->file = QStringLiteral("/data/XX.STA.BHZ.sac");
  if (chance(0.8)) {
    const QDateTime reference = time();
    setReferenceTime(record->header, reference);
    record->reference = std::make_shared<UtcTime>(reference);
  }
  record->arrivalSeconds = number();
  record->firstArrivalSeconds = chance(0.5) ? 10 : number();
  record->originSeconds = number();
  record->distanceDeg = number();
  record->azimuthDeg = number();
  record->depthKm = number();
  for (int key = 0; key < 12; ++key)
    record->picks[key] = chance(0.5) ? float(count(100)) : number();
  if (chance(0.2)) record->endSeconds = number();
  if (chance(0.2)) record->lowest = number();
  if (chance(0.2)) record->highest = number();
  return record;
}

std::shared_ptr<SeismogramArray> RandomHost::records() {
  auto records = std::make_shared<SeismogramArray>();
  for (int n = count(8); n > 0; --n)
    records->push_back(record());
  return records;
}

QRectF RandomHost::frame() {
  if (chance(0.1)) return {0, 0, double(1 + count(3)), double(1 + count(3))};
  if (chance(0.03)) return {0, 0, 5000, 5000};
  return {0, 0, double(1 + count(1200)), double(1 + count(900))};
}

void RandomHost::dress(XOVView& view) {
  if (chance(0.5)) view.setTitle(QStringLiteral("Random %1 view").arg(number()));
  if (chance(0.5)) view.setXLabelString(QStringLiteral("Time (s)"));
  if (chance(0.3)) view.setYLabelString(QString(200, QLatin1Char('y')));
  if (chance(0.5)) view.setXLimitsMinMax(number(), number());
  if (chance(0.5)) view.setYLimitsMinMax(number(), number());
  view.setMinYRange(chance(0.5) ? XOVView::kUnsetRange : number());
  view.set_fixedXAxisRange(chance(0.5));
  view.set_fixedYAxisRange(chance(0.5));
  view.set_showPlotTitle(chance(0.5));
  view.set_timeStamp(chance(0.3));
  if (chance(0.2)) view.setLabelFontSize(number());
  if (chance(0.1)) view.setXAxisPath(nullptr);
  view.setExportPixelRatio(std::array{1.0, 1.5, 2.0}[std::size_t(count(2))]);
}

} // namespace xov::testing
