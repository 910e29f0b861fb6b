// A program outside the project: consumer [FOLDER]. Draws a square into a recording and reads it back, and finds the
// library's resources in FOLDER.
#include "platform/Export.h"
#include "views/base/XOVView.h"

#include <QCoreApplication>
#include <QFileInfo>

#include <XOV_Graphics/base/Resources.h>
#include <XOV_Graphics/base/Version.h>
#include <XOV_Graphics/platform/RecordingContext.h>
#include <XOV_Graphics/views/base/XOVView.h>
#include <cstdio>
#include <type_traits>

static_assert(!std::is_same_v<host::XOVView, xov::XOVView>);

namespace {

bool findsResources(const QString& folder) {
  const QString found = xov::resourcePath(QStringLiteral("etopo30.i2"));
  if (QFileInfo(found) == QFileInfo(folder + QStringLiteral("/etopo30.i2"))) return true;
  std::fprintf(stderr, "found '%s', not in %s\n", qPrintable(found), qPrintable(folder));
  return false;
}

} // namespace

int main(int argc, char** argv) {
  const QCoreApplication app(argc, argv);
  xov::RecordingContext recording;
  {
    const xov::GraphicsContext::Pass pass(recording);
    xov::GraphicsContext::current().setColor(QColor(255, 0, 0));
    xov::GraphicsContext::current().strokeRect(QRectF(10, 20, 30, 30));
  }
  std::printf("%s\n", qPrintable(recording.toText()));

  const auto strokes = recording.strokes();
  if (strokes.size() != 1) return 1;
  if (strokes.front().color != QColor(255, 0, 0)) return 2;
  if (strokes.front().path.shape().boundingRect() != QRectF(10, 20, 30, 30)) return 3;
  if (xov::version() != QVersionNumber::fromString(QStringLiteral(XOV_VERSION_STR))) return 4;
  if (argc > 1 && !findsResources(QString::fromLocal8Bit(argv[1]))) return 5;
  return 0;
}
