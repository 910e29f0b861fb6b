#include "XOV_Graphics/base/Log.h"
#include "XOV_Graphics/base/WholeFile.h"
#include "XOV_Graphics/platform/ImageFile.h"
#include "XOV_Graphics/views/base/XOVView.h"

#include <QPointer>

namespace xov {

namespace {

// Writes what was made, or says why nothing was.
bool writeBytes(const QString& path, const QByteArray& bytes, const QString& whyEmpty, QString* error) {
  if (!bytes.isEmpty()) return writeFileAtomically(path, bytes, error);
  if (error != nullptr) *error = QStringLiteral("%1: %2").arg(path, whyEmpty);
  return false;
}

bool writeImage(const QString& path, const QImage& image, ImageFormat format, QString* error) {
  QString why;
  const QByteArray bytes = encodeImage(image, format, &why);
  return writeBytes(path, bytes, why, error);
}

} // namespace

void XOVView::openSaveSheet(const QString& stem, const QString& extension,
                            const std::function<void(SavePanel*, int)>& didEnd) {
  const std::shared_ptr<SavePanel> panel = SavePanel::savePanel();
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
  const QByteArray page = dataWithPDFInsideRect(bounds());
  return announceExport(writeBytes(path, page, QStringLiteral("the view is empty"), error), path);
}

bool XOVView::writeSVGToFile(const QString& path, QString* error) {
  return writeBytes(path, dataWithSVGInsideRect(bounds()), QStringLiteral("the view is empty"), error);
}

bool XOVView::writeTIFToFile(const QString& path, QString* error) {
  return announceExport(writeImage(path, snapshot(), ImageFormat::Tiff, error), path);
}

bool XOVView::writeJPGToFile(const QString& path, QString* error) {
  return announceExport(writeImage(path, snapshot(), ImageFormat::Jpeg, error), path);
}

bool XOVView::writePNGToFile(const QString& path, QString* error) {
  return announceExport(writeImage(path, snapshot(), ImageFormat::Png, error), path);
}

void XOVView::copy(QObject*) {
  Pasteboard general = Pasteboard::generalPasteboard();
  general.declareTypes({kPdfType});
  writePDFToPasteboard(general);
}

void XOVView::writePDFToPasteboard(Pasteboard& pasteboard) {
  pasteboard.setData(dataWithPDFInsideRect(bounds()), kPdfType);
}

QImage XOVView::snapshot() { return snapshotFromRect(bounds()); }

QImage XOVView::snapshotFromRect(const QRectF& rect) { return pictureOfRect(rect); }

} // namespace xov
