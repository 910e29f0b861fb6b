#include "XOV_Graphics/base/Guarded.h"
#include "XOV_Graphics/base/Log.h"
#include "XOV_Graphics/base/WholeFile.h"
#include "XOV_Graphics/platform/ImageFile.h"
#include "XOV_Graphics/views/base/XOVView.h"

#include <QPointer>

namespace xov {

namespace {

// Writes what is made, or says why nothing was.
template <typename Make>
bool writeMade(const QString& path, QString* error, Make&& make) {
  const Status status = guarded(path, [&]() -> Status {
    const Result<QByteArray> bytes = make();
    if (!bytes) return Error{QStringLiteral("%1: %2").arg(path, bytes.error())};
    QString why;
    if (!writeFileAtomically(path, *bytes, &why)) return Error{why};
    return {};
  });
  return succeeded(status, error);
}

// Why nothing was made of a view that may be gone by now; empty where it does not say.
QString whyNothing(const QPointer<XOVView>& view) { return view ? view->exportError() : QString(); }

Result<QByteArray> document(const QPointer<XOVView>& view, const QByteArray& bytes) {
  if (!bytes.isEmpty()) return bytes;
  const QString why = whyNothing(view);
  return Error{why.isEmpty() ? QStringLiteral("the view is empty") : why};
}

Result<QByteArray> imageFile(const QPointer<XOVView>& view, ImageFormat format) {
  const QImage image = view->snapshot();
  if (const QString why = whyNothing(view); image.isNull() && !why.isEmpty()) return Error{why};
  QString why;
  const QByteArray bytes = encodeImage(image, format, &why);
  if (bytes.isEmpty()) return Error{why};
  return bytes;
}

} // namespace

void XOVView::openSaveSheet(const QString& stem, const QString& extension,
                            const std::function<void(SavePanel*, int)>& didEnd) {
  const std::shared_ptr<SavePanel> panel = SavePanel::savePanel();
  if (!panel) return;
  const QString name = QString::asprintf("%s_%3.3d.%s", qUtf8Printable(stem), pltCount_, qUtf8Printable(extension));
  ++pltCount_;
  panel->setRequiredFileType(extension);
  // The view may be gone by the time the user answers, and so may the panel's owner.
  panel->beginSheet(QString(), name, window(),
                    [view = QPointer<XOVView>(this), weakPanel = std::weak_ptr<SavePanel>(panel), didEnd](int code) {
                      const std::shared_ptr<SavePanel> sheet = weakPanel.lock();
                      if (view && sheet) didEnd(sheet.get(), code);
                    });
}

void XOVView::openPictureSheet(const QString& extension, SheetEnd didEnd) {
  openSaveSheet(QStringLiteral("plt"), extension,
                [this, didEnd](SavePanel* sheet, int code) { (this->*didEnd)(sheet, code, nullptr); });
}

void XOVView::savePDF(QObject*) { openPictureSheet(QStringLiteral("pdf"), &XOVView::didEndPDFReturnCodeContextInfo); }

void XOVView::saveTIF(QObject*) { openPictureSheet(QStringLiteral("tif"), &XOVView::didEndTIFReturnCodeContextInfo); }

void XOVView::savePNG(QObject*) { openPictureSheet(QStringLiteral("png"), &XOVView::didEndPNGReturnCodeContextInfo); }

void XOVView::saveJPG(QObject*) { openPictureSheet(QStringLiteral("jpg"), &XOVView::didEndJPGReturnCodeContextInfo); }

// The sheet's return code is deliberately taken as accepted. A sheet without a file name leaves nothing to write.
void XOVView::writeSheetFile(const SavePanel* sheet, FileWriter write) {
  if (sheet == nullptr || sheet->filename().isEmpty()) return;
  QString error;
  if (!(this->*write)(sheet->filename(), &error)) qCWarning(log) << qUtf8Printable(error);
}

void XOVView::didEndPDFReturnCodeContextInfo(SavePanel* sheet, int, void*) {
  writeSheetFile(sheet, &XOVView::writePDFToFile);
}

void XOVView::didEndTIFReturnCodeContextInfo(SavePanel* sheet, int, void*) {
  writeSheetFile(sheet, &XOVView::writeTIFToFile);
}

void XOVView::didEndPNGReturnCodeContextInfo(SavePanel* sheet, int, void*) {
  writeSheetFile(sheet, &XOVView::writePNGToFile);
}

void XOVView::didEndJPGReturnCodeContextInfo(SavePanel* sheet, int, void*) {
  writeSheetFile(sheet, &XOVView::writeJPGToFile);
}

bool XOVView::writePDFToFile(const QString& path, QString* error) {
  const QPointer<XOVView> self(this); // who hears of the drawing may take the view away
  const auto make = [&] { return document(self, dataWithPDFInsideRect(bounds())); };
  return announceExport(self, writeMade(path, error, make), path);
}

bool XOVView::writeSVGToFile(const QString& path, QString* error) {
  const QPointer<XOVView> self(this);
  return writeMade(path, error, [&] { return document(self, dataWithSVGInsideRect(bounds())); });
}

bool XOVView::writeTIFToFile(const QString& path, QString* error) {
  const QPointer<XOVView> self(this);
  return announceExport(self, writeMade(path, error, [&] { return imageFile(self, ImageFormat::Tiff); }), path);
}

bool XOVView::writeJPGToFile(const QString& path, QString* error) {
  const QPointer<XOVView> self(this);
  return announceExport(self, writeMade(path, error, [&] { return imageFile(self, ImageFormat::Jpeg); }), path);
}

bool XOVView::writePNGToFile(const QString& path, QString* error) {
  const QPointer<XOVView> self(this);
  return announceExport(self, writeMade(path, error, [&] { return imageFile(self, ImageFormat::Png); }), path);
}

void XOVView::copy(QObject*) {
  contained("copying", [this] {
    Pasteboard general = Pasteboard::generalPasteboard();
    general.declareTypes({kPdfType});
    writePDFToPasteboard(general);
  });
}

void XOVView::writePDFToPasteboard(Pasteboard& pasteboard) {
  pasteboard.setData(dataWithPDFInsideRect(bounds()), kPdfType);
}

QImage XOVView::snapshot() { return snapshotFromRect(bounds()); }

QImage XOVView::snapshotFromRect(const QRectF& rect) { return pictureOfRect(rect); }

} // namespace xov
