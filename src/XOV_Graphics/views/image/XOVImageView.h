#pragma once

#include "XOV_Graphics/base/Export.h"
#include "XOV_Graphics/colour/GridColors.h"
#include "XOV_Graphics/platform/GraphicsContext.h"
#include "XOV_Graphics/platform/PlanarBitmap.h"
#include "XOV_Graphics/views/base/XOVView.h"

#include <QImage>
#include <QSizeF>

#include <array>
#include <cstdint>
#include <memory>
#include <optional>
#include <vector>

namespace xov {

/// The values of a grid, row after row from the top. A view keeps the buffer; it is not changed while a view has it.
using GridFloats = std::shared_ptr<const std::vector<float>>;
using GridInts = std::shared_ptr<const std::vector<std::int32_t>>; ///< the same in whole numbers

/// A regular grid of values as a coloured picture inside the data frame, with linear axes. The host sets the limits,
/// which are the grid's extent in the world, and then hands the grid over with setupImageDataNROWSNCOLS(); narrower
/// limits set afterwards show the part of the picture that they select, in whole cells. The first row of the grid is
/// at the top. Settings that change colours show after updateImagePlanes(), which keeps the picture's size.
///
/// A grid of `nr` rows and `nc` columns needs nr × nc values. Where the buffer holds fewer, the whole rows that it
/// does hold are shown, in their place; a row count or column count that is not positive means no picture.
class XOV_EXPORT XOVImageView : public XOVView {
  Q_OBJECT
  Q_CLASSINFO("shows", "gridded image")
  Q_PROPERTY(xov::XOVImageView::Palette colorPalette READ colorPalette WRITE writeColorPalette NOTIFY settingsChanged)
  Q_PROPERTY(int nShades READ nShades WRITE writeNShades NOTIFY settingsChanged)
  Q_PROPERTY(double scaleFactor READ scaleFactor WRITE writeScaleFactor NOTIFY settingsChanged)
  Q_PROPERTY(bool inverted READ inverted WRITE writeInverted NOTIFY settingsChanged)
  Q_PROPERTY(bool useTopoValues READ useTopoValues WRITE writeUseTopoValues NOTIFY settingsChanged)
  Q_PROPERTY(bool hideImage READ hideImage WRITE writeHideImage NOTIFY settingsChanged)
  Q_PROPERTY(bool showColorBar READ showColorBar WRITE writeShowColorBar NOTIFY settingsChanged)
  Q_PROPERTY(QString colorBarTitle READ colorBarTitle WRITE writeColorBarTitle NOTIFY settingsChanged)
  Q_PROPERTY(bool showAxes READ showAxes WRITE writeShowAxes NOTIFY settingsChanged)

public:
  /// The palettes, by the colours from the lowest to the highest value.
  enum Palette : std::int32_t {
    Gray = 0,               ///< white to black
    RedWhiteBlue = 1,       ///< white in the middle
    RedToBlue = 2,          ///< the rainbow
    BlueToRed = 3,          ///< the rainbow the other way around
    WhiteCenterRainbow = 4, ///< dark red to blue, white in the middle
    Viridis = 100,          ///< dark violet, blue, green, yellow: equal differences of values look equally large
    Cividis = 101,          ///< dark blue, grey, yellow: the same with any colour vision
    Dawn = 102,             ///< dark blue, green, ochre, rose: lightness and hue by equal steps
  };
  Q_ENUM(Palette)
  /// Red, green, blue, alpha and one that is not used: one byte a cell each, rows from the top.
  using Planes = std::array<std::uint8_t*, 5>;

  /// Limits of the whole globe, x 0 … 360 and y −90 … 90, and "Save to XYZ" in the contextual menu.
  explicit XOVImageView(QWidget* parent = nullptr) : XOVImageView(QRectF(), parent) {}
  explicit XOVImageView(const QRectF& frame, QWidget* parent = nullptr);
  ~XOVImageView() override;

  QSize usualSize() const override { return {480, 480}; }

  // The grid.

  /// Takes a grid whose extent is the view's limits, computes range, scale and picture and asks for a redraw.
  void setupImageDataNROWSNCOLS(const GridFloats& floats, std::int32_t rows, std::int32_t cols);
  /// The grid; null for none.
  GridFloats imageFloats() const { return imageFloats_; }
  /// Replaces the grid and computes nothing: see setupImageDataNROWSNCOLS().
  void setImageFloats(const GridFloats& floats) { imageFloats_ = floats; }
  /// Kept for hosts; the view does not read it.
  GridInts imageInts() const { return imageInts_; }
  void setImageInts(const GridInts& ints) { imageInts_ = ints; }
  /// Rows of the grid.
  std::int32_t nr() const { return nr_; }
  /// Columns of the grid.
  std::int32_t nc() const { return nc_; }
  /// Changes nothing, on purpose: only setupImageDataNROWSNCOLS() changes the size of the grid.
  void setImageNRowsNCols(std::int32_t nRows, std::int32_t nCols);
  /// Kept for hosts, 0 at first.
  std::int32_t floatOrIntData() const { return floatOrIntData_; }
  /// The extent of the grid or picture in the world, and the size of a cell there.
  float xminImage() const { return xminImage_; }
  /// The largest x of the extent.
  float xmaxImage() const { return xmaxImage_; }
  /// The smallest y of the extent.
  float yminImage() const { return yminImage_; }
  /// The largest y of the extent.
  float ymaxImage() const { return ymaxImage_; }
  /// The width of a cell.
  float dxImage() const { return dxImage_; }
  /// The height of a cell.
  float dyImage() const { return dyImage_; }

  // Values to colours.

  /// The value at the beginning and at the end of the colours, and the distance that spans them.
  float minValue() const { return minValue_; }
  /// The value at the end of the colours.
  float maxValue() const { return maxValue_; }
  /// The distance of values that spans the colours.
  float scaleFactor() const { return scaleFactor_; }
  /// maxValue is the largest value of the grid, minValue the smallest one, but never above the negative of the first
  /// value. Values that are not a number do not count; without any other both stay.
  void computeMinMax();
  /// The scale is maxValue, 1 in place of 0. Where the range lies on both sides of zero it is first made symmetric
  /// about it, and the scale is all of its width.
  virtual void computeScaleFactor();
  /// Sets both and computes the scale.
  void setMinMax(float min, float max);
  /// Sets scaleFactor() until it is computed anew.
  void setScaleFactor(float factor) { change(scaleFactor_, factor); }
  /// As in getColorValues(); 64 shades of palette 0, grey, at first.
  std::int32_t nShades() const { return nShades_; }
  void setNShades(std::int32_t shades) { change(nShades_, shades); }
  /// The number of the palette, as in getColorValues().
  std::int32_t palette() const { return palette_; }
  /// Sets palette(); the picture changes when it is made anew.
  void setPalette(std::int32_t palette) { change(palette_, palette); }
  /// The same by name.
  void setPalette(Palette palette) { setPalette(std::int32_t(palette)); }
  /// Whether colours turn into 255 minus themselves; off at first.
  bool inverted() const { return inverted_; }
  void setInverted(bool inverted) { change(inverted_, inverted); }
  /// Whether values are elevations in metres with colours of their own, as at first, whatever range, palette and
  /// shades are.
  bool useTopoValues() const { return useTopoValues_; }
  void setUseTopoValues(bool use) { change(useTopoValues_, use); }

  /// Whether cells without a value (NaN) are left out of the picture, so that the paper shows; off at first: then
  /// they have the colour of the lowest value. Shows after updateImagePlanes().
  bool missingCellsTransparent() const { return missingCellsTransparent_; }
  void setMissingCellsTransparent(bool transparent) { missingCellsTransparent_ = transparent; }

  // The picture.

  /// Makes bitmap and picture anew. Nothing changes while the grid has no rows or columns.
  virtual void setupNSImage();
  /// Colours the bitmap anew and asks for a redraw. A picture set with setAnImage() stays.
  void updateImagePlanes();
  /// The picture that is drawn, opaque unless missing cells are transparent. A picture of the host's has the nominal
  /// size of nc × nr cells, in as many pixels as it likes; pixels that it changes later show when it is set again.
  QImage anImage() const { return anImage_; }
  void setAnImage(const QImage& image) {
    anImage_ = image;
    forgetScaledImages();
  }
  /// (nc, nr) as of the last setupNSImage().
  QSizeF iSize() const { return iSize_; }
  /// The bitmap behind the picture of a grid, none before setupNSImage(); its alpha plane holds 1 everywhere.
  std::shared_ptr<const PlanarBitmap> iRep() const { return iRep_; }
  /// The planes of that bitmap.
  const Planes& iPlanes() const { return iPlanes_; }
  /// For maps: whether the picture is left out. This view does not look at it.
  bool hideImage() const { return hideImage_; }
  void setHideImage(bool hide) { change(hideImage_, hide); }

  // The peak.

  /// Finds the first of the grid's largest values and keeps its place; without any value above −1e30 the place stays.
  /// The value of a cell is looked up with the number of rows as the stride, which is exact for square grids only.
  void computeImagePeakLocation();
  /// Whether that place lies in an outermost row or column of the grid, so that the true peak may lie beyond it.
  /// False without a grid or a value.
  bool isPeakOnGridEdge() const;
  /// The x of the place of the largest value.
  float xZmax() const { return xZmax_; }
  /// The y of that place.
  float yZmax() const { return yZmax_; }
  /// Sets the place of the largest value.
  void setMaxPointXY(float x, float y);
  /// The place of the smallest value, which only the host sets.
  float xZmin() const { return xZmin_; }
  /// The y of that place.
  float yZmin() const { return yZmin_; }
  /// Sets the place of the smallest value.
  void setMinPointXY(float x, float y);

  // Drawing.

  /// Whether the picture lies under the limits to the fraction of a cell; off at first, when the limits select whole
  /// cells and these fill the frame, which moves the picture by up to a cell. Maps on which coasts must lie under
  /// boundaries and symbols want it on.
  bool placesCellsExactly() const { return placesCellsExactly_; }
  void setPlacesCellsExactly(bool exactly) { placesCellsExactly_ = exactly; }

  /// Whether a bar at the right side of the picture, which is narrower then, shows the colours of all values from
  /// minValue to maxValue; off at first. A map has one for a topography, and none for a picture.
  bool showColorBar() const { return showColorBar_; }
  void setShowColorBar(bool show) { change(showColorBar_, show); }
  /// What its numbers are, with their unit, as "Residual (s)"; written along the bar.
  QString colorBarTitle() const { return colorBarTitle_; }
  void setColorBarTitle(const QString& title) { change(colorBarTitle_, title); }
  /// Whether there are axes and room for them; on at first.
  bool showAxes() const { return showAxes_; }
  void setShowAxes(bool show) { change(showAxes_, show); }
  /// The "x" and "y" of a place inside the data frame and, where a picture of the grid shows, the "value" of the cell
  /// that is drawn there, in the unit that colorBarTitle() names; where cells are elevations it is the "height" in
  /// metres. Empty without a grid or picture.
  PlotReadout readout(QPointF point) const override;

  /// pRect (20, 20, width − 40, height − 40) and iRect (64, 50, width − 96, height − 80); without axes iRect is
  /// pRect.
  void computeRects() override;
  /// Lays out and draws the picture and its axes, on the paper that is there; only the view's size while it is being
  /// resized. Where there was no memory for the picture of a grid, a window shows the rest and exports fail.
  void drawRect(const QRectF& dirty) override;
  /// White paper in the data frame, and the part of the picture that the limits select on it.
  virtual void drawImage();
  /// The axes around the data frame, with their labels.
  virtual void drawAxes();
  /// The colour bar, where it shows.
  void drawColorBar();
  /// Red lines from the left and the lower axis to the peak, and a circle around it, if it lies within the limits.
  /// This view's drawRect() does not draw it.
  void drawMaxLocation();

  /// Both axes, as far as the picture or the limits go.
  PlotReach reach() const override;

  // Export.

  /// Opens a save sheet that proposes xyz_NNN.txt, NNN being pltCount(), which then counts up.
  void saveXYZ(QObject* sender = nullptr);
  /// Writes the grid where the sheet says if it was accepted; tells nobody when that fails.
  void didEndSaveXYZReturnCodeContextInfo(SavePanel* sheet, int returnCode, void* contextInfo);
  /// Writes a line "x y value" for each cell below three lines of limits and range, and computes minValue and
  /// maxValue anew for them. False, with one line in `error`, when there is no grid or the file cannot be written,
  /// which then is left as it was.
  bool writeXYZToFile(const QString& path, QString* error = nullptr);

protected:
  /// What the write of a property does that colours follow from: sets it, makes the picture anew and asks for a
  /// redraw, without a grid, too. Who hears of the setting may take the view away.
  template <typename Set>
  void writeColors(Set set) {
    const QPointer<XOVView> self(this);
    setNeedsDisplay();
    set();
    if (self) updateImagePlanes();
  }

  /// The limits of the grid's extent, also while a part of it is shown.
  PlotLimits limitsOfGrid() const;
  /// The steps of a drawing, after the layout, in a state of its own with white as its colour: picture and axes.
  virtual void drawContents();
  /// What the picture is: cells of a grid.
  virtual ImageKind imageKind() const { return ImageKind::Cells; }
  /// Whether the picture is that of the bitmap, and not one of the host's.
  bool showsBitmap() const { return iRep_ && !anImage_.isNull() && anImage_.cacheKey() == bitmapPicture_; }
  /// The value of the cell that is drawn at a point; none where no cell of the grid shows, or one without a value.
  std::optional<float> cellValueAt(QPointF point) const;
  /// Adds it as "height" or "value".
  void addCellValue(PlotReadout& readout, QPointF point) const;
  /// How cells become colours.
  virtual GridColoring gridColoring() const;
  /// The values of the grid that the buffer holds, row after row; empty without a grid.
  std::span<const float> heldCells() const;
  /// A bitmap for the held part of the grid: the view's, which has it no longer, where nobody else has it and it is
  /// as large, or a new one. Null, said in the log, when memory does not allow it.
  std::shared_ptr<PlanarBitmap> makeBitmap();
  /// Fills the bitmap's planes with the colours of the held cells. Returns its picture, which is opaque, but for
  /// missing cells where they are transparent; it takes the memory of the view's picture, which is gone then, where
  /// that serves.
  QImage colorBitmap(PlanarBitmap& bitmap);
  /// Makes the bitmap that of the view, with the picture of it; null ones leave the view without.
  void installBitmap(const std::shared_ptr<PlanarBitmap>& bitmap, const QImage& picture);
  /// Whether there is a colour bar.
  virtual bool hasColorBar() const { return showColorBar_; }
  /// The numbers of a colour bar.
  struct ColorBarScale {
    float lowest = 0;           ///< at the lower end
    float highest = 0;          ///< at the upper end
    int fontSize = 14;          ///< points
    bool mayScaleLabels = true; ///< whether large numbers are divided by a power of ten
  };
  /// From minValue to maxValue.
  virtual ColorBarScale colorBarScale() const { return {minValue_, maxValue_}; }
  /// Takes the room of the colour bar, where it shows, from the data frame.
  void leaveRoomForColorBar();
  /// Strokes the data frame with lines of 2 points in black, and begins axes with tick labels of those attributes.
  void beginFramedAxes(const std::shared_ptr<const TextAttributes>& tickLabels);
  /// Adds an X axis below the frame, with its label, and a Y axis at the left, without one.
  void addAxes(const QString& label, float xInterval, float yInterval);

  GridFloats imageFloats_;
  GridInts imageInts_;
  std::int32_t nr_ = 0;
  std::int32_t nc_ = 0;
  std::int32_t nShades_ = 64;
  std::int32_t palette_ = 0;
  std::int32_t floatOrIntData_ = 0;
  float minValue_ = 0;
  float maxValue_ = 0;
  float scaleFactor_ = 1;
  float xZmax_ = 0;
  float yZmax_ = 0;
  float xZmin_ = 0;
  float yZmin_ = 0;
  /// Kept for subclasses, like zMax_ and c_.
  float zMin_ = 0; // kept for subclasses, like zMax_ and c_
  /// See zMin_.
  float zMax_ = 0;
  float xminImage_ = 0;
  float xmaxImage_ = 0;
  float yminImage_ = 0;
  float ymaxImage_ = 0;
  float dxImage_ = 0;
  float dyImage_ = 0;
  QImage anImage_;
  std::shared_ptr<PlanarBitmap> iRep_;
  QSizeF iSize_;
  Planes iPlanes_{};
  /// See zMin_.
  std::int32_t c_ = 0;
  bool showAxes_ = true;
  bool inverted_ = false;
  bool hideImage_ = false;
  bool placesCellsExactly_ = false;
  bool useTopoValues_ = true;
  bool missingCellsTransparent_ = false;
  bool showColorBar_ = false;
  QString colorBarTitle_;

private:
  Palette colorPalette() const { return Palette(palette()); }
  QImage ownPicture(const QSize& size);
  /// Cells from the lower left corner of the grid: those that the limits select, and those that the picture has.
  struct ShownCells {
    QRectF selected;
    QRectF held;
  };
  ShownCells shownCells() const;
  // What the writes of properties do: set, and draw anew.
  void writeColorPalette(Palette value) {
    writeColors([&] { setPalette(value); });
  }
  void writeNShades(int value) {
    writeColors([&] { setNShades(value); });
  }
  void writeScaleFactor(float value) {
    writeColors([&] { setScaleFactor(value); });
  }
  void writeInverted(bool value) {
    writeColors([&] { setInverted(value); });
  }
  void writeUseTopoValues(bool value) {
    writeColors([&] { setUseTopoValues(value); });
  }
  void writeHideImage(bool value) {
    setNeedsDisplay();
    setHideImage(value);
  }
  void writeShowColorBar(bool value) {
    setNeedsDisplay();
    setShowColorBar(value);
  }
  void writeColorBarTitle(const QString& value) {
    setNeedsDisplay();
    setColorBarTitle(value);
  }
  void writeShowAxes(bool value) {
    setNeedsDisplay();
    setShowAxes(value);
  }

  std::int64_t bitmapPicture_ = 0; // the key of the picture that shows the bitmap
  bool lacksPicture_ = false;      // for want of memory, although there is a grid
};

} // namespace xov
