#include "apps/xov/output/Output.h"

#include "apps/xov/inputs/Validators.h"
#include "apps/xov/output/Desktop.h"
#include "apps/xov/output/PlotFile.h"
#include "apps/xov/output/PlotProperties.h"
#include "apps/xov/output/PlotReceiver.h"

#include <XOV_Graphics/base/FileName.h>
#include <XOV_Graphics/platform/PdfDocument.h>
#include <array>
#include <stdexcept>

namespace xov::cli {

namespace {

constexpr char kGroup[] = "Output";

constexpr char kPageField[] = "page";
constexpr double kPointsPerInch = 72;

std::string checkFormat(const std::string& name) {
  if (isPlotFile(fileNameFromBytes(name))) return {};
  return "found '" + name + "', expected a file name that ends in .pdf, .svg, .tif, .jpg or .png";
}

std::string sizeText(const QSizeF& size) {
  return QStringLiteral("%1 %2").arg(size.width()).arg(size.height()).toStdString();
}

} // namespace

/// What is to be shown or written.
struct Output::Plot {
  const std::vector<PlotPage>& pages;
  const MakePage& makePage;
  const BeforeWriting& beforeWriting;
};

void Output::addOptions(const Options& options, const QStringList& fields) {
  fields_ = fields + QStringList{QLatin1String(kPageField)};
  const auto checkFields = [known = fields_](const std::string& name) {
    return FileTemplate::parse(fileNameFromBytes(name), known).error().toStdString();
  };
  const auto takeSize = [this](const std::array<std::string, 2>& sides) {
    const Result<QSizeF> size = parsedSize(QString::fromStdString(sides[0]), QString::fromStdString(sides[1]));
    if (!size) throw UsageError("--size", size.error().toStdString());
    size_ = *size;
  };
  options.add("-o,--output", file_, "Write the plot to this file: .pdf, .svg, .tif, .jpg or .png")
      .typeName("FILE")
      .check(Check{checkFormat, {}})
      .check(Check{checkFields, {}})
      .group(kGroup);
  options
      .addPair("--size", takeSize,
               "Width and height, as 900 600 (points), 16cm 10cm, 160mm 100mm or 6in 4in (default " +
                   sizeText(defaultSize_) + ")")
      .typeName("W H")
      .group(kGroup)
      .takesExactly(2);
  const Option scale = options.add("--scale", scale_, "Pixels a point in pictures (default 1)")
                           .typeName("N")
                           .check(numberFromTo(kSmallestScale, kLargestScale))
                           .group(kGroup);
  options.add("--dpi", dpi_, "Pixels an inch in pictures, instead of --scale (default 72)")
      .typeName("N")
      .check(numberFromTo(kSmallestScale * kPointsPerInch, kLargestScale * kPointsPerInch))
      .excludes(scale)
      .group(kGroup);
  options.add("--title", title_, "Title of the plot; '' for none").typeName("T").group(kGroup);
  const auto checkAssignment = [](const std::string& text) -> std::string {
    const std::size_t equals = text.find('=');
    if (equals != std::string::npos && equals > 0) return {};
    return "found '" + text + "', expected a property and its value, as lineWidth=2";
  };
  properties_ = options.add("--set", "Set a property of the view, as lineWidth=2; may be given several times")
                    .typeName("NAME=VALUE")
                    .eachTime()
                    .check(Check{checkAssignment, {}})
                    .group(kGroup);
}

void Output::addKioskOption(const Options& options) {
  options.addFlag("--kiosk", isKiosk_, "Fill the screen, without a pointer; Escape or Ctrl+Q leaves").group(kGroup);
}

QRectF Output::frameOf(const PlotPage& page) const {
  const QSizeF usual = page.size.isEmpty() ? defaultSize_ : page.size;
  return {QPointF(), size_.isEmpty() ? usual : size_};
}

double Output::pixelsPerPoint() const { return dpi_ ? *dpi_ / kPointsPerInch : scale_.value_or(1); }

QString Output::titleOr(const QString& fallback) const { return title_ ? QString::fromStdString(*title_) : fallback; }

ExitCode Output::deliver(const MakeView& makeView, const BeforeWriting& beforeWriting) const {
  return deliver(NameFields(), makeView, beforeWriting);
}

ExitCode Output::deliver(const NameFields& fields, const MakeView& makeView,
                         const BeforeWriting& beforeWriting) const {
  return deliver(
      {PlotPage{fields, {}}}, [&makeView](const QRectF& frame, std::size_t /*page*/) { return makeView(frame); },
      beforeWriting);
}

ExitCode Output::deliver(const std::vector<PlotPage>& pages, const MakePage& makePage,
                         const BeforeWriting& beforeWriting) const {
  if (PlotReceiver* const receiver = currentPlotReceiver()) {
    receiver->take({pages.size(), [&](std::size_t page, const QSizeF& size) {
                      const QRectF frame = size.isEmpty() ? frameOf(pages[page]) : QRectF(QPointF(), size);
                      std::unique_ptr<XOVView> view = makePage(frame, page);
                      writeProperties(*view);
                      return view;
                    }});
    return ExitCode::Ok;
  }
  const bool toWindow = file_.empty() && displayPresent();
  Desktop desktop(toWindow ? DesktopUse::Window : DesktopUse::Files);
  const QString command = QString::fromLatin1(command_);
  if (toWindow && desktop.hasWindows()) {
    desktop.showUntilClosed(
        pages.size(),
        [&](std::size_t page) {
          std::unique_ptr<XOVView> view = makePage(frameOf(pages[page]), page);
          writeProperties(*view);
          if (scale_ || dpi_) view->setExportPixelRatio(pixelsPerPoint());
          return view;
        },
        QStringLiteral("xov ") + command, isKiosk_ ? WindowUse::Kiosk : WindowUse::Plain);
    return ExitCode::Ok;
  }
  const Plot plot{pages, makePage, beforeWriting};
  if (!file_.empty()) return writeAll(plot, fileNameFromBytes(file_));
  if (toWindow) note(QStringLiteral("the display does not answer; writing a file"));
  const QString name = unusedName(command + (pages.size() > 1 ? QStringLiteral(".pdf") : QStringLiteral(".png")));
  const ExitCode code = writeAll(plot, name);
  if (code == ExitCode::Ok && !isQuiet()) print(QStringLiteral("wrote %1\n").arg(name));
  return code;
}

void Output::keep(std::shared_ptr<const void> shown) {
  if (PlotReceiver* const receiver = currentPlotReceiver()) receiver->keep(std::move(shown));
}

ExitCode Output::writeAll(const Plot& plot, const QString& name) const {
  const Result<FileTemplate> pattern = FileTemplate::parse(name, fields_);
  QStringList names;
  for (std::size_t page = 0; page < plot.pages.size(); ++page) {
    NameFields fields = plot.pages[page].fields;
    fields[QLatin1String(kPageField)] = pageNumber(page + 1, plot.pages.size());
    names.append(pattern->filledWith(fields));
  }
  const Result<std::vector<PageFile>> files = filesOfPages(names, holdsPages(name));
  Status status = files ? Status() : Status(Error{files.error()});
  for (const PageFile& file : *files) {
    if (status) status = writePages(plot, file);
  }
  if (status) return ExitCode::Ok;
  complain(status.error());
  return ExitCode::Failed;
}

void Output::writeProperties(XOVView& view) const {
  for (const std::string& assignment : properties_.results()) {
    const Status written = setPlotProperty(view, QString::fromStdString(assignment));
    if (!written) throw std::runtime_error("--set: " + written.error().toStdString());
  }
}

std::unique_ptr<XOVView> Output::make(const Plot& plot, std::size_t page) const {
  std::unique_ptr<XOVView> view = plot.makePage(frameOf(plot.pages[page]), page);
  writeProperties(*view);
  view->setExportPixelRatio(pixelsPerPoint());
  if (plot.beforeWriting) plot.beforeWriting(*view);
  return view;
}

Status Output::writePages(const Plot& plot, const PageFile& file) const {
  std::unique_ptr<XOVView> view;
  if (file.pages.size() == 1) {
    view = make(plot, file.pages.front());
    return writePlot(*view, file.name);
  }
  const auto next = [&](std::int64_t page) -> View* {
    view.reset(); // before the next one is made
    if (std::size_t(page) < file.pages.size()) view = make(plot, file.pages[std::size_t(page)]);
    return view.get();
  };
  QString error;
  return writePDFPages(file.name, next, &error) ? Status() : Status(Error{error});
}

} // namespace xov::cli
