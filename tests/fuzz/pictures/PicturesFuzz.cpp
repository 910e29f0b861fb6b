// Whatever the files of base maps hold, they are read whole or refused in one line. The first byte chooses between a
// picture and a grid of elevations.

#include "XOV_Graphics/base/Resources.h"
#include "XOV_Graphics/views/map/MapPictures.h"
#include "XOV_Graphics/views/map/TopoGrid.h"
#include "tests/fuzz/Application.h"
#include "tests/fuzz/MemoryFile.h"

#include <QFile>
#include <QTemporaryDir>

#include <cstdint>

using namespace xov;
using fuzz::require;

namespace {

constexpr int kGreyMap = 10;

const fuzz::MemoryFile& memory() {
  static const fuzz::MemoryFile file;
  return file;
}

// A folder of resources in which the picture is the file in memory.
void makeFolder() {
  static const QTemporaryDir folder;
  require(QFile::link(memory().path(), folder.filePath(QString::fromLatin1(mapPicture(kGreyMap)->file))),
          "a picture can be put in its place");
  setHostResourceFolder(folder.path());
}

void readPicture() {
  const Result<QImage> picture = readMapPicture(*mapPicture(kGreyMap));
  require(picture ? !picture->isNull() : !picture.error().contains(QLatin1Char('\n')),
          "a picture is there or an error is one line");
}

void readGrid(std::uint8_t choice) {
  const TopoFileSize size{1 + (choice >> 1 & 7), 1 + (choice >> 4)};
  const int factor = 1 + (choice >> 2 & 3);
  const Result<TopoGrid> grid = readTopoGrid(memory().path(), size, factor);
  require(!grid || grid->values.size() == std::size_t(grid->rows) * std::size_t(grid->columns), "a grid is whole");
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***) {
  fuzz::beginApplication(); // image formats are plugins
  makeFolder();
  return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size == 0) return 0;
  memory().hold({data + 1, size - 1});
  if ((data[0] & 1) != 0)
    readPicture();
  else
    readGrid(data[0]);
  return 0;
}
