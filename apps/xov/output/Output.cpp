#include "apps/xov/output/Output.h"

#include "apps/xov/inputs/OptionValues.h"
#include "apps/xov/inputs/Validators.h"
#include "apps/xov/output/Desktop.h"

#include <QFileInfo>

#include <XOV_Graphics/base/FileName.h>

namespace xov::cli {

namespace {

constexpr char kGroup[] = "Output";

struct Format {
  const char* extension;
  bool (XOVView::*write)(const QString& path, QString* error);
};

constexpr Format kFormats[] = {
    {"pdf", &XOVView::writePDFToFile},  {"svg", &XOVView::writeSVGToFile}, {"tif", &XOVView::writeTIFToFile},
    {"tiff", &XOVView::writeTIFToFile}, {"jpg", &XOVView::writeJPGToFile}, {"jpeg", &XOVView::writeJPGToFile},
    {"png", &XOVView::writePNGToFile},
};

const Format* formatOf(const QString& path) {
  const QString extension = QFileInfo(path).suffix().toLower();
  for (const Format& format : kFormats) {
    if (extension == QLatin1String(format.extension)) return &format;
  }
  return nullptr;
}

std::string checkOutputName(const std::string& name) {
  if (formatOf(fileNameFromBytes(name)) != nullptr) return {};
  return "found '" + name + "', expected a file name that ends in .pdf, .svg, .tif, .jpg or .png";
}

std::string sizeText(const QSizeF& size) {
  return QStringLiteral("%1 %2").arg(size.width()).arg(size.height()).toStdString();
}

} // namespace

void Output::addOptions(CLI::App& options) {
  options.add_option("-o,--output", file_, "Write the plot to this file: .pdf, .svg, .tif, .jpg or .png")
      ->type_name("FILE")
      ->check(CLI::Validator(checkOutputName, std::string()))
      ->group(kGroup);
  takesExactly(
      options.add_option("--size", size_, "Width and height in points (default " + sizeText(defaultSize_) + ")")
          ->type_name("W H")
          ->check(numberFromTo(1, kLargestSize))
          ->group(kGroup),
      2);
  options.add_option("--scale", scale_, "Pixels a point in pictures (default 1)")
      ->type_name("N")
      ->check(numberFromTo(kSmallestScale, kLargestScale))
      ->group(kGroup);
  options.add_option("--title", title_, "Title of the plot; '' for none")->type_name("T")->group(kGroup);
}

QRectF Output::frame() const {
  return size_[0] > 0 ? QRectF(0, 0, size_[0], size_[1]) : QRectF(QPointF(), defaultSize_);
}

QString Output::titleOr(const QString& fallback) const { return title_ ? QString::fromStdString(*title_) : fallback; }

ExitCode Output::deliver(const MakeView& makeView, const BeforeWriting& beforeWriting) const {
  const bool toWindow = file_.empty() && displayPresent();
  Desktop desktop(toWindow ? DesktopUse::Window : DesktopUse::Files);
  const std::unique_ptr<XOVView> view = makeView(frame());
  const QString command = QString::fromLatin1(command_);
  if (toWindow && desktop.hasWindows()) {
    desktop.showUntilClosed(*view, QStringLiteral("xov ") + command);
    return ExitCode::Ok;
  }
  if (beforeWriting) beforeWriting(*view);
  if (!file_.empty()) return write(*view, fileNameFromBytes(file_));
  if (toWindow) complain(QStringLiteral("the display does not answer; writing a file"));
  const QString name = command + QStringLiteral(".png");
  const ExitCode code = write(*view, name);
  if (code == ExitCode::Ok) print(QStringLiteral("wrote %1\n").arg(name));
  return code;
}

ExitCode Output::write(XOVView& view, const QString& path) const {
  view.setExportPixelRatio(scale_);
  QString error;
  if ((view.*formatOf(path)->write)(path, &error)) return ExitCode::Ok;
  complain(error);
  return ExitCode::Failed;
}

} // namespace xov::cli
