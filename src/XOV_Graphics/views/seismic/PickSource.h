#pragma once

#include "XOV_Graphics/base/Export.h"
#include "XOV_Graphics/seismic/SeismogramRecord.h"
#include "XOV_Graphics/seismic/picks/Pick.h"

#include <QColor>
#include <QString>

#include <optional>
#include <vector>

namespace xov {

/// A pick as a view is to mark it.
struct XOV_EXPORT MarkedPick {
  double seconds = 0; ///< on the record's own axis
  /// Beside the line.
  QString label;
  /// Of line and label.
  QColor color;
  bool isPredicted = false;                      ///< drawn with dashes: nobody has seen it
  std::optional<double> lowerSeconds = {};       ///< how much earlier it may be: a bar across the line
  std::optional<double> upperSeconds = {};       ///< how much later
  PickPolarity polarity = PickPolarity::Unknown; ///< a triangle at the line's end, upwards or downwards
};

/// Tells seismogram views which picks to mark over a record in place of those of its header; the origin time stays
/// that of the header. See SeismogramView::setPickSource().
class XOV_EXPORT PickSource {
public:
  PickSource() = default;
  PickSource(const PickSource&) = delete;
  PickSource& operator=(const PickSource&) = delete;
  virtual ~PickSource();

  /// The picks of a record in the order in which they are drawn, visible or not; nothing leaves the record its own.
  virtual std::optional<std::vector<MarkedPick>> picksToMark(const SeismogramRecord& record) const = 0;
};

} // namespace xov
