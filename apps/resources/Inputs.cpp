#include "apps/resources/Inputs.h"

#include "apps/resources/PostScriptLines.h"

#include <XOV_Graphics/base/InputFile.h>

namespace xov::maker {

namespace {

const QString kGridPackage = QStringLiteral("ferret-datasets");
const QString kReliefPackage = QStringLiteral("marble-qt-data");
const QString kGlobePackage = QStringLiteral("xplanet-images");
const QString kLinesPackage = QStringLiteral("texlive-pstricks");

constexpr qint64 kMostBytes = 512 << 20; // the largest file that is read has 37 megabytes

struct LinesFile {
  const char* name;
  const char* file;
};

constexpr LinesFile kLines[] = {{"trench", "trench.dat"}, {"ridge", "ridge.dat"}, {"transform", "transfrm.dat"}};

Result<Segments> readLines(const QString& path) {
  const Result<QByteArray> file = readWholeFile(path, kMostBytes);
  if (!file) return Error{file.error()};
  const Result<QByteArray> text = selfExtractedText(*file);
  if (!text) return Error{QStringLiteral("%1: %2").arg(path, text.error())};
  const Result<Segments> lines = postScriptLines(*text);
  if (!lines) return Error{QStringLiteral("%1: %2").arg(path, lines.error())};
  Segments cut;
  for (const Segment& line : *lines) {
    for (Segment& piece : cutAtMeridians(line))
      cut.push_back(std::move(piece));
  }
  return cut;
}

} // namespace

Inputs::Inputs(const Packages& packages, Progress progress) : packages_(packages), progress_(std::move(progress)) {}

Result<const ElevationGrid*> Inputs::grid() {
  if (grid_) return &*grid_;
  if (Status unpacked = packages_.unpack(kGridPackage, progress_); !unpacked) return Error{unpacked.error()};
  const QString path = packages_.path(kGridPackage, QStringLiteral("usr/share/ferret-vis/data/etopo5.cdf"));
  const Result<QByteArray> file = readWholeFile(path, kMostBytes);
  if (!file) return Error{file.error()};
  Result<ElevationGrid> read = etopo5FromNetcdf(*file);
  if (!read) return Error{QStringLiteral("%1: %2").arg(path, read.error())};
  grid_ = std::move(read).value();
  return &*grid_;
}

Result<const MapPainter*> Inputs::painter() {
  if (painter_) return painter_.get();
  const Result<const ElevationGrid*> elevations = grid();
  if (!elevations) return Error{elevations.error()};
  for (const QString& package : {kReliefPackage, kGlobePackage}) {
    if (Status unpacked = packages_.unpack(package, progress_); !unpacked) return Error{unpacked.error()};
  }
  Result<QImage> greys =
      readReliefTiles(packages_.path(kReliefPackage, QStringLiteral("usr/share/marble/data/maps/earth/srtm/3")));
  if (!greys) return Error{greys.error()};
  const QString path = packages_.path(kGlobePackage, QStringLiteral("usr/share/xplanet/images/earth.jpg"));
  const Result<QImage> globe = readPicture(path);
  if (!globe) return Error{globe.error()};
  if (globe->isNull() || globe->width() != 2 * globe->height())
    return Error{QStringLiteral("%1: no picture twice as wide as high").arg(path)};
  painter_ = std::make_unique<MapPainter>(std::move(greys).value(), **elevations, *globe);
  return painter_.get();
}

Result<const std::vector<NamedSegments>*> Inputs::boundaries() {
  if (!boundaries_.empty()) return &boundaries_;
  if (Status unpacked = packages_.unpack(kLinesPackage, progress_); !unpacked) return Error{unpacked.error()};
  std::vector<NamedSegments> read;
  for (const LinesFile& lines : kLines) {
    Result<Segments> segments = readLines(
        packages_.path(kLinesPackage, QStringLiteral("usr/share/texlive/texmf-dist/tex/generic/pst-geo/data/") +
                                          QLatin1StringView(lines.file)));
    if (!segments) return Error{segments.error()};
    read.push_back({lines.name, std::move(segments).value()});
  }
  boundaries_ = std::move(read);
  return &boundaries_;
}

} // namespace xov::maker
