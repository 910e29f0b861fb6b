// A main window of a section and a drum whose limits are linked: linked_views FILE shows its first record.
#include "examples/linked/LinkedWindow.h"

#include <QApplication>

#include <XOV_Graphics/seismic/io/Readers.h>
#include <cstdio>

int main(int argc, char** argv) {
  const QApplication app(argc, argv);
  if (argc != 2) {
    std::fprintf(stderr, "usage: linked_views FILE\n");
    return 2;
  }
  const auto file = xov::readSeismograms(QString::fromLocal8Bit(argv[1]));
  const auto recording =
      file && !file.value().empty() ? std::dynamic_pointer_cast<xov::SacSeismogram>(file.value().front()) : nullptr;
  if (!recording || recording->npts() < 2) {
    std::fprintf(stderr, "%s\n", file ? "no recording" : qPrintable(file.error()));
    return 1;
  }
  LinkedWindow window(recording);
  window.show();
  return QApplication::exec();
}
