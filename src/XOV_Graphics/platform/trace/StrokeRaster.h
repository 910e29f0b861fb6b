#pragma once

#include "XOV_Graphics/platform/trace/InkStack.h"
#include "XOV_Graphics/platform/trace/TraceFineness.h"
#include "XOV_Graphics/platform/trace/TraceLayers.h"
#include "XOV_Graphics/platform/trace/TraceStrips.h"

#include <QColor>
#include <QRect>
#include <QTransform>

#include <optional>
#include <span>
#include <vector>

namespace xov {

/// Strokes of one pen on a picture, one after the other. What they have in common is settled once, and the memory
/// that a stroke is worked out in serves the next one, too.
class StrokeRaster {
public:
  StrokeRaster(const PixelTarget& target, const QTransform& viewToDevice, const QRect& clip, double lineWidth);

  /// The strips of a stroke: `count` of them, all `width` columns wide but the last one, from column `left` on. None
  /// where nothing shows.
  struct Strips {
    int left = 0;
    int width = 0;
    int count = 0;
  };
  /// How wide they are for a stroke of few traces.
  int widestStrip() const;

  /// Takes a stroke. False when it does not fit: see strokeTraces().
  bool take(std::span<const Trace> traces, const QColor& color);
  /// Of the stroke that was taken.
  Strips strips() const;
  /// Draws it, on several threads where there are more than a few strips. A narrow one may wait for others beside it:
  /// see finish().
  void draw();
  /// Draws one strip of a stroke that has no more than a few, and leaves the others away. Only pixels of the strip
  /// are touched, now or later.
  void drawStrip(int number);
  /// Draws what waits. To be called before anything else is drawn, and at the end.
  void finish() { stack_.lay(); }
  /// The first strip settles the fineness of the next: up to so many are worked out one after the other.
  static constexpr int kFewStrips = 2;

private:
  /// What a strip is worked out in.
  struct Room {
    explicit Room(int rows) : coverage(rows) {}
    TraceLayers layers;
    TraceCoverage coverage;
  };

  /// Columns of the picture, first <= column < last.
  struct Columns {
    int first = 0;
    int last = 0;
  };

  TraceStrip strip(int number) const;
  void drawFew(int from, int to, const Columns& touched);
  void findInk(Room& room, TraceStrip& strip, TraceFineness& fineness) const;
  static void takeInk(Room& room, TraceStrip& strip);

  PixelTarget target_;
  QTransform viewToDevice_;
  QRect visible_;
  double radius_ = 0;
  bool fits_ = false;

  std::vector<TraceProjection> projections_; // of a stroke
  std::optional<TraceInk> ink_;
  std::optional<TraceFineness> fineness_;
  InkExtent extent_;
  TraceStrip first_;
  int columns_ = 0;
  std::optional<Room> room_;
  InkStack stack_;
};

} // namespace xov
