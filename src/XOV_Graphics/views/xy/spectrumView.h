#pragma once

#include "XOV_Graphics/base/Export.h"
#include "XOV_Graphics/views/base/XOVView.h"
#include "XOV_Graphics/views/xy/ChartItems.h"

namespace xov {

/// A panel that keeps a list of spectra and the wish for logarithmic axes, for a host that draws them. It draws a
/// white background with a grey edge, whatever it holds.
class XOV_EXPORT spectrumView : public XOVView {
  Q_OBJECT
  Q_CLASSINFO("shows", "spectra")
  Q_PROPERTY(bool logX READ logX WRITE writeLogX NOTIFY settingsChanged)
  Q_PROPERTY(bool logY READ logY WRITE writeLogY NOTIFY settingsChanged)

public:
  /// No frame, an empty list, both axes logarithmic.
  explicit spectrumView(QWidget* parent = nullptr);
  /// No list, so that adding spectra does nothing, and both switches off.
  explicit spectrumView(const QRectF& frame, QWidget* parent = nullptr);
  ~spectrumView() override;

  /// The list itself, which the host may change; null where there is none.
  const ChartItemList& theSpectra() const { return theSpectra_; }
  void setTheSpectra(const ChartItemList& spectra) { theSpectra_ = spectra; }
  /// Appends to the list. Without a list, or without an object, nothing happens.
  void addToTheSpectra(const QVariant& spectrum);
  /// Removes every item that equals this one.
  void removeFromTheSpectra(const QVariant& spectrum);

  /// Whether the frequency axis is wanted logarithmic.
  bool logX() const { return logX_; }
  void setLogX(bool logarithmic) { change(logX_, logarithmic); }
  /// Whether the amplitude axis is wanted logarithmic.
  bool logY() const { return logY_; }
  void setLogY(bool logarithmic) { change(logY_, logarithmic); }

  void drawRect(const QRectF& dirty) override;

protected:
  ChartItemList theSpectra_;
  bool logX_ = false;
  bool logY_ = false;

private:
  // What the writes of properties do: set, and draw anew.
  void writeLogX(bool value) {
    setNeedsDisplay();
    setLogX(value);
  }
  void writeLogY(bool value) {
    setNeedsDisplay();
    setLogY(value);
  }
};

} // namespace xov
