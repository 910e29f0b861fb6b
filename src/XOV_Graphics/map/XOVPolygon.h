#pragma once

#include "XOV_Graphics/base/Export.h"
#include "XOV_Graphics/base/Result.h"

#include <QRectF>
#include <QString>

#include <memory>
#include <span>
#include <vector>

namespace xov {

/// A named line of points, open or closed: a plate boundary, an outline. On a map x is the longitude and y the
/// latitude, in degrees.
///
/// The coordinates and the number of points are set one by one, so they may disagree; every operation then uses
/// pointCount() points.
class XOV_EXPORT XOVPolygon {
public:
  /// The name, as the file or the host gives it; maps do not draw it.
  const QString& title() const { return title_; }
  /// Sets title().
  void setTitle(const QString& title) { title_ = title; }
  /// The file that the line came from, where somebody has noted it: reading a file does not.
  const QString& fileName() const { return fileName_; }
  void setFileName(const QString& fileName) { fileName_ = fileName; }

  /// The x of each point. What this points to stays until the next setXp(), load or scan.
  std::span<float> xp() { return xp_; }
  std::span<const float> xp() const { return xp_; }
  void setXp(std::vector<float> xp) { xp_ = std::move(xp); }
  /// The y of each point, likewise.
  std::span<float> yp() { return yp_; }
  std::span<const float> yp() const { return yp_; }
  void setYp(std::vector<float> yp) { yp_ = std::move(yp); }
  /// The number of points as it was set or read.
  int npts() const { return npts_; }
  void setNpts(int npts) { npts_ = npts; }
  /// How many points there are: npts(), but none when it is negative and no more than both arrays hold.
  int pointCount() const;

  /// The box that computeBoundingRect() found; zero before.
  QRectF bRect() const { return bRect_; }
  /// Finds the least and the greatest x and y, beginning at 1e9 and -1e9, and keeps (least x, least y, width, height)
  /// in bRect(). Without points that is (1e9, 1e9, -2e9, -2e9). A NaN changes nothing.
  void computeBoundingRect();

  /// The title, "Npts:" and npts(), as in "UntitledNpts:5".
  QString description() const;

  /// Whether a point lies inside, by the number of edges that a ray from it towards greater x crosses. The last point
  /// is joined to the first. An edge counts from its lower end, inclusive, to its upper end, exclusive; a point on a
  /// crossing counts as beyond it. So of the sides of a square the left and the lower one are inside. In single
  /// precision.
  bool pointInPolygonXY(float x, float y) const;

  /// Reads the points from a text in the NXY format: their number, then x and y of each, decimal numbers with a point
  /// ("-12", "1.5", "2e-3") whatever the locale, separated by white space, line ends included. What follows the last
  /// number is ignored.
  ///
  /// False, with one line in `error` where one is given, when a number is missing, malformed or not finite, or when
  /// the count is negative or more than the text can hold; nothing is allocated for such a count. There are no points
  /// then, and npts() is the count that was read, or what it was when none could be.
  bool scanFromNXYString(const QString& text, QString* error = nullptr);
  /// Reads the points from a file in the NXY format. Its encoding is told by a byte order mark; without one it is
  /// UTF-8 where it can be, else Latin-1. False as above, and also when the file cannot be read: then nothing
  /// changes.
  bool loadNXYFromPath(const QString& path, QString* error = nullptr);
  /// Writes the points in the NXY format, six decimals each: the whole file or nothing. False, with one line in
  /// `error` where one is given, when that fails.
  bool saveToPath(const QString& path, QString* error = nullptr) const;

private:
  Status scan(const QString& text);

  std::vector<float> xp_;
  std::vector<float> yp_;
  int npts_ = 0;
  QString title_ = QStringLiteral("Untitled");
  QString fileName_;
  QRectF bRect_{0, 0, 0, 0};
};

/// Lines that belong together; views share them with the host. Null entries are left out.
using XOVPolygonArray = std::vector<std::shared_ptr<XOVPolygon>>;

} // namespace xov
