#include "apps/xov/output/PlotFile.h"

#include "apps/xov/output/FileTemplate.h"

#include <QFileInfo>

namespace xov::cli {

namespace {

struct Format {
  const char* extension;
  bool (XOVView::*write)(const QString& path, QString* error);
  bool holdsPages = false;
};

constexpr Format kFormats[] = {
    {"pdf", &XOVView::writePDFToFile, true}, {"svg", &XOVView::writeSVGToFile}, {"tif", &XOVView::writeTIFToFile},
    {"tiff", &XOVView::writeTIFToFile},      {"jpg", &XOVView::writeJPGToFile}, {"jpeg", &XOVView::writeJPGToFile},
    {"png", &XOVView::writePNGToFile},
};

const Format* formatOf(const QString& name) {
  const QString extension = QFileInfo(name).suffix().toLower();
  for (const Format& format : kFormats) {
    if (extension == QLatin1String(format.extension)) return &format;
  }
  return nullptr;
}

} // namespace

bool isPlotFile(const QString& name) { return formatOf(name) != nullptr; }

bool holdsPages(const QString& name) { return isPlotFile(name) && formatOf(name)->holdsPages; }

Status writePlot(XOVView& view, const QString& name) {
  QString error;
  if ((view.*formatOf(name)->write)(name, &error)) return {};
  return Error{error};
}

QString unusedName(const QString& name) {
  QString unused = name;
  for (std::size_t number = 2; QFileInfo::exists(unused) || QFileInfo(unused).isSymLink(); ++number)
    unused = numberedName(name, number);
  return unused;
}

} // namespace xov::cli
