#pragma once

#include "XOV_Graphics/base/Export.h"
#include "XOV_Graphics/seismic/SeismogramRecord.h"

#include <QColor>
#include <QLineF>
#include <QRectF>
#include <QString>

#include <array>
#include <vector>

namespace xov {

/// Which picks carry the label that is stored with them; the others always carry their default: "A" for the first
/// arrival, "T0" to "T9" for the keys 0 to 9. The origin is always "Origin" and the end of the signal "F".
struct XOV_EXPORT PickLabelRule {
  bool storedForFirstArrival = false; ///< the first arrival, A
  bool storedForKeys = false;         ///< the picks T0 to T9
};

/// A length that depends on the height of a panel.
struct XOV_EXPORT PanelLength {
  double share = 0;  ///< of the panel's height
  double points = 0; ///< added to it

  /// The length in view points in a panel.
  double of(const QRectF& panel) const { return share * panel.height() + points; }
};

/// How a view marks picks over a panel: a vertical line with a label.
struct XOV_EXPORT PickStyle {
  /// Where the label of a pick stands.
  enum class LabelPlace {
    CenteredAbove, ///< centred on the line, standing `labelBelow` below the panel's top
    RightOfLine,   ///< 4 points to the right of the line, its top `labelBelow` below the panel's top
  };
  /// Which labels are those of the file.
  PickLabelRule labels{};
  PanelLength lineAbove{}; ///< from the panel's bottom up to the line's lower end
  PanelLength lineBelow{}; ///< from the panel's top down to its upper end
  /// From the panel's top down to the label; see LabelPlace.
  PanelLength labelBelow{};
  /// Which side of the line the label is on.
  LabelPlace labelPlace = LabelPlace::CenteredAbove;
};

/// A pick that falls into a view's time window.
struct XOV_EXPORT PickMark {
  float time = 0;        ///< on the record's axis, in seconds
  QColor color;          ///< of line and label
  QString label;         ///< beside the line
  bool isOrigin = false; ///< the origin time of the event
};

/// The picks of a record that are set and lie within xmin … xmax, in drawing order: origin (blue), first arrival, end
/// of the signal, keys 0 to 9 (dark grey). Limits, and the times of marks, count from `xOrigin` on the record's axis.
XOV_EXPORT std::vector<PickMark> visiblePicks(const SeismogramRecord& record, float xmin, float xmax,
                                              PickLabelRule rule, double xOrigin = 0);

/// Where a time lies along a panel whose width stands for xmin … xmax. Not finite where the limits are equal.
XOV_EXPORT double pickX(const QRectF& panel, float time, float xmin, float xmax);

/// The line of a pick at `x`, from its lower to its upper end.
XOV_EXPORT QLineF pickLine(const QRectF& panel, double x, const PickStyle& style);

/// The lower left corner of the label, of that size, of a pick at `x`.
XOV_EXPORT QPointF pickLabelOrigin(const QRectF& panel, double x, QSizeF size, const PickStyle& style);

/// Where the label may stand instead, that place first: right or left of its line, or centred above it and else on
/// either side.
XOV_EXPORT std::array<QPointF, 3> pickLabelPlaces(const QRectF& panel, double x, QSizeF size, const PickStyle& style);

} // namespace xov
