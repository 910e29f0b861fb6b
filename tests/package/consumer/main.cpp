// A program outside the project: draws a square into a recording and reads it back.
#include <XOV_Graphics/platform/RecordingContext.h>
#include <cstdio>

int main() {
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
  return strokes.front().path.shape().boundingRect() == QRectF(10, 20, 30, 30) ? 0 : 3;
}
