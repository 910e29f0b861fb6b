#include "XOV_Graphics/platform/surface/PdfPage.h"

#include "XOV_Graphics/base/Log.h"
#include "XOV_Graphics/platform/surface/PaperContext.h"
#include "XOV_Graphics/platform/surface/PaperTraces.h"
#include "XOV_Graphics/platform/surface/PdfFile.h"
#include "XOV_Graphics/platform/surface/PdfIdentity.h"

#include <QBuffer>
#include <QPageLayout>
#include <QPageSize>
#include <QPainter>
#include <QPdfWriter>

namespace xov {

namespace {

constexpr int kPointsPerInch = 72;

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
  QPainter painter(&writer);
  const QTransform viewToPage(1, 0, 0, -1, -rect.left(), rect.y() + size.height());
  PaperContext context(painter, viewToPage, viewToPage.inverted().mapRect(QRectF(QPointF(), size)), traces);
  draw(context);
  painter.end();
  return withFixedIdentity(pdf);
}

// The page with its traces; nothing when their markers are not on it as expected.
QByteArray withTraces(const QByteArray& pdf, PaperTraces& traces) {
  const std::optional<PdfFile> file = PdfFile::parse(pdf);
  if (!file) return {};
  const std::optional<QByteArray> content = traces.insertInto(file->content());
  return content ? file->withContent(*content) : QByteArray();
}

} // namespace

QByteArray pdfPage(const QRectF& rect, const Drawing& draw) {
  if (!(rect.width() > 0 && rect.height() > 0)) return {};
  PaperTraces traces;
  QByteArray pdf = paintedPage(rect, draw, &traces);
  if (!traces.isEmpty()) pdf = withTraces(pdf, traces);
  if (!pdf.isEmpty()) return pdf;
  qCInfo(log) << "PDF: the page is not built as expected; its traces go through the painter, which takes longer";
  return paintedPage(rect, draw, nullptr);
}

} // namespace xov
