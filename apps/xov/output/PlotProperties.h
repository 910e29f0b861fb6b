#pragma once

#include <QMetaProperty>
#include <QString>
#include <QVariant>

#include <XOV_Graphics/base/Result.h>
#include <XOV_Graphics/views/base/XOVView.h>
#include <vector>

namespace xov::cli {

/// The properties that say how a view looks, those of the base first: all that can be written but for those of
/// widgets and what only concerns the mouse and exports.
std::vector<QMetaProperty> plotProperties(const XOVView& view);

/// A value of such a property as text, the same in any locale: true or false, numbers with a decimal point, colours
/// as #rrggbb or #aarrggbb, times in UTC as 2011-03-11T05:46:24.120Z, names of enumerators.
QString plotPropertyText(const QMetaProperty& property, const QVariant& value);

/// The value that a text stands for; the error says what was found and expected.
Result<QVariant> plotPropertyValue(const QMetaProperty& property, const QString& text);

/// Stands for the part of its data that a view shows, where properties are told by name.
inline constexpr char kShownPart[] = "part";

/// The part that a view shows, as text: the ends of x and of y, and the gain; empty while it shows the whole.
QString shownPartText(const XOVView& view);

/// Writes a property that is given as "name=value"; "part=0 60 -1 1 2" shows that part of the data. The error names
/// what was found and expected.
Status setPlotProperty(XOVView& view, const QString& assignment);

} // namespace xov::cli
