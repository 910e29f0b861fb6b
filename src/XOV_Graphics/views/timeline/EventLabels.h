#pragma once

#include "XOV_Graphics/platform/TextAttributes.h"
#include "XOV_Graphics/seismic/EventOrigin.h"

#include <QLineF>
#include <QRectF>
#include <QString>

#include <vector>

namespace xov {

/// An event that is marked.
struct EventMark {
  QLineF line; ///< upwards
  QString text;
  float magnitude = 0;
  double width = 0; ///< of the line
};

/// A label and the box of its text.
struct EventLabel {
  QString text;
  QRectF box;
};

/// The event's magnitude, or the largest of its others where that is not set; kUndefinedValue where none is known.
float largestMagnitude(const EventOrigin& event);

/// "M 6.1 region": largestMagnitude() and the name that a catalogue has for the event.
QString eventText(const EventOrigin& event);

/// Labels beside their marks: right or left of the upper or the lower end, or just above it, within the frame's sides
/// and clear of each other. Where there is no place left the smaller events go without; beyond 1000 marks the
/// smallest ones do in any case.
std::vector<EventLabel> layOutEventLabels(std::vector<EventMark> marks, const QRectF& frame,
                                          const TextAttributes& font);

} // namespace xov
