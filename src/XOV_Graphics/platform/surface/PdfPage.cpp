#include "XOV_Graphics/platform/surface/PdfPage.h"

#include "XOV_Graphics/platform/surface/PainterContext.h"
#include "XOV_Graphics/platform/surface/PaperTraces.h"
#include "XOV_Graphics/platform/surface/PdfFile.h"

#include <QBuffer>
#include <QPageLayout>
#include <QPageSize>
#include <QPainter>
#include <QPdfWriter>

namespace xov {

namespace {

constexpr int kPointsPerInch = 72;

// Replaces the digits after `key` by those of a fixed date, so that no byte of the file moves.
void fixDate(QByteArray& pdf, const QByteArray& key) {
  constexpr char kDate[] = "20000101000000";
  qsizetype at = 0;
  while ((at = pdf.indexOf(key, at)) >= 0) {
    at += key.size();
    for (qsizetype i = 0; kDate[i] != '\0' && at + i < pdf.size() && isdigit(uchar(pdf[at + i])); ++i) {
      pdf[at + i] = kDate[i];
    }
  }
}

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
  PainterContext context(painter, QTransform(1, 0, 0, -1, -rect.left(), rect.y() + size.height()), traces);
  draw(context);
  painter.end();
  fixDate(pdf, "/CreationDate (D:");
  return pdf;
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
  if (pdf.isEmpty()) pdf = paintedPage(rect, draw, nullptr); // all through the painter
  return pdf;
}

} // namespace xov
