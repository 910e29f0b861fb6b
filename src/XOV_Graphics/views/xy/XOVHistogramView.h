#pragma once

#include "XOV_Graphics/base/Export.h"
#include "XOV_Graphics/views/base/XOVView.h"

#include <QColor>

#include <cstdint>
#include <memory>
#include <span>
#include <vector>

namespace xov {

struct HistogramBars;
struct HistogramBins;

/// A histogram: values sorted into bins of equal width between a lower and an upper bin value, the counts drawn as
/// filled bars with linear axes, and a text dump of the binning.
///
/// The host sets values and bins, calls binValues(), and asks for a redraw. All values are single precision. NaN is
/// counted in no bin; counts and numbers beyond the buffers use what is there.
class XOV_EXPORT XOVHistogramView : public XOVView {
  Q_OBJECT
  Q_CLASSINFO("shows", "histogram")
  Q_PROPERTY(bool logX READ logX WRITE writeLogX NOTIFY settingsChanged)
  Q_PROPERTY(bool logY READ logY WRITE writeLogY NOTIFY settingsChanged)
  Q_PROPERTY(int nBins READ nBins WRITE writeNBins NOTIFY settingsChanged)
  Q_PROPERTY(double minBinValue READ minBinValue WRITE writeMinBinValue NOTIFY settingsChanged)
  Q_PROPERTY(double maxBinValue READ maxBinValue WRITE writeMaxBinValue NOTIFY settingsChanged)
  Q_PROPERTY(QColor barFillColor READ barFillColor WRITE writeBarFillColor NOTIFY settingsChanged)

public:
  using Values = std::shared_ptr<std::vector<float>>; ///< values that the view shares with the host
  /// Counts that the view shares with the host, one a bin.
  using Counts = std::shared_ptr<std::vector<std::int32_t>>;
  /// binValues() refuses more bins than this; no picture shows as many.
  static constexpr std::int32_t kMostBins = 1 << 20;

  explicit XOVHistogramView(QWidget* parent = nullptr) : XOVHistogramView(QRectF(), parent) {}
  explicit XOVHistogramView(const QRectF& frame, QWidget* parent = nullptr);
  ~XOVHistogramView() override;

  QString usualAxisName(Qt::Axis axis) const override;

  /// Copies values into a new buffer and sets minValue() and maxValue() to their extremes (+infinity and −infinity
  /// for none). False, and nothing changed, for a negative count, a missing pointer or when memory does not allow it.
  bool setValuesNPts(const float* values, std::int32_t count);
  /// Subtracts the mean of the values, summed in single precision, from them and from minValue() and maxValue().
  void removeMeanFromValues();

  /// Whether an axis is logarithmic; off at first. Along a logarithmic X axis the bins are equally wide there: their
  /// edges are still minBinValue() and maxBinValue(), but binWidth() is in decades, and values that are not above 0
  /// are counted in no bin; set it before binValues(). On a logarithmic Y axis, which begins below 1, bars show the
  /// logarithms of the counts.
  bool logX() const { return logAxes_.x; }
  void setLogX(bool logarithmic) { change(logAxes_.x, logarithmic); }
  /// The same of the counts.
  bool logY() const { return logAxes_.y; }
  void setLogY(bool logarithmic) { change(logAxes_.y, logarithmic); }
  LogAxes logAxes() const override { return logAxes_; }

  /// Sets number and range of the bins, and computes their width.
  void setNBinsMinMax(std::int32_t nBins, float min, float max);
  /// binWidth() = (maxBinValue() − minBinValue()) / (nBins() + 1): the divisor is one more than the number of bins.
  void computebinWidth();
  /// nBins() = the whole bins of that width between minBinValue() and maxBinValue(); a width of 0 changes nothing.
  /// binWidth() stays as it is.
  void computeNBinsFor(float width);
  /// Computes the bin width and counts the values: below the range in the first bin, above it in the last, else by
  /// (value − minBinValue()) / binWidth() truncated, where what points past the end is counted in the last bin, too.
  /// False, and no counts changed, without values, without bins, or with more than kMostBins.
  bool binValues();

  /// The values; null for none.
  const Values& values() const { return values_; }
  void setValues(const Values& values) { values_ = values; }
  /// How many of the values count; fewer are read where the buffer ends before.
  std::int32_t nValues() const { return nValues_; }
  void setNValues(std::int32_t count) { nValues_ = count; }
  /// The smallest value, as of the last scan.
  float minValue() const { return minValue_; }
  void setMinValue(float value) { minValue_ = value; }
  /// The largest value, as of the last scan.
  float maxValue() const { return maxValue_; }
  void setMaxValue(float value) { maxValue_ = value; }
  /// One count a bin; null before binValues() has succeeded, and then nothing but the background is drawn.
  const Counts& counts() const { return counts_; }
  void setCounts(const Counts& counts) { counts_ = counts; }
  /// The smallest count, as of the last scan.
  std::int32_t minCount() const { return minCount_; }
  void setMinCount(std::int32_t count) { minCount_ = count; }
  /// The largest count, as of the last scan.
  std::int32_t maxCount() const { return maxCount_; }
  void setMaxCount(std::int32_t count) { maxCount_ = count; }
  /// How many bins there are.
  std::int32_t nBins() const { return nBins_; }
  void setNBins(std::int32_t count) { change(nBins_, count); }
  /// The width of a bin, in the unit of the values.
  float binWidth() const { return binWidth_; }
  void setbinWidth(float width) { binWidth_ = width; }
  /// Where the first bin begins.
  float minBinValue() const { return minBinValue_; }
  void setMinBinValue(float value) { change(minBinValue_, value); }
  /// Where the last bin ends.
  float maxBinValue() const { return maxBinValue_; }
  void setMaxBinValue(float value) { change(maxBinValue_, value); }
  /// The colour that bars are filled with.
  QColor barFillColor() const { return barFillColor_; }
  void setBarFillColor(const QColor& color) { change(barFillColor_, color); }

  /// "x" at a place inside the frame and, over or above a bar, its "bin", counted from 0, its edges "from" and "to",
  /// and the "count" in it.
  PlotReadout readout(QPointF point) const override;

  void drawRect(const QRectF& dirty) override;
  /// Vertical bars over the horizontal axis of values, inside iRect().
  virtual void drawHHistogram();
  /// Horizontal bars right of iRect(). drawRect() does not call it.
  virtual void drawVHistogram();
  /// Draws both axes and their labels around iRect(). Leaves the label font at 14 points.
  virtual void drawAxes();

  /// The binning as text: a line "nValues = …, minValue = … maxValue = …" that gives the range of the bins, a line
  /// "nBins = …, binWidth = …", and with bins a heading and a line for each, all with the edges of the first bin.
  /// Bins without a count show 0; above kMostBins only those with a count are listed.
  QString description() const;

protected:
  Values values_;
  std::int32_t nValues_ = 0;
  float minValue_ = 0;
  float maxValue_ = 0;
  Counts counts_;
  std::int32_t minCount_ = 0;
  std::int32_t maxCount_ = 0;
  std::int32_t nBins_ = 0;
  float binWidth_ = 1;
  float minBinValue_ = -1;
  float maxBinValue_ = 1;
  QColor barFillColor_;

private:
  // What the writes of properties do: set, and draw anew.
  void writeNBins(int value) {
    setNeedsDisplay();
    setNBins(value);
  }
  void writeMinBinValue(float value) {
    setNeedsDisplay();
    setMinBinValue(value);
  }
  void writeMaxBinValue(float value) {
    setNeedsDisplay();
    setMaxBinValue(value);
  }
  void writeBarFillColor(const QColor& value) {
    setNeedsDisplay();
    setBarFillColor(value);
  }

  void writeLogX(bool value) {
    setNeedsDisplay();
    setLogX(value);
  }
  void writeLogY(bool value) {
    setNeedsDisplay();
    setLogY(value);
  }

  HistogramBins bins() const;
  HistogramBars bars() const;
  LogAxes logAxes_;

  friend struct XYAxes;
  std::span<float> readableValues() const;
  std::span<const std::int32_t> readableCounts() const;
  void fillAndStroke(Path bars, const QColor& fill);
};

} // namespace xov
