#include "apps/xov/live/DailyPages.h"

#include "apps/xov/output/PlotFile.h"
#include "apps/xov/output/RecordNames.h"
#include "apps/xov/terminal/Messages.h"

#include <QDir>
#include <QFileInfo>

#include <XOV_Graphics/base/FileName.h>

namespace xov::cli {

namespace {

const QString kUsualName = QStringLiteral("{network}.{station}.{location}.{channel}.{date}.pdf");

Result<FileTemplate> namesOf(const std::string& place) {
  QString name = fileNameFromBytes(place);
  if (!isPlotFile(name)) { // it is a folder, whose name may have braces
    name.replace(QLatin1String("{"), QLatin1String("{{"));
    name = QDir(name).filePath(kUsualName);
  }
  return FileTemplate::parse(name, recordFieldNames());
}

} // namespace

void DailyPages::addOptions(const Options& options, const Option& source) {
  const auto check = [](const std::string& text) { return namesOf(text).error().toStdString(); };
  options
      .add("--daily", place_,
           "Keep the page of each day that is over in this folder, or as '{station}.{date}.png' and the like")
      .typeName("FOLDER")
      .check(Check{check, {}})
      .needs(source);
}

FileTemplate DailyPages::names() const { return namesOf(place_).value(); }

bool DailyPages::keep(XOVView& view, const NameFields& fields) const {
  const QString name = names().filledWith(fields);
  makeFolder(QFileInfo(name).path()); // where that fails, so does what follows
  const Status written = writePlot(view, unusedName(name));
  if (!written) complain(written.error());
  return bool(written);
}

} // namespace xov::cli
