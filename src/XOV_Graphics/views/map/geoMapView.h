#pragma once

#include "XOV_Graphics/base/Export.h"
#include "XOV_Graphics/map/XOVPolygon.h"
#include "XOV_Graphics/map/geoMapPoint.h"
#include "XOV_Graphics/map/geoMapVector.h"
#include "XOV_Graphics/views/image/XOVImageView.h"
#include "XOV_Graphics/views/map/MapLabel.h"
#include "XOV_Graphics/views/map/MapLegend.h"
#include "XOV_Graphics/views/map/MapMechanism.h"
#include "XOV_Graphics/views/map/MapPlace.h"

#include <QColor>
#include <QImage>

#include <cstdint>
#include <memory>
#include <optional>
#include <vector>

namespace xov {

struct LaidOutLegend;
struct LinearAxis;
struct PlacedDisc;

/// What a map shows; views share these with the host. Null entries are left out.
using GeoMapPointArray = std::vector<std::shared_ptr<geoMapPoint>>;
/// The vectors of a map, shared as its points are.
using GeoMapVectorArray = std::vector<std::shared_ptr<geoMapVector>>;
/// Colours that points choose from by their colour index.
using MapColorArray = std::vector<QColor>;
/// Sets of lines, such as the boundaries of a plateBoundaryController.
using XOVPolygonSets = std::vector<std::shared_ptr<XOVPolygonArray>>;

/// A map in longitude and latitude, the view's x and y limits in degrees: a topography or a picture at the back, then
/// plate boundaries, symbols and vectors, and a title. The map keeps its shape: at the middle latitude both axes have
/// the same scale. Beach balls, labels, a scale bar, a legend and the colour bar of a topography are drawn when they
/// are asked for.
///
/// Longitudes are -180 … 180 or 0 … 360, as the limits and the data like. On a map that reaches beyond 180 degrees,
/// negative longitudes of data stand for those 360 degrees further east; lines on a map that begins west of Greenwich
/// take longitudes beyond 180 degrees for those 360 degrees further west.
class XOV_EXPORT geoMapView : public XOVImageView {
  Q_OBJECT
  Q_CLASSINFO("shows", "map")
  Q_PROPERTY(bool showPlates READ showPlates WRITE writeShowPlates NOTIFY settingsChanged)
  Q_PROPERTY(QColor plateBoundaryColor READ plateBoundaryColor WRITE writePlateBoundaryColor NOTIFY settingsChanged)
  Q_PROPERTY(bool outlinePointsWithNoData READ outlinePointsWithNoData WRITE writeOutlinePointsWithNoData NOTIFY
                 settingsChanged)
  Q_PROPERTY(bool showDegreeSigns READ showDegreeSigns WRITE writeShowDegreeSigns NOTIFY settingsChanged)
  Q_PROPERTY(bool showScaleBar READ showScaleBar WRITE writeShowScaleBar NOTIFY settingsChanged)
  Q_PROPERTY(
      bool movesMechanismsApart READ movesMechanismsApart WRITE writeMovesMechanismsApart NOTIFY settingsChanged)
  Q_PROPERTY(xov::geoMapView::VAlign vAlignPlot READ vAlignPlotValue WRITE writeVAlignPlot NOTIFY settingsChanged)

public:
  /// Where a map stands that is lower than its place.
  enum VAlign : std::int32_t { Center = 0, Top = 1, Bottom = 2 };
  Q_ENUM(VAlign)
  /// The pictures that loadImageWithIndex() knows.
  enum class BaseImage : std::int32_t {
    Satellite = 1,            ///< the Earth from space
    NaturalColors = 2,        ///< softened colours from space with relief
    ReliefColors = 3,         ///< tints of elevation and depth with strong relief
    SecondSatellite = 4,      ///< full colours from space with relief, dark sea
    WesternUnitedStates = 10, ///< in grey
  };
  Q_ENUM(BaseImage)

  /// The whole globe from Greenwich on, without anything on it.
  explicit geoMapView(QWidget* parent = nullptr) : geoMapView(QRectF(), parent) {}
  explicit geoMapView(const QRectF& frame, QWidget* parent = nullptr);
  ~geoMapView() override;

  QString usualAxisName(Qt::Axis axis) const override;
  QSize usualSize() const override { return {720, 400}; }

  // What the map shows. The arrays are never null; setting null makes an empty one. They are shared: what the host
  // adds to them appears in the next drawing.

  /// The points.
  const std::shared_ptr<GeoMapPointArray>& thePoints() const { return thePoints_; }
  /// Replaces the points; null empties them.
  void setThePoints(std::shared_ptr<GeoMapPointArray> points);
  /// The vectors.
  const std::shared_ptr<GeoMapVectorArray>& theVectors() const { return theVectors_; }
  /// Replaces the vectors; null empties them.
  void setTheVectors(std::shared_ptr<GeoMapVectorArray> vectors);
  /// Null is not added.
  void addTheVector(const std::shared_ptr<geoMapVector>& vector);
  /// Takes out every entry that is this vector.
  void removeTheVector(const std::shared_ptr<geoMapVector>& vector);
  /// Polygons in sets, each with a colour of its own or plateBoundaryColor().
  const XOVPolygonSets& thePolygonSets() const { return thePolygonSets_; }
  /// Null is not added.
  void addAPolygonSet(std::shared_ptr<XOVPolygonArray> polygons);
  /// The colour of one set, by its place in thePolygonSets(); an invalid one, as at first, leaves it to
  /// plateBoundaryColor(). Nothing for a set that is not there.
  void setPolygonSetColor(std::size_t set, const QColor& color);
  QColor polygonSetColor(std::size_t set) const;
  /// Focal mechanisms as beach balls over the points; none at first.
  const MapMechanismArray& mechanisms() const { return mechanisms_; }
  void setMechanisms(MapMechanismArray mechanisms) { mechanisms_ = std::move(mechanisms); }
  /// Names at places; none at first. One that would cover another name or place is left out.
  const MapLabelArray& labels() const { return labels_; }
  void setLabels(MapLabelArray labels) { labels_ = std::move(labels); }
  /// What stands below the map, whose room it takes; none at first.
  const MapLegend& legend() const { return legend_; }
  void setLegend(MapLegend legend) { legend_ = std::move(legend); }

  // How it shows it.

  /// Whether the polygon sets are drawn; off at first.
  bool showPlates() const { return showPlates_; }
  void setShowPlates(bool show) { change(showPlates_, show); }
  /// The colour of the polygons: black of opacity 1/2 at first.
  QColor plateBoundaryColor() const { return plateBoundaryColor_; }
  void setPlateBoundaryColor(const QColor& color) { change(plateBoundaryColor_, color); }
  /// Whether every point has an outline, also one without a colour; on at first. Points with a colour index have one
  /// anyway, and then a second one over it.
  bool outlinePointsWithNoData() const { return outlinePointsWithNoData_; }
  void setOutlinePointsWithNoData(bool outline) { change(outlinePointsWithNoData_, outline); }
  /// Where a map stands that is lower than its place: 0 in the middle, as at first, 1 at the top, 2 at the bottom.
  std::int32_t vAlignPlot() const { return vAlignPlot_; }
  void setVAlignPlot(std::int32_t align) { change(vAlignPlot_, align); }
  void setVAlignPlot(VAlign align) { setVAlignPlot(std::int32_t(align)); }
  /// Whether the edges of the map are labelled with degree signs and E, W, N and S, longitudes from 180°W to 180°E;
  /// off at first.
  bool showDegreeSigns() const { return showDegreeSigns_; }
  void setShowDegreeSigns(bool show) { change(showDegreeSigns_, show); }
  /// Whether a bar in the lower left corner of the map shows how long so many kilometres are at its middle latitude;
  /// off at first.
  bool showScaleBar() const { return showScaleBar_; }
  void setShowScaleBar(bool show) { change(showScaleBar_, show); }
  /// Whether beach balls that would overlap are moved aside, with a line to their place; off at first. More than 400
  /// stay where they are.
  bool movesMechanismsApart() const { return movesMechanismsApart_; }
  void setMovesMechanismsApart(bool move) { change(movesMechanismsApart_, move); }
  /// Where the map was last laid out, in view points.
  QRectF mapRect() const { return iRect_; }

  /// The colours that points are told apart by.
  const std::shared_ptr<MapColorArray>& theColors() const { return theColors_; }
  /// Replaces the colours; null empties them.
  void setTheColors(std::shared_ptr<MapColorArray> colors);
  /// Makes theColors() a ramp of n colours from red to white; at most 1,048,576.
  void buildGrayScaleColorsNLevels(std::int32_t n);
  /// ... 16 colours from blue through cyan and yellow to red.
  void buildNoGreenColorTable();
  /// ... 21 colours from dark red through yellow and green to blue.
  void buildSeisColorTable();
  /// ... 21 colours from blue over near-white to red.
  void buildPolarColorTable();

  // The background.

  /// Shows a grid of elevations in metres from a file of signed 16-bit integers in the machine's byte order: rows ×
  /// cols of them without a header, from the northernmost row on. Of these every dSmpl-th row and column is taken.
  /// The grid's extent is what the view's limits are now.
  ///
  /// False, and nothing changed, when the file cannot be read, has another size, or when dSmpl is not 1 to the
  /// smaller of both counts. One line that says so, with the size and the expected one, goes to `error` where one is
  /// given, else to the log, unless the file is missing.
  bool loadTopoImageFromPathNRowsNColsDSmpl(const QString& path, std::int32_t rows, std::int32_t cols,
                                            std::int32_t dSmpl, QString* error = nullptr);
  /// The same for the global grid ETOPO5 (National Geophysical Data Center, 1988: Data Announcement 88-MGG-02,
  /// Digital relief of the surface of the earth), 2160 rows by 4320 columns of five arc-minutes in
  /// DATA/Grids/etopo5.i2 below dataRoot(). Its extent is 0 … 360 and -90 … 90 whatever the limits are.
  bool loadETOPO5DownSmpl(std::int32_t factor, QString* error = nullptr);
  /// Shows a picture of the resources: 1 a satellite picture, 2 natural and 3 relief colours, 4 another satellite
  /// picture, each -180 … 360 and -90 … 90; 10 the western United States in grey, -130 … -105 and 30 … 52. The
  /// grid's values stay as they are.
  ///
  /// False, with one line in `error` where one is given, and nothing changed, for any other index and when the
  /// picture is missing or damaged.
  bool loadImageWithIndex(std::int32_t index, QString* error = nullptr);
  bool loadImageWithIndex(BaseImage image, QString* error = nullptr) {
    return loadImageWithIndex(std::int32_t(image), error);
  }

  // What lies where.

  /// The place that read-outs tell distance and azimuth from: an event, a station, where the user clicked last. None
  /// at first.
  const std::optional<MapPlace>& referencePlace() const { return referencePlace_; }
  void setReferencePlace(const std::optional<MapPlace>& place) { referencePlace_ = place; }
  /// On the map, its "longitude" and "latitude" in degrees, the "height" of a topography that shows, and from the
  /// reference place the "distance" in degrees and, as "distanceKm", in kilometres, and the "azimuth" of the point.
  PlotReadout readout(QPointF point) const override;
  /// The point of thePoints() whose symbol holds a place of the view (or is 4 points away), by its index; of several
  /// the one that is drawn last.
  std::optional<std::size_t> pointAt(QPointF point) const;
  /// The points and the mechanisms whose places a box (view points) holds where the map shows them, by their indices:
  /// across the date line, too. A mechanism that was moved aside counts where it belongs.
  std::vector<std::size_t> pointsIn(const QRectF& box) const;
  /// The mechanisms in a box, as pointsIn().
  std::vector<std::size_t> mechanismsIn(const QRectF& box) const;
  /// What a box covers of the globe, as far as it lies on the map; none beside it. With it a host finds events and
  /// stations of its own.
  std::optional<MapBox> mapBoxOf(const QRectF& box) const;

  // Drawing.

  /// The globe, or as far as the picture goes, both axes together.
  PlotReach reach() const override;
  /// Lays out as the base view and then fits the map into iRect, centred from left to right. Latitudes with so many
  /// digits that the edge of the view would cut them take their room from the map.
  void computeRects() override;
  /// Ticks every 10 to 90 degrees by the map's width, without titles.
  void drawAxes() override;
  /// The outlines of the polygons in their sets' colours.
  void drawPolygons();
  /// The beach balls, and lines to where those belong that were moved apart.
  void drawMechanisms();
  /// The labels beside their places.
  void drawLabels();
  /// The scale bar, where it is to be shown.
  void drawScaleBar();
  /// The legend, where there is one.
  void drawLegend();
  /// Circles of 12 · symbolSize points radius: filled in the colour of their index, of their own opacity, and
  /// outlined. An index beyond theColors() leaves the outline only.
  void drawPoints();
  /// Lines from the vectors' feet, scaleFactor points a unit.
  void drawVectors();
  /// A picture of the whole view.
  QImage getImageOfView();

protected:
  /// Everything on white paper: the background unless hideImage(), axes, polygons, points, vectors, beach balls,
  /// labels, scale bar, legend, colour bar, title, time stamp.
  void drawContents() override;
  /// A base map or topography is a picture, which is kept small in files; with placesCellsExactly() it is drawn to
  /// the fraction of a pixel. Cells of any other grid stay cells.
  ImageKind imageKind() const override;
  /// A picture has none.
  bool hasColorBar() const override { return showColorBar() && showsBitmap() && !hideImage(); }
  /// The elevations that there are, in plain metres: their colours do not depend on minValue and maxValue.
  ColorBarScale colorBarScale() const override;

private:
  VAlign vAlignPlotValue() const { return VAlign(vAlignPlot()); }
  // What the writes of properties do: set, and draw anew.
  void writeShowPlates(bool value) {
    setNeedsDisplay();
    setShowPlates(value);
  }
  void writePlateBoundaryColor(const QColor& value) {
    setNeedsDisplay();
    setPlateBoundaryColor(value);
  }
  void writeOutlinePointsWithNoData(bool value) {
    setNeedsDisplay();
    setOutlinePointsWithNoData(value);
  }
  void writeShowDegreeSigns(bool value) {
    setNeedsDisplay();
    setShowDegreeSigns(value);
  }
  void writeShowScaleBar(bool value) {
    setNeedsDisplay();
    setShowScaleBar(value);
  }
  void writeMovesMechanismsApart(bool value) {
    setNeedsDisplay();
    setMovesMechanismsApart(value);
  }
  void writeVAlignPlot(VAlign value) {
    setNeedsDisplay();
    setVAlignPlot(value);
  }

  int tickLabelSize() const;
  LinearAxis layoutAxis(Qt::Axis axis) const;
  double widthOfTickLabels(Qt::Axis axis) const;
  void leaveRoomForTickLabels(const QRectF& room);
  void drawDegrees();
  std::vector<PlacedDisc> placeMechanisms() const;
  LaidOutLegend layoutLegend(double left, double width) const;
  void setImageExtent(const PlotLimits& extent, float dx, float dy);

  std::shared_ptr<GeoMapPointArray> thePoints_;
  std::shared_ptr<MapColorArray> theColors_;
  std::shared_ptr<GeoMapVectorArray> theVectors_;
  XOVPolygonSets thePolygonSets_;
  std::int32_t vAlignPlot_ = 0;
  bool showPlates_ = false;
  bool outlinePointsWithNoData_ = true;
  QColor plateBoundaryColor_;
  std::vector<QColor> polygonSetColors_;
  MapMechanismArray mechanisms_;
  MapLabelArray labels_;
  MapLegend legend_;
  bool showDegreeSigns_ = false;
  bool showScaleBar_ = false;
  bool movesMechanismsApart_ = false;
  std::optional<MapPlace> referencePlace_;
};

} // namespace xov
