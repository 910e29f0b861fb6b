#pragma once

#include <QCache>
#include <QFont>
#include <QHash>
#include <QPainterPath>
#include <QString>

namespace xov {

/// One font family at a large design size, from which all sizes are scaled: hinting, screen resolution and rounding
/// to pixels never touch a layout.
class Typeface {
public:
  /// The design size in pixels; an em of the scaled fonts.
  static constexpr int kDesignSize = 1000;

  /// The typeface for a family name, with "Helvetica" (and any family that is missing) resolved to what is installed.
  /// Each thread has its own, and keeps them.
  static const Typeface& forFamily(const QString& family);

  const QFont& font() const { return font_; }
  /// The advance width of a line in ems.
  double advance(const QString& line) const;
  /// The outlines of a line from the origin of its baseline, in design units, y downwards.
  QPainterPath outline(const QString& line) const;

private:
  struct Line {
    double advance = 0; // in design units
    QPainterPath outline;
  };

  explicit Typeface(const QString& family);
  const Line& shaped(const QString& line) const;
  Line spelled(const QString& line) const;
  Line shapedByQt(const QString& line) const;
  bool isSpelled(const QString& line) const;
  const Line& letter(QChar letter) const;

  QFont font_;
  mutable QHash<QChar, Line> letters_;
  mutable QHash<quint32, bool> pairs_; // whether two letters stand side by side as each by itself
  // Live displays draw the same labels many times a second, and finding a glyph's outline costs more than filling it.
  mutable QCache<QString, Line> lines_;
};

} // namespace xov
