#include "XOV_Graphics/platform/surface/PdfPage.h"

#include "XOV_Graphics/base/Log.h"
#include "XOV_Graphics/base/MemoryReserve.h"
#include "XOV_Graphics/platform/surface/PaperContext.h"
#include "XOV_Graphics/platform/surface/PaperTraces.h"
#include "XOV_Graphics/platform/surface/PdfCheck.h"
#include "XOV_Graphics/platform/surface/PdfFile.h"
#include "XOV_Graphics/platform/surface/PdfIdentity.h"

#include <QBuffer>
#include <QPageLayout>
#include <QPageSize>
#include <QPainter>
#include <QPdfWriter>

#include <memory>
#include <new>
#include <stdexcept>
#include <utility>

namespace xov {

namespace {

constexpr int kPointsPerInch = 72;
// The page is packed in pieces of ten megabytes, and then come its fonts.
constexpr std::size_t kBytesToEnd = setAside(std::size_t(48) << 20);

// A page holds whole points; a rectangle with a fraction of one gets it on the next whole point.
QSizeF pageSizeFor(const QRectF& rect) { return {std::ceil(rect.width()), std::ceil(rect.height())}; }

// A page that is being painted. Qt packs it and embeds its fonts when its painter goes, and does not look whether it
// is given the memory for that: one that is not to be ended is laid aside until there is some, in the thread whose
// fonts it has.
class PaintedPage {
public:
  explicit PaintedPage(const QSizeF& size) : buffer_(&pdf_), writer_((buffer_.open(QIODevice::WriteOnly), &buffer_)) {
    writer_.setCreator(QStringLiteral("XOV_Graphics"));
    writer_.setResolution(kPointsPerInch);
    writer_.setPageLayout(QPageLayout(QPageSize(size, QPageSize::Point, QString(), QPageSize::ExactMatch),
                                      QPageLayout::Portrait, QMarginsF()));
  }

  QPainter& begin() {
    if (!painter_.begin(&writer_)) throw std::bad_alloc();
    return painter_;
  }
  QByteArray end() {
    if (!painter_.end()) throw std::bad_alloc();
    return withFixedIdentity(pdf_);
  }

  static void layAside(std::unique_ptr<PaintedPage> page) noexcept {
    page->next_ = laidAside_;
    laidAside_ = page.release();
  }
  static void endThoseLaidAside() {
    while (laidAside_ != nullptr) {
      needMemory(kBytesToEnd);
      const std::unique_ptr<PaintedPage> page(std::exchange(laidAside_, laidAside_->next_));
    }
  }

private:
  // Not owned by the thread's storage, whose end may come when there is no memory, too.
  static inline thread_local PaintedPage* laidAside_ = nullptr;

  QByteArray pdf_;
  QBuffer buffer_;
  QPdfWriter writer_;
  QPainter painter_;
  PaintedPage* next_ = nullptr;
};

QByteArray paintedPage(const QRectF& rect, const Drawing& draw, PaperTraces* traces) {
  PaintedPage::endThoseLaidAside();
  const QSizeF size = pageSizeFor(rect);
  auto page = std::make_unique<PaintedPage>(size);
  // So that there is memory for the end before the page begins.
  MemoryReserve forDrawing(kMemoryToDraw);
  MemoryReserve reserve(kBytesToEnd);
  forDrawing.release();
  QPainter& painter = page->begin();
  try {
    const QTransform viewToPage(1, 0, 0, -1, -rect.left(), rect.y() + size.height());
    PaperContext context(painter, viewToPage, viewToPage.inverted().mapRect(QRectF(QPointF(), size)), traces);
    draw(context);
  } catch (...) {
    PaintedPage::layAside(std::move(page));
    throw;
  }
  reserve.release();
  return page->end();
}

// The page with its traces; nothing when their markers are not on it as expected.
QByteArray withTraces(const QByteArray& pdf, PaperTraces& traces) {
  const std::optional<PdfFile> file = PdfFile::parse(pdf);
  if (!file) return {};
  const std::optional<QByteArray> content = traces.insertInto(file->content());
  return content ? file->withContent(*content) : QByteArray();
}

void needWhole(const QByteArray& pdf) {
  const QString fault = pdfFault(pdf);
  if (!fault.isEmpty())
    throw std::runtime_error("the page could not be made, maybe for want of memory: " + fault.toStdString());
}

} // namespace

QByteArray pdfPage(const QRectF& rect, const Drawing& draw) {
  if (!(rect.width() > 0 && rect.height() > 0)) return {};
  PaperTraces traces;
  const QByteArray painted = paintedPage(rect, draw, &traces);
  QByteArray pdf = traces.isEmpty() ? painted : withTraces(painted, traces);
  if (pdf.isEmpty()) {
    needWhole(painted); // else it is damaged, and not only built in another way
    qCInfo(log) << "PDF: the page is not built as expected; its traces go through the painter, which takes longer";
    pdf = paintedPage(rect, draw, nullptr);
  }
  needWhole(pdf);
  return pdf;
}

} // namespace xov
