#pragma once

#include "XOV_Graphics/base/Export.h"
#include "XOV_Graphics/seismic/SeismogramRecord.h"
#include "XOV_Graphics/seismic/signal/Spectrogram.h"
#include "XOV_Graphics/views/image/XOVImageView.h"

#include <QDateTime>

#include <memory>
#include <optional>

namespace xov {

struct RecordTrace;

/// The spectrogram of a recording: its power spectral density in dB over time and frequency as colours, with a colour
/// bar, and the seismogram above it on the same time axis. Where there is a gap the paper shows.
///
/// The host sets the records, pieces of one channel whose times count from one moment, and asks for a redraw. The
/// view computes the columns that its frame has room for when it draws, and again when frame or settings are others;
/// a recording of a month takes no more memory than a short one. Clicks are reported as time and frequency.
///
/// Limits are those of the recording and of the frequencies unless the fixed-range flags keep the host's. The grid of
/// the base class is the picture's, colours span decibelRange(), and useTopoValues() is off. On a logarithmic axis of
/// frequencies, "Save to XYZ" writes their decimal logarithms.
class XOV_EXPORT SpectrogramView : public XOVImageView {
  Q_OBJECT
  Q_CLASSINFO("shows", "spectrogram")
  Q_PROPERTY(double windowSeconds READ windowSeconds WRITE writeWindowSeconds NOTIFY settingsChanged)
  Q_PROPERTY(double overlap READ overlap WRITE writeOverlap NOTIFY settingsChanged)
  Q_PROPERTY(bool logFrequency READ logFrequency WRITE writeLogFrequency NOTIFY settingsChanged)
  Q_PROPERTY(double lowestHz READ lowestHz WRITE writeLowestHz NOTIFY settingsChanged)
  Q_PROPERTY(double highestHz READ highestHz WRITE writeHighestHz NOTIFY settingsChanged)
  Q_PROPERTY(double lowestDecibel READ lowestDecibel WRITE writeLowestDecibel NOTIFY settingsChanged)
  Q_PROPERTY(double highestDecibel READ highestDecibel WRITE writeHighestDecibel NOTIFY settingsChanged)
  Q_PROPERTY(bool showSeismogram READ showSeismogram WRITE writeShowSeismogram NOTIFY settingsChanged)
  Q_PROPERTY(QDateTime timeReference READ timeReference WRITE writeTimeReference NOTIFY settingsChanged)

public:
  explicit SpectrogramView(QWidget* parent = nullptr) : SpectrogramView(QRectF(), parent) {}
  explicit SpectrogramView(const QRectF& frame, QWidget* parent = nullptr);
  ~SpectrogramView() override;

  QSize usualSize() const override { return {900, 600}; }
  QString usualAxisName(Qt::Axis axis) const override;
  LogAxes logAxes() const override { return {.x = false, .y = logFrequency_}; }

  /// The records, which are kept and must not change while the view has them; null ones are left out.
  void setRecords(const std::shared_ptr<const SeismogramArray>& records);
  const std::shared_ptr<const SeismogramArray>& records() const { return records_; }

  // What is computed; see SpectrogramSettings.

  /// How long the segments are; 0, as at first, chooses by the recording.
  double windowSeconds() const { return windowSeconds_; }
  void setWindowSeconds(double seconds) { change(windowSeconds_, seconds); }
  /// The least overlap of segments, from 0 to 0.95; 0.5 at first.
  double overlap() const { return overlap_; }
  void setOverlap(double overlap) { change(overlap_, overlap); }
  /// Whether the frequency axis is logarithmic; off at first.
  bool logFrequency() const { return logFrequency_; }
  void setLogFrequency(bool logarithmic) { change(logFrequency_, logarithmic); }
  /// The frequencies at both ends of their axis in Hz; 0, as at first, for 0 (one period a window where the axis is
  /// logarithmic) and for the Nyquist frequency.
  double lowestHz() const { return lowestHz_; }
  void setLowestHz(double hz) { change(lowestHz_, hz); }
  /// The upper end of the frequencies; see lowestHz().
  double highestHz() const { return highestHz_; }
  /// Sets highestHz().
  void setHighestHz(double hz) { change(highestHz_, hz); }
  /// What is added to the dB of the samples' own unit, for another one.
  double decibelOffset() const { return decibelOffset_; }
  void setDecibelOffset(double decibels) { change(decibelOffset_, decibels); }

  // What is shown.

  /// The dB at both ends of the colours. While the lower one is not below the higher one, as at first, both follow
  /// from the picture: robustRange().
  double lowestDecibel() const { return lowestDecibel_; }
  void setLowestDecibel(double decibels) { change(lowestDecibel_, decibels); }
  /// The upper end of the colours; see lowestDecibel().
  double highestDecibel() const { return highestDecibel_; }
  /// Sets highestDecibel().
  void setHighestDecibel(double decibels) { change(highestDecibel_, decibels); }
  /// The range that is in use, as of the last drawing.
  DecibelRange decibelRange() const { return range_; }
  /// Whether the seismogram is drawn above; on at first.
  bool showSeismogram() const { return showSeismogram_; }
  void setShowSeismogram(bool show) { change(showSeismogram_, show); }
  /// The moment that times count from, where the time axis is to show UTC; invalid at first, for seconds.
  QDateTime timeReference() const { return timeReference_; }
  void setTimeReference(const QDateTime& reference) { change(timeReference_, reference); }

  /// The picture as of the last drawing.
  const Spectrogram& picture() const { return *picture_; }

  // Drawing.

  /// In the picture the "time" in seconds, "utc" and "local" where timeReference() or the first record tells what
  /// times count from, the "frequency" in Hz and the "power" of the cell in dB; in the seismogram above it times and
  /// "amplitude".
  PlotReadout readout(QPointF point) const override;

  /// Time by the wheel, and the axis of frequencies.
  PlotReach reach() const override;
  QRectF partFrame(QPointF viewPoint) const override;
  QDateTime momentOfZero() const override;
  /// The frame of the seismogram: the upper fifth; iRect(), below it, is the picture's.
  void computeRects() override;
  /// The range in use, 1 in place of 0.
  void computeScaleFactor() override;
  /// The axes of time and frequency around the picture.
  void drawAxes() override;
  /// The samples about the middle of their range, which fills the frame.
  virtual void drawSeismogram();

protected:
  void drawContents() override;

private:
  // What the writes of properties do: set, and draw anew.
  void writeWindowSeconds(double value) {
    setNeedsDisplay();
    setWindowSeconds(value);
  }
  void writeOverlap(double value) {
    setNeedsDisplay();
    setOverlap(value);
  }
  void writeLogFrequency(bool value) {
    setNeedsDisplay();
    setLogFrequency(value);
  }
  void writeLowestHz(double value) {
    setNeedsDisplay();
    setLowestHz(value);
  }
  void writeHighestHz(double value) {
    setNeedsDisplay();
    setHighestHz(value);
  }
  void writeLowestDecibel(double value) {
    setNeedsDisplay();
    setLowestDecibel(value);
  }
  void writeHighestDecibel(double value) {
    setNeedsDisplay();
    setHighestDecibel(value);
  }
  void writeShowSeismogram(bool value) {
    setNeedsDisplay();
    setShowSeismogram(value);
  }
  void writeTimeReference(const QDateTime& value) {
    setNeedsDisplay();
    setTimeReference(value);
  }

  /// What the picture was computed of.
  struct PictureKey {
    std::shared_ptr<const SeismogramArray> records;
    SpectrogramSettings settings;
    double decibelOffset = 0;
    bool operator==(const PictureKey&) const = default;
  };
  PictureKey wantedPicture() const;
  void computePicture();
  void forgetPicture();
  void colorPicture();
  std::vector<RecordTrace> seismogramTraces() const;
  void drawAmplitudeAxis();
  void drawHeading();

  std::shared_ptr<const SeismogramArray> records_;
  double windowSeconds_ = 0;
  double overlap_ = 0.5;
  double lowestHz_ = 0;
  double highestHz_ = 0;
  double decibelOffset_ = 0;
  double lowestDecibel_ = 0;
  double highestDecibel_ = 0;
  bool logFrequency_ = false;
  bool showSeismogram_ = true;
  QDateTime timeReference_;
  QRectF seismogramRect_;
  std::optional<PictureKey> computed_;
  std::shared_ptr<const Spectrogram> picture_ = std::make_shared<const Spectrogram>(); ///< never null
  DecibelRange robust_;                                                                ///< of the picture
  DecibelRange range_;
  bool isColored_ = false; ///< with that range
};

} // namespace xov
