#pragma once

#include "XOV_Graphics/base/Export.h"
#include "XOV_Graphics/graphics/AxisCodes.h"
#include "XOV_Graphics/platform/Pasteboard.h"
#include "XOV_Graphics/platform/Path.h"
#include "XOV_Graphics/platform/SavePanel.h"
#include "XOV_Graphics/platform/TextAttributes.h"
#include "XOV_Graphics/platform/View.h"
#include "XOV_Graphics/views/base/PlotController.h"
#include "XOV_Graphics/views/base/PlotGeometry.h"
#include "XOV_Graphics/views/base/PlotPart.h"
#include "XOV_Graphics/views/base/PlotReadout.h"

#include <QDateTime>
#include <QKeySequence>
#include <QLineF>
#include <QMenu>
#include <QPointer>
#include <QString>
#include <QTimer>

#include <array>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <vector>

namespace xov {

/// The base of the plot views. It holds the layout rectangles, data limits, titles and labels with their text
/// attributes, draws aligned and rotated text, reports mouse positions in data coordinates to the host's controller,
/// and saves, copies and drags out what a view shows. It draws nothing by itself.
///
/// Coordinates are view points, y upwards from the lower left. No setter asks for a redraw: the host calls
/// setNeedsDisplay() when it has set what it wants. Writing a property (QObject::setProperty(), Qt Designer) does
/// ask. Made and set in the main thread; another one may draw and export it while nobody else uses it.
class XOV_EXPORT XOVView : public View {
  Q_OBJECT
  Q_CLASSINFO("shows", "empty plot")
  Q_PROPERTY(QString title READ plotTitle WRITE writeTitle NOTIFY settingsChanged)
  Q_PROPERTY(QString subtitle READ subtitle WRITE writeSubtitle NOTIFY settingsChanged)
  Q_PROPERTY(QString xLabel READ xLabelString WRITE writeXLabel NOTIFY settingsChanged)
  Q_PROPERTY(QString yLabel READ yLabelString WRITE writeYLabel NOTIFY settingsChanged)
  Q_PROPERTY(double xmin READ xmin WRITE writeXmin NOTIFY limitsChanged)
  Q_PROPERTY(double xmax READ xmax WRITE writeXmax NOTIFY limitsChanged)
  Q_PROPERTY(double ymin READ ymin WRITE writeYmin NOTIFY limitsChanged)
  Q_PROPERTY(double ymax READ ymax WRITE writeYmax NOTIFY limitsChanged)
  Q_PROPERTY(double minYRange READ minYRange WRITE writeMinYRange NOTIFY settingsChanged)
  Q_PROPERTY(double lineWidth READ lineWidth WRITE writeLineWidth NOTIFY settingsChanged)
  Q_PROPERTY(bool fixedXAxisRange READ _fixedXAxisRange WRITE writeFixedXAxisRange NOTIFY settingsChanged)
  Q_PROPERTY(bool fixedYAxisRange READ _fixedYAxisRange WRITE writeFixedYAxisRange NOTIFY settingsChanged)
  Q_PROPERTY(bool showPlotTitle READ _showPlotTitle WRITE writeShowPlotTitle NOTIFY settingsChanged)
  Q_PROPERTY(bool timeStamp READ _timeStamp WRITE writeTimeStamp NOTIFY settingsChanged)
  Q_PROPERTY(bool showZoomRect READ _showZoomRect WRITE writeShowZoomRect NOTIFY settingsChanged)
  Q_PROPERTY(double labelFontSize READ labelFontSize WRITE writeLabelFontSize)
  Q_PROPERTY(double titleFontSize READ titleFontSize WRITE writeTitleFontSize)
  Q_PROPERTY(QColor titleColor READ titleColor WRITE writeTitleColor)
  Q_PROPERTY(bool trackMouse READ _trackMouse WRITE writeTrackMouse NOTIFY settingsChanged)
  Q_PROPERTY(double mouseTrackInterval READ _mouseTrackInterval WRITE set_mouseTrackInterval NOTIFY settingsChanged)

public:
  static constexpr std::size_t kLabelBufferSize = 64; ///< the bytes of xLabel(), its zero included
  /// minYRange() while it is not set.
  static constexpr float kUnsetRange = -12345.0f;

  /// Sets the fonts, an empty axis path, the contextual menu and the defaults of every field. Does not lay out.
  explicit XOVView(QWidget* parent = nullptr) : XOVView(QRectF(), parent) {}
  explicit XOVView(const QRectF& frame, QWidget* parent = nullptr);
  ~XOVView() override;

  // Layout.

  /// The outer plotting rectangle, in view points; zero before the first layout.
  QRectF pRect() const { return pRect_; }
  /// The data frame: axes are drawn around it, clicks inside it are reported.
  QRectF iRect() const { return iRect_; }
  /// pRect (20, 20, width − 40, height − 40) and iRect (50, 50, width − 80, height − 80) of the bounds; sizes may
  /// turn out negative. Subclasses lay out in their own way.
  virtual void computeRects();
  /// Lays out anew and redraws when the user has finished resizing.
  void viewDidEndLiveResize() override;

  // Data limits.

  /// The value at the left end of the x axis.
  float xmin() const { return xmin_; }
  /// The value at the right end of the x axis.
  float xmax() const { return xmax_; }
  /// The value at the lower end of the y axis.
  float ymin() const { return ymin_; }
  /// The value at the upper end of the y axis.
  float ymax() const { return ymax_; }
  /// The limits of a third dimension, the values of a grid.
  float zmin() const { return zmin_; }
  float zmax() const { return zmax_; }
  /// Limits are taken as given, whatever their order and the fixed-range flags; each setter rewrites xyRect().
  void setXmin(float value);
  void setXmax(float value);
  void setYmin(float value);
  void setYmax(float value);
  /// Both limits of x; see setXmin().
  void setXLimitsMinMax(float min, float max);
  /// Both limits of y; see setXmin().
  void setYLimitsMinMax(float min, float max);
  /// (xmin, ymin, xmax − xmin, ymax − ymin) as of the last limit setter.
  QRectF xyRect() const { return xyRect_; }
  /// All four limits.
  PlotLimits limits() const { return {xmin_, xmax_, ymin_, ymax_}; }
  /// Which axes are logarithmic, for clicks, tracking and axes; none unless overridden.
  virtual LogAxes logAxes() const { return {}; }
  /// The smallest Y range for views that scale to their data; kUnsetRange when unset.
  float minYRange() const { return minYRange_; }
  void setMinYRange(float range) { change(minYRange_, range); }
  /// The width of the lines that show data, in points: traces, curves and the outlines of bars. 1 at first, 0.25 of
  /// histograms; 0 and what is no width draw none. Maps, images and symbols do not read it.
  double lineWidth() const { return lineWidth_; }
  void setLineWidth(double points) { change(lineWidth_, points); }
  /// Whether views that compute limits from data keep the host's X or Y limits.
  bool _fixedXAxisRange() const { return fixedXAxisRange_; }
  void set_fixedXAxisRange(bool fixed) { change(fixedXAxisRange_, fixed); }
  bool _fixedYAxisRange() const { return fixedYAxisRange_; }
  void set_fixedYAxisRange(bool fixed) { change(fixedYAxisRange_, fixed); }
  /// Margins for subclasses; the base does not read them.
  const std::array<float, 4>& margins() const { return margins_; }

  // What part of its data the view shows: see PlotNavigator.

  /// Where the view can be moved. Unless overridden both axes move within the limits that they have while the whole
  /// is shown.
  virtual PlotReach reach() const;
  /// The part that is shown; nothing, as at first, while the view shows what it shows by itself.
  const std::optional<PlotPart>& shownPart() const { return shownPart_; }
  /// The part, or the whole of reach().
  PlotPart currentPart() const { return shownPart_ ? *shownPart_ : reach().whole; }
  /// Shows the part nearest to a wish, through the limits or the settings of the view, and draws anew; nothing, and
  /// the whole, bring back what it shows by itself. Limits that a host sets do so, too.
  void showPart(const std::optional<PlotPart>& wish);
  /// What showPart() makes of a wish.
  virtual PlotPart nearestPart(const PlotPart& wish) const;
  /// The factor nearest to a wish by which the width of the part shown can be changed.
  virtual double nearestZoom(double factor) const;
  /// What the X limits and xyRect() count from: 0 but for short parts of records that are so long that single
  /// precision does not tell their samples apart. Positions that are reported count from 0.
  double xOrigin() const { return xOrigin_; }
  /// The data coordinates of a point in the data frame, in double precision.
  QPointF dataAt(QPointF viewPoint) const;
  /// Where a point lies in the part shown, also beside the data frame; nothing while that is not known. On a drum x
  /// goes on from row to row.
  virtual std::optional<QPointF> partPosition(QPointF viewPoint) const;
  /// The rectangle along whose sides the axes of the part run and which the point is in; empty elsewhere.
  virtual QRectF partFrame(QPointF viewPoint) const;
  /// The part inside a box of the view.
  virtual PlotPart partInside(const QRectF& box) const;
  /// The lines along which the view shows a value of x; none outside the part shown.
  virtual std::vector<QLineF> linesAt(double x) const;
  /// The moment that x = 0 stands for where x is time in seconds; invalid where it is not, or is not known.
  virtual QDateTime momentOfZero() const { return {}; }

  // Titles and labels.

  /// The title; empty for none.
  QString plotTitle() const { return plotTitle_; }
  /// Sets plotTitle().
  void setTitle(const QString& title) { change(plotTitle_, title); }
  /// A line in small letters between the title and the data frame, for views whose title stands above it in the
  /// middle; empty for none. The title makes room for it.
  QString subtitle() const { return subtitle_; }
  void setSubtitle(const QString& subtitle) { change(subtitle_, subtitle); }
  /// What the x axis is called, with its unit: "Time (s)"; empty for none.
  QString xLabelString() const { return xLabelString_; }
  /// Sets xLabelString().
  void setXLabelString(const QString& label) { change(xLabelString_, label); }
  /// What the y axis is called, with its unit; empty for none.
  QString yLabelString() const { return yLabelString_; }
  /// Sets yLabelString().
  void setYLabelString(const QString& label) { change(yLabelString_, label); }
  /// Fonts and colours of axis and tick labels (Helvetica 18), the title (18), the view size (12) and the time stamp
  /// (9, grey). The attributes are shared: a change is seen by every later drawing.
  const std::shared_ptr<TextAttributes>& labelAttributes() const { return labelAttributes_; }
  /// Those of the title; see labelAttributes().
  const std::shared_ptr<TextAttributes>& titleAttributes() const { return titleAttributes_; }
  /// Those of the view size; see labelAttributes().
  const std::shared_ptr<TextAttributes>& sizeLabelAttributes() const { return sizeLabelAttributes_; }
  /// Those of the time stamp; see labelAttributes().
  const std::shared_ptr<TextAttributes>& timeStampAttributes() const { return timeStampAttributes_; }
  /// Replaces the font by Helvetica of that size and keeps the colour.
  void setLabelFontSize(float size);
  /// The same for the title.
  void setTitleFontSize(float size);
  /// The colour of the title alone.
  void setTitleColor(const QColor& color);
  /// The size of axis and tick labels in points.
  double labelFontSize() const { return labelAttributes_->pointSize(); }
  /// The size of the title in points.
  double titleFontSize() const { return titleAttributes_->pointSize(); }
  /// The colour that the title is drawn in.
  QColor titleColor() const { return titleAttributes_->effectiveColor(); }
  /// Whether a subclass draws the time stamp and the title.
  bool _timeStamp() const { return timeStamp_; }
  void set_timeStamp(bool show) { change(timeStamp_, show); }
  /// Whether a subclass draws the title.
  bool _showPlotTitle() const { return showPlotTitle_; }
  /// Sets _showPlotTitle().
  void set_showPlotTitle(bool show) { change(showPlotTitle_, show); }
  /// Stored for hosts; dragging with the plain mouse shows nothing.
  bool _showZoomRect() const { return showZoomRect_; }
  void set_showZoomRect(bool show) { change(showZoomRect_, show); }

  /// The path that axes are gathered in before they are stroked.
  const std::shared_ptr<Path>& xAxisPath() const { return xAxisPath_; }
  void setXAxisPath(const std::shared_ptr<Path>& path) { xAxisPath_ = path; }
  /// The text handed to the axis functions, at most kLabelBufferSize − 1 bytes.
  const char* xLabel() const { return xLabel_.data(); }

  // Drawing into the current graphics context.

  /// Draws with labelAttributes at (x, y): hjust 1 left, 2 centre, 3 right; vjust 1 (and any other) bottom, 2 centre,
  /// 3 top.
  void drawStringXYHJustVJust(const QString& string, float x, float y, int hjust, int vjust);
  void drawStringXYHJustVJust(const QString& string, float x, float y, HJust hjust, VJust vjust) {
    drawStringXYHJustVJust(string, x, y, int(hjust), int(vjust));
  }
  /// Draws turned anticlockwise about the text's lower left corner. Made for 90 degrees: the text's height counts
  /// along x and its width along y.
  void drawRotatedStringXYHJustVJustAngle(const QString& string, float x, float y, int hjust, int vjust, float angle);
  void drawRotatedStringXYHJustVJustAngle(const QString& string, float x, float y, HJust hjust, VJust vjust,
                                          float angle) {
    drawRotatedStringXYHJustVJustAngle(string, x, y, int(hjust), int(vjust), angle);
  }
  /// The title inside the data frame, 24 points from its right side and two text heights below its top.
  void drawTitle();
  /// The title 4 points above the data frame, centred, or above the subtitle (Helvetica 9 or, where the view is not
  /// wide enough, smaller; in the title's colour), which stands there then.
  void drawTitleTopCentered();
  /// The local date and time in the lower right corner.
  void drawTimeStamp();
  /// The data frame with its size in inches in the middle.
  void drawViewSize();
  /// A black line around the bounds.
  void strokeBounds();
  /// Fills the bounds with the current colour.
  void fillBounds();
  /// Fills the bounds with one colour and strokes a line around them in the other.
  void fillWithColorStrokeColor(const QColor& fill, const QColor& stroke);

  // Mouse.

  /// The controller is not owned and may go away at any time; nullptr takes it out.
  void setController(PlotController* controller);
  PlotController* controller() const { return controller_.get(); }
  /// A click with Shift drags a picture of the view out; a single click inside iRect() is reported to the controller
  /// in data coordinates. Everything else does nothing.
  void mouseDown(const MouseEvent& event) override;
  /// Whether the pointer is reported to the controller.
  bool _trackMouse() const { return trackMouse_; }
  /// Starts a timer that reports the pointer to the controller, or stops the one started last. Starting twice leaves
  /// two running.
  void set_trackMouse(bool track);
  /// Seconds between reports; a new interval takes effect when tracking is next switched on.
  double _mouseTrackInterval() const { return mouseTrackInterval_; }
  void set_mouseTrackInterval(double seconds) { change(mouseTrackInterval_, seconds); }
  /// The timer started last, or the one stored; null for none.
  QTimer* _mouseTrackTimer() const { return mouseTrackTimer_; }
  /// Stores a timer without starting or stopping it.
  void set_mouseTrackTimer(QTimer* timer) { mouseTrackTimer_ = timer; }
  /// Reports the pointer's position, if it is inside iRect(), to the controller.
  void handleTrackedMousePosition();
  /// What the view shows at a point of its own (view points, y upwards), as it was last drawn: values in their units,
  /// for a status line. Empty where it shows nothing, for points that are not finite, and unless overridden.
  virtual PlotReadout readout(QPointF point) const;
  /// The record whose trace lies under a point, or nearest to it, as the view was last drawn; none outside the data
  /// frame and of views without records.
  virtual std::optional<PointedRecord> recordAt(QPointF point) const;
  /// A crosshair over pRect().
  void resetCursorRects() override;
  /// "Save To PDF", "Save To TIF", "Save To PNG", "Save To JPG", "Copy As PDF".
  QMenu* contextualMenu() const { return contextualMenu_; }
  /// The key that chooses an entry of a view's contextual menu while the view has the focus; empty where there is
  /// none. The entry's tool tip names it.
  static QKeySequence menuKey(const QAction* item);

  // Export.

  /// Each opens a save sheet that proposes plt_NNN with its extension, NNN being pltCount(), which then counts up;
  /// the file is written when the sheet ends, to the sheet's file name, whether it was accepted or not.
  void savePDF(QObject* sender = nullptr);
  void saveTIF(QObject* sender = nullptr);
  void savePNG(QObject* sender = nullptr);
  void saveJPG(QObject* sender = nullptr);
  /// The end of a save sheet: writes the file to its name.
  void didEndPDFReturnCodeContextInfo(SavePanel* sheet, int returnCode, void* contextInfo);
  void didEndTIFReturnCodeContextInfo(SavePanel* sheet, int returnCode, void* contextInfo);
  void didEndPNGReturnCodeContextInfo(SavePanel* sheet, int returnCode, void* contextInfo);
  void didEndJPGReturnCodeContextInfo(SavePanel* sheet, int returnCode, void* contextInfo);
  /// How many save sheets this view has opened.
  std::int32_t pltCount() const { return pltCount_; }

  /// Writes the view, or leaves an existing file as it was: false, with one line in `error` that names the file.
  bool writePDFToFile(const QString& path, QString* error = nullptr);
  /// As writePDFToFile(), vectors as SVG.
  bool writeSVGToFile(const QString& path, QString* error = nullptr);
  /// As writePDFToFile(), a TIFF picture at exportPixelRatio() pixels a point.
  bool writeTIFToFile(const QString& path, QString* error = nullptr);
  /// As writePDFToFile(), a JPEG picture at exportPixelRatio() pixels a point.
  bool writeJPGToFile(const QString& path, QString* error = nullptr);
  /// As writePDFToFile(), a PNG picture at exportPixelRatio() pixels a point.
  bool writePNGToFile(const QString& path, QString* error = nullptr);

  /// Puts a PDF of the view on the clipboard.
  void copy(QObject* sender = nullptr);
  /// The same on any pasteboard.
  void writePDFToPasteboard(Pasteboard& pasteboard);
  /// A picture of the whole view at exportPixelRatio() pixels a point.
  QImage snapshot();
  /// The part of it inside a rectangle, in view points.
  virtual QImage snapshotFromRect(const QRectF& rect);

  // For screen readers.

  /// The title, or the kind of view while there is none.
  QString spokenName() const override;
  /// The ranges of the axes with their labels, as "time (s) from 0 to 40, amplitude from -1 to 1"; an axis whose
  /// limits are equal is left out.
  QString spokenDescription() const override;
  /// What an axis without a label is called there; "x" and "y" unless overridden.
  virtual QString usualAxisName(Qt::Axis axis) const;

Q_SIGNALS:
  /// A single click inside the data frame, and the pointer's position there while tracking is on, in data
  /// coordinates: what the controller is told, after it.
  void clicked(QPointF position);
  /// The pointer's position inside the data frame while tracking is on, in data coordinates.
  void tracked(QPointF position);
  /// The limits of X or Y are others than before: at once when they are set or computed, after the drawing when they
  /// change in it, and after that of a window when the event loop comes round.
  void limitsChanged();
  /// Another value of a property but the limits and those of fonts, whether it was set or the property written.
  void settingsChanged();
  /// Another part of the data is shown.
  void shownPartChanged();
  /// The view was written to a file.
  void exported(const QString& path);

protected:
  /// Opens the contextual menu.
  void contextMenuEvent(QContextMenuEvent* event) override;
  /// Menu and Shift+F10 open the contextual menu, and its shortcuts choose from it.
  void keyPressEvent(QKeyEvent* event) override;
  /// Sets menuKey() of an entry.
  static void setMenuKey(QAction* item, const QKeySequence& key);
  void didDraw() override;

  /// Sets what a property reads, and emits settingsChanged() when that changes it.
  template <typename Value>
  void change(Value& field, const Value& value) {
    if (field == value) return;
    field = value;
    Q_EMIT settingsChanged();
  }
  /// Emits limitsChanged() when the limits are others than it last told, and no drawing is under way.
  void announceLimits();
  /// Shows what shownPart() says. Unless overridden that are the limits, which fixed ranges then keep; called with
  /// the limits and flags of the whole.
  virtual void applyPart();
  /// Sets limits without a host's doing; xOrigin() is taken off those of X.
  void takeShownX(const PlotSpan& span);
  void takeShownY(const PlotSpan& span);
  /// The limits that the view has while it shows the whole, and its flags that keep them.
  struct WholeLimits {
    PlotLimits limits;   ///< of both axes
    bool fixedX = false; ///< _fixedXAxisRange()
    bool fixedY = false; ///< _fixedYAxisRange()
  };
  /// What they are now, or were before a part was shown.
  WholeLimits wholeLimits() const;
  /// The gain of the part shown.
  double shownGain() const { return shownPart_ ? shownPart_->gain : 1; }
  /// The host sets what a part had changed: the whole is shown first. False when who heard of that has taken the view
  /// away.
  [[nodiscard]] bool endPart();
  /// Emits exported() of a view that is still there when `written`, which it returns.
  static bool announceExport(const QPointer<XOVView>& view, bool written, const QString& path);

  /// Whether a point lies inside the data frame, which has a size.
  bool isInFrame(QPointF point) const;
  /// Adds what an axis says at a point, under its label or usual name.
  void addAxisValue(PlotReadout& readout, QLatin1String name, Qt::Axis axis, QPointF point) const;

  /// How much of the xLabel buffer a text may take.
  enum class LabelRoom { All, ExceptPowerOfTen };
  /// Fills the xLabel buffer, cut between characters: at its size, or so that the axis functions can append their
  /// power of ten.
  void setXLabel(const QString& text, LabelRoom room = LabelRoom::All);
  /// White paper with a black line around it, the start of most views' drawing.
  void drawPaper();
  /// Resets the axis functions and hands them the emptied axis path, labelAttributes and a data frame to draw around,
  /// with lines of 0.75 points.
  void beginAxes(const QRectF& frame);
  /// Adds one axis, ticks, labels and all, to those begun with beginAxes(). The label goes through the xLabel buffer;
  /// where the power flag of the axis is set it is cut so that a power of ten can follow.
  /// An axis that logAxes() names is logarithmic, and the interval does not count.
  void addAxis(AxisSide side, const QString& label, float lower, float upper, float interval = kAutomaticInterval);
  /// Empties xAxisPath().
  void emptyAxisPath();
  /// Strokes xAxisPath() in the current stroke colour.
  void strokeAxisPath();

  /// Opens a save sheet that proposes `stem`_NNN with the extension, NNN being pltCount(), which then counts up. When
  /// the user is done, and while the view is there, `didEnd` gets the sheet and its return code.
  void openSaveSheet(const QString& stem, const QString& extension,
                     const std::function<void(SavePanel*, int)>& didEnd);
  /// Drags a picture of the view out, centred under the pointer.
  void dragOut();

  QRectF pRect_;
  QRectF iRect_;
  QRectF xyRect_;
  std::shared_ptr<TextAttributes> labelAttributes_;
  std::shared_ptr<TextAttributes> sizeLabelAttributes_;
  std::shared_ptr<TextAttributes> titleAttributes_;
  std::shared_ptr<TextAttributes> timeStampAttributes_;
  QString plotTitle_;
  QString subtitle_;
  QString yLabelString_;
  QString xLabelString_;
  bool fixedXAxisRange_ = false;
  bool fixedYAxisRange_ = false;
  float xmin_ = 0;
  float xmax_ = 0;
  float ymin_ = 0;
  float ymax_ = 0;
  float zmin_ = 0;
  float zmax_ = 0;
  double xOrigin_ = 0;
  float minYRange_ = kUnsetRange;
  double lineWidth_ = 1;
  std::array<float, 4> margins_{};
  std::shared_ptr<Path> xAxisPath_;
  std::array<char, kLabelBufferSize> xLabel_{};

private:
  using SheetEnd = void (XOVView::*)(SavePanel*, int, void*);
  using FileWriter = bool (XOVView::*)(const QString&, QString*);
  void buildMenu();
  void openMenu(QPoint globalPosition);
  /// Tells the controller and those connected to the signal.
  void report(QPointF position, void (PlotController::*message)(QPointF, XOVView&), void (XOVView::*signal)(QPointF));
  void openPictureSheet(const QString& extension, SheetEnd didEnd);
  void writeSheetFile(const SavePanel* sheet, FileWriter write);
  void limitsWereSet();
  void drawTitleAt(QPointF origin);
  double drawSubtitle();

  // What the writes of properties do: set, and draw anew.
  void writeTitle(const QString& title);
  void writeSubtitle(const QString& subtitle);
  void writeXLabel(const QString& label);
  void writeYLabel(const QString& label);
  void writeXmin(float value);
  void writeXmax(float value);
  void writeYmin(float value);
  void writeYmax(float value);
  void writeMinYRange(float range);
  void writeLineWidth(double points);
  void writeFixedXAxisRange(bool fixed);
  void writeFixedYAxisRange(bool fixed);
  void writeShowPlotTitle(bool show);
  void writeTimeStamp(bool show);
  void writeShowZoomRect(bool show);
  void writeLabelFontSize(float size);
  void writeTitleFontSize(float size);
  void writeTitleColor(const QColor& color);
  // Nothing to draw; and on twice would leave a timer that nobody can stop.
  void writeTrackMouse(bool track);

  std::optional<PlotPart> shownPart_;
  std::optional<WholeLimits> whole_; ///< while a part is shown
  PlotLimits announcedLimits_;
  std::int32_t pltCount_ = 0;
  QMenu* contextualMenu_ = nullptr;
  bool timeStamp_ = false;
  bool showZoomRect_ = false;
  bool showPlotTitle_ = false;
  bool trackMouse_ = false;
  double mouseTrackInterval_;
  QPointer<QTimer> mouseTrackTimer_;
  PlotControllerReference controller_;
};

} // namespace xov
