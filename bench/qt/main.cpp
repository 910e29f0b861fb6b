// xov_bench_qt PIXELS WIDTH HEIGHT FILE: starts as a program with widgets does, and writes pixels of three bytes as
// PNG. No drawing, no fonts, no seismogram: the least that a picture costs a program of Qt.
#include <QApplication>
#include <QFile>
#include <QImage>

int main(int argc, char** argv) {
  if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  const QApplication app(argc, argv);
  const QStringList arguments = QCoreApplication::arguments();
  if (arguments.size() != 5) return 2;
  const int width = arguments[2].toInt(), height = arguments[3].toInt();
  QFile file(arguments[1]);
  if (width < 1 || height < 1 || !file.open(QIODevice::ReadOnly)) return 1;
  const QByteArray pixels = file.readAll();
  if (pixels.size() != 3 * qsizetype(width) * height) return 1;
  const QImage picture(reinterpret_cast<const uchar*>(pixels.constData()), width, height, 3 * qsizetype(width),
                       QImage::Format_RGB888);
  return picture.save(arguments[4], "PNG") ? 0 : 1;
}
