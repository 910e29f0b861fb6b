#pragma once

#include "XOV_Graphics/base/Export.h"
#include "XOV_Graphics/views/base/LabelSpread.h"
#include "XOV_Graphics/views/seismic/PickMarks.h"
#include "XOV_Graphics/views/seismic/SeismogramView.h"

#include <optional>
#include <span>

namespace xov {

/// A seismogram view that marks picks: origin time, first arrival, end of the signal and the picks T0 to T9, each a
/// vertical line with a label. Where the line reaches and where the label stands is a matter of the PickStyle.
class XOV_EXPORT PickedSeismogramView : public SeismogramView {
  Q_OBJECT

public:
  ~PickedSeismogramView() override;

  /// The picks of a record that are set and lie in xmin … xmax, both ends included, over a panel: those of the
  /// pickSource() where it has some for the record. Nothing for a null record.
  virtual void drawPicksSeis(const QRectF& rect, const SeismogramRecord* record);
  /// The line of one pick in the current colour.
  virtual void drawPickForRectTime(const QRectF& rect, float time);
  /// The label of one pick in the colour of labelAttributes(). Leaves the system's label font in them. In a drawing
  /// of the view whose labelsGiveWay() it may stand on another side of its line, or be left out.
  virtual void drawPickLabelForRectLabelAtTime(const QRectF& rect, const QString& label, float time);

protected:
  /// With a style of its own for picks.
  PickedSeismogramView(const PickStyle& picks, const QRectF& frame, QWidget* parent);

  /// A drawing in which labels keep clear of each other, if they are to give way.
  class LabelScope {
  public:
    /// Begins the drawing, which ends with the scope of this.
    explicit LabelScope(PickedSeismogramView& view) : view_(view), outer_(view.labelField_) {
      view.labelField_ = view.labelsGiveWay() ? &room_ : nullptr;
    }
    LabelScope(const LabelScope&) = delete;
    LabelScope& operator=(const LabelScope&) = delete;
    ~LabelScope() { view_.labelField_ = outer_; }

  private:
    PickedSeismogramView& view_;
    LabelField* outer_; // of a drawing that this one is in the middle of
    LabelField room_;
  };
  /// The room for labels of the drawing; null where none give way.
  LabelField* labelField() const { return labelField_; }

private:
  void drawMarkedPick(const QRectF& panel, const MarkedPick& pick);
  std::optional<QPointF> freePlace(const QRectF& panel, std::span<const QPointF> places, QSizeF size) const;

  PickStyle picks_;
  LabelField* labelField_ = nullptr;
};

} // namespace xov
