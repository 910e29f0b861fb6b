// Hosts that go on and on: views, exports and drags by the thousand keep memory, descriptors and timers as they were.
#include "XOV_Graphics/platform/Drag.h"
#include "tests/hosts/HostedPlots.h"
#include "tests/views/all/AllViews.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QDir>
#include <QTemporaryDir>

#include <cstddef>
#include <malloc.h>

#if defined(__SANITIZE_ADDRESS__)
// GCC comes without the header of its sanitizer's allocator.
extern "C" std::size_t __sanitizer_get_current_allocated_bytes();
#endif

namespace xov {
namespace {

// Bytes that are asked for and not given back.
std::size_t bytesInUse() {
#if defined(__SANITIZE_ADDRESS__)
  return __sanitizer_get_current_allocated_bytes();
#else
  const struct mallinfo2 all = mallinfo2();
  return all.uordblks + all.hblkhd;
#endif
}

struct InUse {
  std::size_t bytes = 0;
  qsizetype descriptors = 0;
  qsizetype widgets = 0;
};

InUse inUse() {
  QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  return {
      bytesInUse(),
      QDir(QStringLiteral("/proc/self/fd")).entryList(QDir::NoDotAndDotDot | QDir::AllEntries | QDir::System).size(),
      QApplication::allWidgets().size()};
}

// What a thousand more leave behind, when caches have filled.
void expectFlat(const std::function<void(int)>& work) {
  constexpr int kWarmUp = 300;
  constexpr int kThousand = 1000;
  for (int i = 0; i < kWarmUp; ++i)
    work(i);
  const InUse before = inUse();
  for (int i = kWarmUp; i < kWarmUp + kThousand; ++i)
    work(i);
  const InUse after = inUse();
  EXPECT_EQ(after.descriptors, before.descriptors);
  EXPECT_EQ(after.widgets, before.widgets);
  // A leak of 64 bytes each would be seen; caches of texts and pictures have their limits.
  EXPECT_LT(double(after.bytes), double(before.bytes) + 64 * kThousand);
}

TEST(FlatResources, aThousandViews) {
  const auto kinds = testing::viewClasses(testing::AllViews());
  expectFlat([&](int i) {
    const std::unique_ptr<View> view(kinds[std::size_t(i) % kinds.size()].makeIn(QRectF(0, 0, 100, 80), nullptr));
    view->resize(90, 70);
    if (auto* const plot = qobject_cast<XOVView*>(view.get())) {
      plot->set_trackMouse(true);
      plot->set_trackMouse(false);
    }
  });
}

TEST(FlatResources, aThousandExports) {
  const QTemporaryDir folder;
  const testing::HostedPlot host = testing::hostedPlot(testing::recordPlots()[1]);
  host.view->resize(60, 40);
  const QString path = folder.filePath(QStringLiteral("plot"));
  using Write = bool (XOVView::*)(const QString&, QString*);
  constexpr Write kWrites[] = {&XOVView::writePNGToFile, &XOVView::writeTIFToFile, &XOVView::writeJPGToFile,
                               &XOVView::writeSVGToFile, &XOVView::writePDFToFile};
  expectFlat(
      [&](int i) { EXPECT_TRUE((host.view.get()->*kWrites[std::size_t(i) % std::size(kWrites)])(path, nullptr)); });
  EXPECT_EQ(QDir(folder.path()).entryList(QDir::AllEntries | QDir::NoDotAndDotDot | QDir::Hidden).size(), 1);
}

TEST(FlatResources, aThousandDrags) {
  XOVView view(QRectF(0, 0, 40, 30));
  int drags = 0;
  setDragHandler([&](const PictureDrag& drag) {
    EXPECT_FALSE(drag.picture.isNull());
    ++drags;
  });
  expectFlat([&](int) { view.mouseDown({{20, 15}, Qt::ShiftModifier, 1}); });
  setDragHandler({});
  EXPECT_EQ(drags, 1300);
}

// A timer that is left when tracking is switched off and on again would tick for ever.
TEST(FlatResources, aThousandTimersOfTheMouse) {
  XOVView view(QRectF(0, 0, 40, 30));
  for (int i = 0; i < 1000; ++i) {
    view.set_trackMouse(true);
    view.set_trackMouse(false);
  }
  QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  EXPECT_TRUE(view.findChildren<QTimer*>().isEmpty());
}

} // namespace
} // namespace xov
