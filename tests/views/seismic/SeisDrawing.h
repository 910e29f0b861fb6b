#pragma once

#include "XOV_Graphics/platform/RecordingContext.h"
#include "XOV_Graphics/platform/TextAttributes.h"
#include "XOV_Graphics/seismic/SeismogramRecord.h"
#include "XOV_Graphics/views/base/XOVView.h"
#include "tests/support/FakeRecord.h"

#include <QLineF>

#include <functional>
#include <memory>
#include <random>
#include <vector>

namespace xov::testing {

/// What a test hands to a view: the view keeps no hold of it.
using Records = std::shared_ptr<SeismogramArray>;

/// Records in an array of their own.
Records recordsOf(std::vector<std::shared_ptr<FakeRecord>> records);

std::shared_ptr<FakeRecord> fakeRecord(std::vector<float> samples, float interval = 1, float begin = 0);

/// Strokes that hold traces, and those that are made of lines, in drawing order.
std::vector<RecordedItem> traceStrokes(const RecordingContext& recording);
std::vector<RecordedItem> lineStrokes(const RecordingContext& recording);
/// Strokes of one straight line in that colour.
std::vector<RecordedItem> singleLines(const RecordingContext& recording, const QColor& color);

/// One line a stroke, fill or text: what and in which colour, to compare the order of drawing. A stroke of traces is
/// "trace", one of lines "line", and texts show what they say.
QStringList steps(const RecordingContext& recording);

/// What axes look like that `draw` adds to a frame: the recording's text of a path that is set up as all views set it
/// up (line width 0.75) and stroked in `color`.
QString axesText(const QRectF& frame, const TextAttributes& attributes, const QColor& color,
                 const std::function<void()>& draw);

/// The same with the axis "Time (s)" from xmin to xmax along the line from (left, bottom) to (right, bottom).
QString timeAxisText(double left, double right, double bottom, const TextAttributes& attributes, const QColor& color,
                     float xmin, float xmax);

/// The lower left corner of text that is placed at a point: 1 left, 2 centre, 3 right; 2 centre, 3 top, else bottom.
QPointF placed(const QString& text, const TextAttributes& attributes, QPointF at, int hjust, int vjust);

void expectNear(QPointF actual, QPointF expected, double tolerance = 1e-3);
void expectNear(const QLineF& actual, const QLineF& expected, double tolerance = 1e-3);
/// Points of a trace; an expected point that is not finite stands for a break.
void expectPoints(const Trace& trace, const std::vector<QPointF>& expected, double tolerance = 1e-3);
/// A recording that holds `text` exactly once, drawn with its lower left corner there and in that colour.
void expectText(const RecordingContext& recording, const QString& text, QPointF at, double size, const QColor& color);

float uniform(std::mt19937& random, float low, float high);
int uniformInt(std::mt19937& random, int low, int high);
std::vector<float> noise(std::mt19937& random, int count, float amplitude);

} // namespace xov::testing
