#include "apps/xov/commands/ResourcesCommand.h"

#include "apps/resources/BoundaryFiles.h"
#include "apps/xov/terminal/TextTable.h"

#include <QDir>
#include <QFileInfo>
#include <QImageReader>

#include <XOV_Graphics/base/InputFile.h>
#include <XOV_Graphics/base/Resources.h>
#include <XOV_Graphics/base/WholeFile.h>

namespace xov::cli {

namespace {

using namespace xov::maker;

constexpr int kCellBytes = 2;
constexpr qint64 kLargestText = 64 << 20; // the published text has 150 kB

QString bytesOf(const QString& path) { return QString::number(QFileInfo(path).size()); }

QStringList gridCells(const Resource& resource) {
  const QString full =
      QDir(dataRoot())
          .filePath(QStringLiteral("%1/%2").arg(QLatin1StringView(kGridFolder), QLatin1StringView(resource.name)));
  if (QFileInfo(full).size() == qint64(resource.width) * resource.height * kCellBytes)
    return {QStringLiteral("full"), QString::number(resource.width), QString::number(resource.height), bytesOf(full),
            full};
  const QString small = resourcePath(QLatin1StringView(kSmallGridName));
  if (small.isEmpty()) return {QStringLiteral("missing")};
  return {QStringLiteral("small"), QString::number(resource.smallWidth), QString::number(resource.smallHeight),
          bytesOf(small), small};
}

/// The size that a picture says it has; an invalid one where it does not.
Result<QSize> pictureSize(const QString& path) {
  CheckedFile file(path);
  if (Status status = openForReading(file); !status) return Error{status.error()};
  return readChecked(file, path, [&]() -> Result<QSize> { return QImageReader(&file).size(); });
}

QStringList pictureCells(const Resource& resource, const QString& path, QStringList& faults) {
  const Result<QSize> read = pictureSize(path);
  if (!read) faults.append(read.error());
  const QSize size = read ? *read : QSize();
  if (!size.isValid()) return {QStringLiteral("unreadable"), {}, {}, bytesOf(path), path};
  const bool isFull = size.width() >= resource.width && size.height() >= resource.height;
  return {isFull ? QStringLiteral("full") : QStringLiteral("small"), QString::number(size.width()),
          QString::number(size.height()), bytesOf(path), path};
}

Result<QString> firstLine(const QString& path) {
  constexpr qint64 kLongest = 1024;
  CheckedFile file(path);
  if (Status status = openForReading(file); !status) return Error{status.error()};
  return readChecked(file, path, [&]() -> Result<QString> { return QString::fromLatin1(file.readLine(kLongest)); });
}

QStringList textCells(const Resource& resource, const QString& path, QStringList& faults) {
  const Result<QString> title = firstLine(path);
  if (!title) {
    faults.append(title.error());
    return {QStringLiteral("unreadable"), {}, {}, bytesOf(path), path};
  }
  QString edition =
      title->contains(QLatin1StringView(kThinnedMark)) ? QStringLiteral("thinned") : QStringLiteral("full");
  if (resource.kind == ResourceKind::BoundariesOfModel)
    edition = areDerivedBoundaries(title->toLatin1()) ? QStringLiteral("derived") : QStringLiteral("published");
  return {edition, {}, {}, bytesOf(path), path};
}

QString table(QStringList& faults) {
  TextTable table;
  table.addColumn(QStringLiteral("resource"));
  table.addColumn(QStringLiteral("version"));
  for (const char* number : {"width", "height", "bytes"})
    table.addColumn(QString::fromLatin1(number), TextTable::Align::Right);
  table.addColumn(QStringLiteral("file"));
  for (const Resource& resource : kResources)
    table.addRow(resourceCells(resource, faults));
  return table.text();
}

/// Puts the boundaries of a published text below the data root.
ExitCode import(const QString& path) {
  const Result<QByteArray> published = readWholeFile(path, kLargestText);
  if (!published) {
    complain(published.error());
    return ExitCode::Failed;
  }
  const Result<QByteArray> text = importedBoundaries(*published);
  if (!text) {
    complain(QStringLiteral("%1: not the published text of PB2002: %2").arg(path, text.error()));
    return ExitCode::Failed;
  }
  const QString folder = fullSizeResourceFolder();
  const QString target = QDir(folder).filePath(QLatin1StringView(kModelName));
  QDir().mkpath(folder);
  QString error;
  if (!writeFileAtomically(target, *text, &error)) {
    complain(error);
    return ExitCode::Failed;
  }
  print(QStringLiteral("%1: %2 segments\n").arg(target).arg(text->count("***\n")));
  return ExitCode::Ok;
}

} // namespace

QStringList resourceCells(const Resource& resource, QStringList& faults) {
  const QString name = QLatin1StringView(resource.name);
  const QString path = resourcePath(name);
  if (resource.kind == ResourceKind::Grid) return QStringList(name) + gridCells(resource);
  if (path.isEmpty()) return {name, QStringLiteral("missing")};
  return QStringList(name) + (resource.kind == ResourceKind::Picture ? pictureCells(resource, path, faults)
                                                                     : textCells(resource, path, faults));
}

void ResourcesCommand::addOptions(const Options& options) {
  options
      .add("--pb2002", published_,
           "Import the published text of the plate boundaries PB2002; until then, generalised boundaries of "
           "another source stand in for them")
      .typeName("FILE");
}

ExitCode ResourcesCommand::run() {
  if (!published_.empty()) return import(QString::fromStdString(published_));
  QStringList faults;
  print(table(faults));
  for (const QString& fault : faults)
    complain(fault);
  return faults.isEmpty() ? ExitCode::Ok : ExitCode::Failed;
}

} // namespace xov::cli
