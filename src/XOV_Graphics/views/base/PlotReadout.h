#pragma once

#include "XOV_Graphics/base/Export.h"

#include <QDateTime>
#include <QLatin1String>
#include <QString>
#include <QTimeZone>

#include <cstddef>
#include <limits>
#include <memory>
#include <vector>

namespace xov {

class SeismogramRecord;

/// One thing that a plot tells about a place.
struct XOV_EXPORT PlotQuantity {
  QString name;                                            ///< what programs know it by: "time", "amplitude"
  double value = std::numeric_limits<double>::quiet_NaN(); ///< in `unit`; NaN where it is told in words
  QString unit;                                            ///< "s", "km"; empty where there is none
  QString text;                                            ///< what a status line shows: "time 12.5 s"
};

/// What a plot shows at a place, for a status line:
///
///     statusBar->showMessage(view.readout(point).text());
///
/// Quantities without a finite value are left out, so that a place where nothing is shown has an empty one.
struct XOV_EXPORT PlotReadout {
  std::vector<PlotQuantity> quantities; ///< in the order in which they are shown

  /// Whether nothing is shown at the place.
  bool isEmpty() const { return quantities.empty(); }
  /// The quantity of that name; null where there is none.
  const PlotQuantity* find(QLatin1String name) const;
  /// Its value; NaN where there is none.
  double value(QLatin1String name) const;
  /// The texts of all quantities in one line, three blanks between them.
  QString text() const;

  /// Adds a value that is finite as "label value unit". Where `step` is above 0, which is what a view point stands
  /// for, it has as many decimals as tell neighbouring points apart, else six digits. An empty label stands for the
  /// name.
  void add(QLatin1String name, double value, const QString& unit, double step = 0, const QString& label = {});
  /// Adds what is told in words, unless it is empty.
  void addText(QLatin1String name, const QString& text);
  /// Adds a moment that is known as "utc" and "local", in seconds since 1970: its date and clock in UTC, and its
  /// clock in `zone` with the zone's offset, with a date where that is another one. Milliseconds are told where
  /// `step` seconds, what a view point stands for, are less than 1.
  void addMoment(const QDateTime& moment, double step = 0, const QTimeZone& zone = QTimeZone::systemTimeZone());
};

/// The moment `seconds` after another one, to the millisecond. Invalid where that is not known or not within 10,000
/// years.
XOV_EXPORT QDateTime momentAfter(const QDateTime& reference, double seconds);

/// What an axis is called and its unit, apart: "Time" and "s" of "Time (s)".
struct XOV_EXPORT NamedUnit {
  /// Takes a label apart.
  explicit NamedUnit(const QString& label);
  QString name; ///< without the unit
  QString unit; ///< empty where the label has none
};

/// The record whose trace lies under a point of a view, or nearest to it.
struct XOV_EXPORT PointedRecord {
  std::size_t index = 0; ///< among the records of the view
  /// Never null.
  std::shared_ptr<SeismogramRecord> record;
  double seconds = 0; ///< what time the point has on the record's own axis, from which b() and picks count
};

} // namespace xov
