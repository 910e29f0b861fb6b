#include "XOV_Graphics/platform/RecordingContext.h"
#include "XOV_Graphics/views/map/geoMapView.h"
#include "XOV_Graphics/views/seismic/MultiSeisView.h"
#include "XOV_Graphics/views/seismic/SeisView01.h"
#include "XOV_Graphics/views/timeline/helicorderView.h"
#include "tests/views/all/HostedViews.h"

#include <gtest/gtest.h>

#include <QLoggingCategory>

#include <array>
#include <cmath>

namespace xov {
namespace {

using testing::HostedView;
using testing::RandomHost;
using testing::viewMakers;

// Whatever a host does, a view draws into a picture, onto paper and into a recording, and gives the same picture
// twice.
TEST(RandomViews, drawWhatTheyCanOfAnything) {
  QLoggingCategory::setFilterRules(QStringLiteral("xov.cells.debug=false"));
  for (unsigned seed = 0; seed < 400; ++seed) {
    RandomHost host(seed);
    const auto& [name, make] = viewMakers()[seed % viewMakers().size()];
    SCOPED_TRACE(std::string(name) + " with seed " + std::to_string(seed));
    HostedView hosted = make(host);
    const QRectF bounds = hosted.view->bounds();
    const QImage picture = hosted.view->pictureOfRect(bounds);
    ASSERT_FALSE(picture.isNull());
    const double ratio = hosted.view->exportPixelRatio();
    EXPECT_EQ(picture.size(),
              QSize(int(std::lround(bounds.width() * ratio)), int(std::lround(bounds.height() * ratio))));
    EXPECT_TRUE(hosted.view->dataWithPDFInsideRect(bounds).startsWith("%PDF-"));
    RecordingContext recording;
    hosted.view->drawInto(recording);
    EXPECT_FALSE(recording.items().empty());
    EXPECT_EQ(recording.stateDepth(), 1u);
  }
}

// Axes and maps of limits far beyond what they are made for would have thousands of labels, for seconds.
TEST(RandomViews, drawABoundedNumberOfTextsWhateverTheLimits) {
  constexpr PlotLimits kLimits[] = {{0, 440000, 0, 440000}, {0, 60, 0, 60000}, {-1e6F, 1e6F, -1e3F, 1e3F}};
  for (std::size_t i = 0; i < viewMakers().size(); ++i) {
    for (const PlotLimits& limits : kLimits) {
      RandomHost host{unsigned(i)};
      HostedView hosted = viewMakers()[i].make(host);
      auto& view = static_cast<XOVView&>(*hosted.view);
      view.resize(900, 700);
      view.set_fixedXAxisRange(true);
      view.set_fixedYAxisRange(true);
      view.setXLimitsMinMax(limits.xmin, limits.xmax);
      view.setYLimitsMinMax(limits.ymin, limits.ymax);
      RecordingContext recording;
      view.drawInto(recording);
      EXPECT_LE(recording.items().size(), testing::kMostItems) << viewMakers()[i].name;
      EXPECT_LE(recording.texts().size(), testing::kMostTexts) << viewMakers()[i].name;
    }
  }
}

// Mostly within a view, else far away or nowhere.
QPointF anyPoint(const QRectF& bounds, RandomHost& host) {
  const QPointF within(bounds.width() * host.count(1000) / 1000, bounds.height() * host.count(1000) / 1000);
  return host.chance(0.8) ? within : QPointF(double(host.number()), double(host.number()));
}

// What a hand that moves over a view asks it.
void askAboutAnything(const XOVView& view, RandomHost& host) {
  const QPointF point = anyPoint(view.bounds(), host);
  for (const PlotQuantity& quantity : view.readout(point).quantities) {
    EXPECT_FALSE(quantity.text.isEmpty());
    EXPECT_FALSE(std::isinf(quantity.value));
  }
  const auto found = view.recordAt(point);
  EXPECT_TRUE(!found || found->record);
  const QRectF box(point, anyPoint(view.bounds(), host));
  testing::askOfKind(view, box, host);
}

TEST(RandomViews, tellWhatTheyCanOfAnyPlace) {
  QLoggingCategory::setFilterRules(QStringLiteral("xov.cells.debug=false"));
  for (unsigned seed = 0; seed < 6 * viewMakers().size(); ++seed) {
    RandomHost host(5000 + seed);
    const auto& [name, make] = viewMakers()[seed % viewMakers().size()];
    SCOPED_TRACE(std::string(name) + " with seed " + std::to_string(5000 + seed));
    HostedView hosted = make(host);
    const auto& view = static_cast<const XOVView&>(*hosted.view);
    askAboutAnything(view, host); // before it was drawn
    RecordingContext recording;
    hosted.view->drawInto(recording);
    for (int i = 0; i < 20; ++i)
      askAboutAnything(view, host);
    hosted.data.reset(); // the host lets go of what the view only refers to
    askAboutAnything(view, host);
  }
}

/// A rectangle of whole points inside a view.
QRect partOf(const QRectF& bounds, RandomHost& host) {
  const int width = 1 + host.count(int(bounds.width()) - 1), height = 1 + host.count(int(bounds.height()) - 1);
  return {host.count(int(bounds.width()) - width), host.count(int(bounds.height()) - height), width, height};
}

/// Compares random parts of a view with the same cuts of the whole, in pictures and on screen.
void expectPartsOfWhole(View& view, RandomHost& host) {
  const QRectF bounds = view.bounds();
  view.pictureOfRect(bounds); // some views keep limits that they find when they draw first
  for (const double ratio : {1.0, 1.5, 2.0}) {
    view.setExportPixelRatio(ratio);
    const QImage whole = view.pictureOfRect(bounds);
    for (int i = 0; i < 4; ++i) {
      const QRect part = partOf(bounds, host);
      const QImage picture = view.pictureOfRect(part);
      const double top = bounds.height() - part.y() - part.height();
      const int left = std::min(int(std::lround(part.x() * ratio)), whole.width() - picture.width());
      const int upper = std::min(int(std::lround(top * ratio)), whole.height() - picture.height());
      ASSERT_EQ(picture, whole.copy(QRect(QPoint(left, upper), picture.size())))
          << "ratio " << ratio << " at " << part.x() << ',' << part.y() << ' ' << part.width() << 'x'
          << part.height();
    }
  }
  const QImage window = view.grab().toImage();
  for (int i = 0; i < 4; ++i) {
    const QRect part = partOf(bounds, host);
    ASSERT_EQ(view.grab(part).toImage(), window.copy(part))
        << "window at " << part.x() << ',' << part.y() << ' ' << part.width() << 'x' << part.height();
  }
}

TEST(RandomViews, everyPartIsTheSameCutOfTheWhole) {
  QLoggingCategory::setFilterRules(QStringLiteral("xov.cells.debug=false"));
  for (unsigned seed = 0; seed < 2 * viewMakers().size(); ++seed) {
    RandomHost host(1000 + seed);
    const auto& [name, make] = viewMakers()[seed % viewMakers().size()];
    SCOPED_TRACE(std::string(name) + " with seed " + std::to_string(1000 + seed));
    HostedView hosted = make(host);
    hosted.view->resize(20 + host.count(380), 20 + host.count(280));
    static_cast<XOVView&>(*hosted.view).set_timeStamp(false); // the clock goes on
    expectPartsOfWhole(*hosted.view, host);
  }
}

// Dense traces are drawn as finely as the whole of them needs.
TEST(RandomViews, everyPartOfADenseTraceIsTheSameCut) {
  RandomHost host(7);
  std::vector<float> samples(200000);
  std::normal_distribution<float> noise;
  for (std::size_t i = 0; i < samples.size(); ++i)
    samples[i] = noise(host.engine()) * float(1 + i / 20000);
  const auto record = std::make_shared<testing::FakeRecord>(samples);
  const auto records = std::make_shared<SeismogramArray>(SeismogramArray{record});
  SeisView01 overlay({0, 0, 500, 300});
  overlay.setWvfrmsArray(records);
  expectPartsOfWhole(overlay, host);
  MultiSeisView section({0, 0, 500, 300});
  section.setWvfrmsArray(records);
  expectPartsOfWhole(section, host);
}

} // namespace
} // namespace xov
