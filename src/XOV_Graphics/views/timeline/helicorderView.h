#pragma once

#include "XOV_Graphics/base/Export.h"
#include "XOV_Graphics/seismic/EventOrigin.h"
#include "XOV_Graphics/seismic/SeismogramRecord.h"
#include "XOV_Graphics/views/base/XOVView.h"

#include <QColor>
#include <QDateTime>
#include <QTimeZone>

#include <cstdint>
#include <memory>
#include <optional>
#include <vector>

namespace xov {

struct DrawnTrace;
struct RecordTrace;
struct Trace;
struct DrumRows;
struct HelicorderPage;
struct HourLabel;
struct PageStart;
struct PieceTimes;

/// A stretch of time on a drum.
struct XOV_EXPORT DrumStretch {
  double beginSeconds = 0; ///< on the axis of the pieces, from which their b() counts
  /// Where it ends.
  double endSeconds = 0;
  QDateTime begin; ///< the same in UTC; invalid where the date of the page is not known
  /// The same of the end.
  QDateTime end;
};

/// A continuous recording as a drum recorder draws it: rows of rowDuration() seconds from the top of the page down,
/// each with its stretch of the trace around its own zero line, a minute scale along the bottom, date and hour beside
/// each row, and vertical markers where events of some size began.
///
/// The recording comes in pieces, such as those on both sides of a gap. The page starts at the whole hour (UTC) that
/// contains the reference time of the first piece, and the times of all pieces count from that reference time. Pieces
/// alternate in black and red. Amplitudes scale to the largest sample of all; with a gain above 1 large ones run into
/// the neighbouring rows, as nothing is cut: samples before the page lie in rows above it, those after it below.
///
/// A host may have the page start at a moment of its own (setPageStart()), its rows coloured in turn or by days,
/// local time at the right, traces held within some rows of their zero line, with marks where they are, and events
/// labelled.
///
/// Event markers carry the reference time's offset into its hour once more, so they stand that much after the origin
/// time, in rows and beyond the page; on a page with a start of its own they stand at the origin time.
class XOV_EXPORT helicorderView : public XOVView {
  Q_OBJECT
  Q_CLASSINFO("shows", "drum record")
  Q_PROPERTY(double gainFactor READ gainFactor WRITE writeGainFactor NOTIFY settingsChanged)
  Q_PROPERTY(double rowDuration READ rowDuration WRITE writeRowDuration NOTIFY settingsChanged)
  Q_PROPERTY(int nRows READ nRows WRITE writeNRows NOTIFY settingsChanged)
  Q_PROPERTY(bool showZeroLines READ showZeroLines WRITE writeShowZeroLines NOTIFY settingsChanged)
  Q_PROPERTY(bool labelHours READ labelHours WRITE writeLabelHours NOTIFY settingsChanged)
  Q_PROPERTY(double magThreshold READ magThreshold WRITE writeMagThreshold NOTIFY settingsChanged)

  Q_PROPERTY(QDateTime pageStart READ pageStart WRITE writePageStart NOTIFY settingsChanged)
  Q_PROPERTY(bool colorsByDay READ colorsByDay WRITE writeColorsByDay NOTIFY settingsChanged)
  Q_PROPERTY(double clipReach READ clipReach WRITE writeClipReach NOTIFY settingsChanged)
  Q_PROPERTY(bool showAmplitudeBar READ showAmplitudeBar WRITE writeShowAmplitudeBar NOTIFY settingsChanged)
  Q_PROPERTY(QString amplitudeUnit READ amplitudeUnit WRITE writeAmplitudeUnit NOTIFY settingsChanged)
  Q_PROPERTY(bool showEventLabels READ showEventLabels WRITE writeShowEventLabels NOTIFY settingsChanged)
  Q_PROPERTY(bool spreadsHourLabels READ spreadsHourLabels WRITE writeSpreadsHourLabels NOTIFY settingsChanged)

public:
  explicit helicorderView(QWidget* parent = nullptr) : helicorderView(QRectF(), parent) {}
  explicit helicorderView(const QRectF& frame, QWidget* parent = nullptr);
  ~helicorderView() override;

  QString usualAxisName(Qt::Axis axis) const override;
  QSize usualSize() const override { return {800, 600}; }

  /// The pieces of one channel, kept without owning them: a host that lets the array go gets a white page. The first
  /// one gives the page its start and title. Null pieces draw nothing.
  void setWvfrmArray(const std::shared_ptr<const SeismogramArray>& pieces) { wvfrmArray_ = pieces; }
  /// A temporary one would be gone when the view draws.
  template <typename Array>
  void setWvfrmArray(std::shared_ptr<Array>&&) = delete;
  std::shared_ptr<const SeismogramArray> wvfrmArray() const { return wvfrmArray_.lock(); }
  /// The events, kept without owning them. Null events and those without a date are not marked.
  void setTheHypoArray(const std::shared_ptr<const EventOriginArray>& events) { theHypos_ = events; }
  /// A temporary one would be gone when the view draws.
  template <typename Array>
  void setTheHypoArray(std::shared_ptr<Array>&&) = delete;
  /// The events; null once the host has let them go.
  std::shared_ptr<const EventOriginArray> theHypos() const { return theHypos_.lock(); }

  /// The largest absolute sample of all pieces, as of the last draw.
  float maxAmplitude() const { return maxAmplitude_; }
  void setMaxAmplitude(float amplitude) { maxAmplitude_ = amplitude; }
  /// 1 lets the largest sample touch the edges of its row; 8 at first.
  float gainFactor() const { return gainFactor_; }
  void setGainFactor(float gain) { change(gainFactor_, gain); }
  /// Seconds a row; 3600 at first. Traces are drawn only while it is positive.
  float rowDuration() const { return rowDuration_; }
  void setRowDuration(float seconds) {
    if (!endPart()) return;
    change(rowDuration_, seconds);
  }
  /// Rows on the page; 24 at first. Beyond 2048 zero lines and labels thin out, and traces end.
  std::int32_t nRows() const { return nRows_; }
  void setNRows(std::int32_t rows) {
    if (!endPart()) return;
    change(nRows_, rows);
  }
  /// Where the page starts, as of the last draw; invalid when that is not known.
  QDateTime startTime() const { return startTime_; }
  void setStartTime(const QDateTime& time) { startTime_ = time; }
  /// Seconds that the page covers, nRows() · rowDuration(), as of the last draw.
  double plotDuration() const { return plotDuration_; }
  void setPlotDuration(double seconds) { plotDuration_ = seconds; }
  /// Thin lines through the rows; off at first.
  bool showZeroLines() const { return showZeroLines_; }
  void setShowZeroLines(bool show) { change(showZeroLines_, show); }
  /// Events are marked when mb, Ms or Mw reaches it; 4 at first.
  float magThreshold() const { return magThreshold_; }
  void setMagThreshold(float magnitude) { change(magThreshold_, magnitude); }
  /// Whether the time scale counts hours instead of minutes; off at first.
  bool labelHours() const { return labelHours_; }
  void setLabelHours(bool hours) { change(labelHours_, hours); }

  /// The moment at which the first row begins, in any zone; invalid at first, for the whole hour of the first piece.
  /// Without a reference time of that piece it is not known where the samples lie, and the page starts as it would.
  QDateTime pageStart() const { return pageStart_; }
  void setPageStart(const QDateTime& start) {
    if (!endPart()) return;
    change(pageStart_, start);
  }
  /// The colours of the rows in turn, from the first one on; empty at first, for pieces in black and red.
  const std::vector<QColor>& rowColors() const { return rowColors_; }
  void setRowColors(const std::vector<QColor>& colors) { change(rowColors_, colors); }
  /// Whether rowColors() change with the day at which a row begins, in localZone() or else UTC, instead of with each
  /// row; off at first.
  bool colorsByDay() const { return colorsByDay_; }
  void setColorsByDay(bool byDay) { change(colorsByDay_, byDay); }
  /// The zone of the times at the right of the rows; invalid at first, for none. What they and those at the left are
  /// stands above them.
  QTimeZone localZone() const { return localZone_; }
  void setLocalZone(const QTimeZone& zone) { change(localZone_, zone); }
  /// How many row heights a trace may rise or fall from its zero line; what would go further stays there, and is
  /// marked. 0 at first, and what is not above 0: as far as they go.
  double clipReach() const { return clipReach_; }
  void setClipReach(double rows) { change(clipReach_, rows); }
  /// Whether a bar above the right end of the rows shows how large amplitudes are; off at first.
  bool showAmplitudeBar() const { return showAmplitudeBar_; }
  void setShowAmplitudeBar(bool show) { change(showAmplitudeBar_, show); }
  /// The unit of the samples, which the bar is labelled with; empty at first.
  QString amplitudeUnit() const { return amplitudeUnit_; }
  void setAmplitudeUnit(const QString& unit) { change(amplitudeUnit_, unit); }
  /// Whether magnitude and name stand beside the markers of events, as far as they do not cover each other; off at
  /// first.
  bool showEventLabels() const { return showEventLabels_; }
  void setShowEventLabels(bool show) { change(showEventLabels_, show); }
  /// Whether rows of whole hours that are lower than their labels are labelled only every so often, at parts of a day
  /// or days, as rows of parts of an hour always are; off at first: each one is.
  bool spreadsHourLabels() const { return spreadsHourLabels_; }
  void setSpreadsHourLabels(bool spread) { change(spreadsHourLabels_, spread); }

  /// In the rows: the "time" in seconds since the page began, "utc" and "local" (localZone(), or else the desktop's)
  /// where the page's start is known, and of the piece that has a sample there the "record" in words and its
  /// "amplitude" in amplitudeUnit() or else the piece's own.
  PlotReadout readout(QPointF point) const override;
  /// The piece that has a sample at the time of the point in its row, or the nearest one of that row; rows are told
  /// apart by their bands, however far their neighbours' traces reach.
  std::optional<PointedRecord> recordAt(QPointF point) const override;
  /// The stretch of so many seconds around the time of a point, as a host shows it in a pane of its own when the drum
  /// is clicked. None outside the rows, and for a length that is not above 0 and finite.
  std::optional<DrumStretch> stretchAt(QPointF point, double seconds) const;
  // Parts of a drum are pages of as many rows: x goes on from the begin of the first one to the end of the last one,
  // in seconds on the axis of the pieces. Their rows last a round number of seconds or minutes and begin at whole
  // multiples of it; pageStart() and rowDuration() are those of the part while one is shown. Without a reference time
  // of the first piece there is a gain only.

  PlotReach reach() const override;
  PlotPart nearestPart(const PlotPart& wish) const override;
  double nearestZoom(double factor) const override;
  std::optional<QPointF> partPosition(QPointF viewPoint) const override;
  QRectF partFrame(QPointF viewPoint) const override;
  /// The page of the shortest rows that holds the time from the upper left corner of a box to its lower right one.
  PlotPart partInside(const QRectF& box) const override;
  /// The line across one row.
  std::vector<QLineF> linesAt(double x) const override;
  QDateTime momentOfZero() const override;

  /// Draws the page. Sets startTime(), plotDuration(), maxAmplitude(), pRect and iRect (both the rectangle of rows
  /// and scale), xmin to 0 and xmax to rowDuration(). Without pieces the page is white.
  void drawRect(const QRectF& dirty) override;
  /// The markers of all events between startTime() and plotDuration() later, and the time scale. Without pieces or
  /// without events nothing.
  virtual void drawSeismicPhases(const QRectF& rect);
  /// The time scale under the rows, xmin to xmax.
  virtual void drawMinuteMarks();
  /// Date and hour to the left of each row. Leaves a label font of 18 points and light grey labels behind.
  virtual void drawHourLabels();
  /// The largest absolute sample of all pieces, computed anew; −1.0e20 without pieces.
  virtual float getAbsMaxAmplitude();

protected:
  void applyPart() override;
  /// The records as they are now, which go on in what is drawn of them whatever the host does meanwhile; null without
  /// an array.
  std::shared_ptr<const SeismogramArray> heldRecords() const;
  /// The same of the events.
  std::shared_ptr<const EventOriginArray> heldEvents() const;

  std::weak_ptr<const SeismogramArray> wvfrmArray_;
  std::weak_ptr<const EventOriginArray> theHypos_;
  float maxAmplitude_ = 0;
  float gainFactor_ = 8;
  float rowDuration_ = 3600;
  std::int32_t nRows_ = 24;
  QDateTime startTime_;
  double plotDuration_ = 0;
  bool showZeroLines_ = false;
  float magThreshold_ = 4;
  bool labelHours_ = false;
  QDateTime pageStart_;
  std::vector<QColor> rowColors_;
  bool colorsByDay_ = false;
  QTimeZone localZone_;
  double clipReach_ = 0;
  bool showAmplitudeBar_ = false;
  QString amplitudeUnit_;
  bool showEventLabels_ = false;
  bool spreadsHourLabels_ = false;

private:
  // What the writes of properties do: set, and draw anew.
  void writeGainFactor(float value) {
    setNeedsDisplay();
    setGainFactor(value);
  }
  void writeRowDuration(float value) {
    setNeedsDisplay();
    setRowDuration(value);
  }
  void writeNRows(int value) {
    setNeedsDisplay();
    setNRows(value);
  }
  void writeShowZeroLines(bool value) {
    setNeedsDisplay();
    setShowZeroLines(value);
  }
  void writeLabelHours(bool value) {
    setNeedsDisplay();
    setLabelHours(value);
  }
  void writeMagThreshold(float value) {
    setNeedsDisplay();
    setMagThreshold(value);
  }
  void writePageStart(const QDateTime& start) {
    setNeedsDisplay();
    setPageStart(start);
  }
  void writeColorsByDay(bool value) {
    setNeedsDisplay();
    setColorsByDay(value);
  }
  void writeClipReach(double value) {
    setNeedsDisplay();
    setClipReach(value);
  }
  void writeShowAmplitudeBar(bool value) {
    setNeedsDisplay();
    setShowAmplitudeBar(value);
  }
  void writeAmplitudeUnit(const QString& value) {
    setNeedsDisplay();
    setAmplitudeUnit(value);
  }
  void writeShowEventLabels(bool value) {
    setNeedsDisplay();
    setShowEventLabels(value);
  }
  void writeSpreadsHourLabels(bool value) {
    setNeedsDisplay();
    setSpreadsHourLabels(value);
  }

  bool hasPieces() const;
  /// Of what may be thousands; null where there is none.
  std::shared_ptr<const SeismogramRecord> firstPiece() const;

  /// Where pieces lie on the page.
  struct Placement {
    float offset = 0;             ///< of their times from the page's
    double scale = 0;             ///< points a count
    std::optional<PlotSpan> part; ///< that is shown
  };
  /// What a part changes, as the host has set it.
  struct WholePage {
    QDateTime start;
    float rowDuration = 0;
  };
  WholePage wholePage() const;
  DrumRows rowsOfPart() const;
  std::optional<PlotSpan> spanOfPart() const;
  PieceTimes timesOnPage(const SeismogramRecord& piece, const float*& samples, const Placement& placement) const;
  float largestAmplitude(const SeismogramArray& pieces);
  float shownGainFactor() const { return float(double(gainFactor_) * shownGain()); }
  PageStart startOf(const SeismogramRecord* first) const;
  HelicorderPage page() const;
  std::vector<Trace> tracesOf(const SeismogramRecord& piece, const Placement& placement) const;
  std::optional<double> secondsAt(QPointF point) const;
  std::optional<RecordTrace> traceAt(QPointF point) const;
  QColor rowColor(const HelicorderPage& page, double row, const QColor& usual) const;
  struct MarkedEvent;
  std::vector<MarkedEvent> markedEvents() const;
  void drawPageTitle(const SeismogramRecord& record);
  void drawZeroLines();
  void drawTraces(const SeismogramArray& pieces, float offset);
  void drawClipMarks(const std::vector<DrawnTrace>& traces);
  void drawAmplitudeBar();
  void drawEventLabels();
  void drawTimeLabels(const std::vector<HourLabel>& labels, int hjust);
  void drawLocalTime(std::int32_t step);

  std::optional<WholePage> wholePage_; ///< while a part is shown
};

} // namespace xov
