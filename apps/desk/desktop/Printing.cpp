#include "apps/desk/desktop/Printing.h"

#include <QPagedPaintDevice>
#include <QPainter>
#include <QPrintDialog>
#include <QPrintPreviewDialog>
#include <QPrinter>

#include <algorithm>

namespace xov::desk {

namespace {

// The largest rectangle of the view's proportions in the middle of the page.
QRectF placeOn(const QRectF& page, const QSizeF& view) {
  const double scale = std::min(page.width() / view.width(), page.height() / view.height());
  QRectF place(QPointF(), view * scale);
  place.moveCenter(page.center());
  return place;
}

} // namespace

bool paintPages(QPagedPaintDevice& device, const std::vector<View*>& views) {
  QPainter painter;
  if (views.empty() || !painter.begin(&device)) return false;
  bool isFirst = true;
  for (View* const view : views) {
    if (!isFirst && !device.newPage()) return false;
    isFirst = false;
    const QSizeF size = view->bounds().size();
    if (!size.isEmpty()) view->paint(painter, placeOn(painter.viewport(), size));
  }
  return painter.end();
}

void print(QWidget* window, const ViewsToPrint& views) {
  auto* const dialog = new QPrintDialog(window);
  dialog->setAttribute(Qt::WA_DeleteOnClose);
  dialog->printer()->setPageOrientation(QPageLayout::Landscape);
  QObject::connect(dialog, qOverload<QPrinter*>(&QPrintDialog::accepted), window,
                   [views](QPrinter* printer) { paintPages(*printer, views()); });
  dialog->open();
}

void showPrintPreview(QWidget* window, const ViewsToPrint& views) {
  auto* const dialog = new QPrintPreviewDialog(window);
  dialog->setObjectName(QStringLiteral("printPreviewDialog"));
  dialog->setAttribute(Qt::WA_DeleteOnClose);
  dialog->printer()->setPageOrientation(QPageLayout::Landscape);
  QObject::connect(dialog, &QPrintPreviewDialog::paintRequested, window,
                   [views](QPrinter* printer) { paintPages(*printer, views()); });
  dialog->open();
}

} // namespace xov::desk
