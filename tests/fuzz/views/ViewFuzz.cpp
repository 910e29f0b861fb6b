#include "tests/fuzz/views/ViewFuzz.h"

#include "XOV_Graphics/platform/RecordingContext.h"
#include "XOV_Graphics/views/xy/XOVChartView.h"
#include "tests/fuzz/Claims.h"
#include "tests/views/all/HostedViews.h"

#include <QMetaProperty>

#include <algorithm>
#include <cmath>

namespace xov::fuzz {

namespace {

using testing::HostedView;
using testing::RandomHost;

// Pixels cost more than all else under a sanitizer: pictures are cut to this, and larger views are only recorded.
constexpr double kPictureWidth = 200;
constexpr double kPictureHeight = 140;
constexpr double kLargestOnPaper = 1200.0 * 900;
// The images of a document are made as fine as paper is, which took most of the time.
constexpr double kLargestDocument = 200.0 * 200;
constexpr int kSmallest = 4; // points; larger ones are made half as wide and high, which shows as much

template <typename ViewType>
HostedView plainView(RandomHost& host) {
  auto view = std::make_unique<ViewType>(host.frame());
  if constexpr (std::is_base_of_v<XOVView, ViewType>) host.dress(*view);
  return {std::move(view), {}};
}

HostedView hostedView(QLatin1String name, RandomHost& host) {
  if (name == QLatin1String("XOVView")) return plainView<XOVView>(host);
  if (name == QLatin1String("XOVChartView")) return plainView<XOVChartView>(host);
  for (const testing::ViewMaker& maker : testing::viewMakers()) {
    if (name == QLatin1String(maker.name)) return maker.make(host);
  }
  require(false, "there is a view of each name", name);
  return {};
}

QVariant anyValue(const QMetaProperty& property, RandomHost& host) {
  if (property.isEnumType()) {
    const QMetaEnum names = property.enumerator();
    return names.value(host.count(names.keyCount() - 1));
  }
  switch (property.typeId()) {
  case QMetaType::Bool:
    return host.chance(0.5);
  case QMetaType::Int:
    return host.chance(0.7) ? host.count(300) : host.count(2000000000) - 1000000000;
  case QMetaType::QColor:
    return host.chance(0.9) ? QColor::fromRgba(QRgb(host.count(0x7FFFFFFF)) << 1) : QColor();
  case QMetaType::QDateTime:
    return host.chance(0.9) ? host.time() : QDateTime();
  case QMetaType::QString:
    return QString(host.count(300), QChar(char16_t(host.count(0xFFFF))));
  default:
    return double(host.number());
  }
}

void setAnyProperties(View& view, RandomHost& host) {
  const QMetaObject& type = *view.metaObject();
  const int first = View::staticMetaObject.propertyOffset();
  for (int n = host.count(6); n > 0; --n) {
    const QMetaProperty property = type.property(first + host.count(type.propertyCount() - first - 1));
    property.write(&view, anyValue(property, host));
  }
}

QPointF anyPoint(const View& view, RandomHost& host) {
  if (host.chance(0.2)) return {double(host.number()), double(host.number())};
  return {view.bounds().width() * host.between(0, 1), view.bounds().height() * host.between(0, 1)};
}

// What a hand that moves over a view asks it, and where it moves it to.
void handle(XOVView& view, RandomHost& host) {
  const QPointF point = anyPoint(view, host);
  for (const PlotQuantity& quantity : view.readout(point).quantities) {
    require(!quantity.text.isEmpty() && !std::isinf(quantity.value), "a readout says something", quantity.text);
  }
  const auto found = view.recordAt(point);
  require(!found || found->record, "a record that is pointed at is there");
  const QRectF box(point, anyPoint(view, host));
  testing::askOfKind(view, box, host);
  if (host.chance(0.3)) view.showPart(view.partInside(box));
  if (host.chance(0.3)) {
    const auto any = [&host] { return double(host.number()); };
    view.showPart(PlotPart{{any(), any()}, {any(), any()}, any()});
  }
}

void requireWithinBudget(const RecordingContext& recording) {
  const std::size_t items = recording.items().size();
  const auto texts =
      std::size_t(std::ranges::count(recording.items(), RecordedItem::Kind::Text, &RecordedItem::kind));
  require(items <= testing::kMostItems, "a picture has a bounded number of items", QString::number(items));
  require(texts <= testing::kMostTexts, "a picture has a bounded number of texts", QString::number(texts));
  require(recording.stateDepth() == 1, "a drawing restores what it saves");
}

bool isOnPaper(const QRectF& bounds) { return bounds.width() * bounds.height() <= kLargestOnPaper; }

void drawOnAll(View& view, RandomHost& host) {
  RecordingContext recording;
  view.drawInto(recording);
  requireWithinBudget(recording);
  const QRectF bounds = view.bounds();
  if (!isOnPaper(bounds)) return;
  const QSizeF size(std::min(bounds.width(), kPictureWidth), std::min(bounds.height(), kPictureHeight));
  const QPointF corner((bounds.width() - size.width()) * host.between(0, 1),
                       (bounds.height() - size.height()) * host.between(0, 1));
  view.setExportPixelRatio(host.chance(0.8) ? 1 : host.between(0, 3));
  const bool hasPixels = std::min(size.width(), size.height()) * view.exportPixelRatio() >= 1;
  require(!view.pictureOfRect(QRectF(corner, size)).isNull() || !hasPixels, "a view gives a picture",
          view.exportError());
  if (host.chance(0.7) || bounds.width() * bounds.height() > kLargestDocument)
    require(view.dataWithPDFInsideRect(bounds).startsWith("%PDF-") || size.isEmpty(), "a view gives a page",
            view.exportError());
  else
    require(view.dataWithSVGInsideRect(bounds).contains("</svg>") || size.isEmpty(), "a view gives a document",
            view.exportError());
}

} // namespace

void drawAnyOf(std::span<const char* const> names, std::span<const std::uint8_t> bytes) {
  RandomHost host(bytes);
  HostedView hosted = hostedView(QLatin1String(names[std::size_t(host.count(int(names.size()) - 1))]), host);
  View& view = *hosted.view;
  if (std::min(view.width(), view.height()) > kSmallest && isOnPaper(view.bounds())) view.resize(view.size() / 2);
  setAnyProperties(view, host);
  auto* const plot = qobject_cast<XOVView*>(&view);
  if (plot != nullptr && host.chance(0.3)) handle(*plot, host); // before it was drawn
  drawOnAll(view, host);
  if (plot == nullptr) return;
  for (int n = host.count(3); n > 0; --n)
    handle(*plot, host);
  if (!plot->shownPart()) return;
  RecordingContext recording;
  view.drawInto(recording);
  requireWithinBudget(recording);
}

} // namespace xov::fuzz
