#pragma once

#include "XOV_Graphics/base/Export.h"

#include <QColor>
#include <QSizeF>
#include <QString>

#include <optional>

namespace xov {

/// A font and an optional colour for text. "Helvetica" stands for the installed Helvetica or its metric twin
/// (Nimbus Sans and the like). Sizes are view points; widths come from the font's unhinted, unkerned advances, so a
/// layout is the same on every screen, on paper and on another machine.
class XOV_EXPORT TextAttributes {
public:
  TextAttributes() = default;
  /// A font in black; the size is in points and view points alike.
  explicit TextAttributes(const QString& family, double pointSize = 12);

  /// Helvetica of that size.
  static TextAttributes helvetica(double pointSize);
  /// The font that small captions such as pick labels are drawn in: Helvetica 10.
  static TextAttributes systemLabel();

  /// As it was asked for; a family that is not there is replaced when text is drawn.
  QString family() const { return family_; }
  /// The height of the font in points.
  double pointSize() const { return pointSize_; }
  /// Replaces family and size, and keeps the colour.
  void setFont(const QString& family, double pointSize);

  /// The colour; none draws in black.
  std::optional<QColor> color() const { return color_; }
  /// Sets color(); nothing for black.
  void setColor(std::optional<QColor> color) { color_ = color; }
  /// The colour that text is drawn in: black when none is set.
  QColor effectiveColor() const;

  /// The text box: width is that of the widest line, height 1.15 · size · number of lines. The box of a line reaches
  /// from 0.23 · size below its baseline to 0.92 · size above it. Text without characters is one empty line; a size
  /// that is not positive gives an empty box.
  QSizeF size(const QString& text) const;

  /// 1.15 · size, the height of one line.
  double lineHeight() const;
  /// 0.23 · size, how far the baseline of a line lies above the lower edge of its box.
  double descent() const;

  bool operator==(const TextAttributes&) const = default;

private:
  QString family_ = QStringLiteral("Helvetica");
  double pointSize_ = 12;
  std::optional<QColor> color_;
};

} // namespace xov
