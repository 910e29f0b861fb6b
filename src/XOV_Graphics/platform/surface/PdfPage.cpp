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

#include <new>
#include <stdexcept>
#include <utility>

namespace xov {

namespace {

constexpr int kPointsPerInch = 72;
// The page is packed in pieces of ten megabytes, and then come its fonts.
constexpr std::size_t kBytesToEnd = std::size_t(48) << 20;

// A page holds whole points; a rectangle with a fraction of one gets it on the next whole point.
QSizeF pageSizeFor(const QRectF& rect) { return {std::ceil(rect.width()), std::ceil(rect.height())}; }

QByteArray paintedPage(const QRectF& rect, const Drawing& draw, PaperTraces* traces) {
  const QSizeF size = pageSizeFor(rect);
  QByteArray pdf;
  QBuffer buffer(&pdf);
  buffer.open(QIODevice::WriteOnly);
  QPdfWriter writer(&buffer);
  writer.setCreator(QStringLiteral("XOV_Graphics"));
  writer.setResolution(kPointsPerInch);
  writer.setPageLayout(QPageLayout(QPageSize(size, QPageSize::Point, QString(), QPageSize::ExactMatch),
                                   QPageLayout::Portrait, QMarginsF()));
  // When a painter ends a page, it cannot cope with memory that is refused, even where it is ended by what is thrown.
  // So there is some before it begins, which goes before it.
  MemoryReserve forDrawing(kMemoryToDraw);
  MemoryReserve early(kBytesToEnd);
  forDrawing.release();
  QPainter painter(&writer);
  if (!painter.isActive()) throw std::bad_alloc();
  MemoryReserve reserve = std::move(early);
  const QTransform viewToPage(1, 0, 0, -1, -rect.left(), rect.y() + size.height());
  PaperContext context(painter, viewToPage, viewToPage.inverted().mapRect(QRectF(QPointF(), size)), traces);
  draw(context);
  reserve.release();
  if (!painter.end()) throw std::bad_alloc();
  return withFixedIdentity(pdf);
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
