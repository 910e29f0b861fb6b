#include "XOV_Graphics/base/Guarded.h"
#include "XOV_Graphics/seismic/prepare/PicksOfRecords.h"
#include "XOV_Graphics/views/seismic/PickEditor.h"
#include "XOV_Graphics/views/seismic/PickEditorMarks.h"

#include <QKeyEvent>
#include <QMouseEvent>

#include <algorithm>
#include <cmath>

namespace xov {

namespace {

constexpr double kDragStart = 1; // points that the pointer moves before a press becomes a drag
constexpr double kWider = 2;
constexpr double kFirstUncertainty = 4; // points, of a pick that has none yet

QPointF viewPoint(const SeismogramView& view, const QMouseEvent& event) {
  return {event.position().x(), view.height() - event.position().y()};
}

} // namespace

// The host may let the view go in answer to a change; then nothing of this is there any more.
bool PickEditor::eventFilter(QObject* watched, QEvent* event) {
  if (watched != view_ || !enabled_ || !document_) return QObject::eventFilter(watched, event);
  bool isTaken = false;
  contained("picking", [&] { isTaken = take(*event); });
  if (isTaken) event->accept();
  return isTaken;
}

bool PickEditor::take(QEvent& event) {
  bool isTaken = false;
  switch (event.type()) {
  case QEvent::ShortcutOverride:
    // Else keys of the host's menus would come first.
    isTaken = drag_.has_value() && static_cast<QKeyEvent&>(event).key() == Qt::Key_Escape;
    break;
  case QEvent::KeyPress:
    isTaken = key(static_cast<QKeyEvent&>(event));
    break;
  case QEvent::MouseButtonPress:
    isTaken = press(static_cast<QMouseEvent&>(event));
    break;
  case QEvent::MouseMove:
    isTaken = move(static_cast<QMouseEvent&>(event));
    break;
  case QEvent::MouseButtonRelease:
    isTaken = static_cast<QMouseEvent&>(event).button() == Qt::LeftButton && release();
    break;
  default:
    break;
  }
  return isTaken;
}

bool PickEditor::key(const QKeyEvent& event) {
  if ((event.modifiers() & ~(Qt::ShiftModifier | Qt::KeypadModifier)) != 0) return false;
  const bool shift = event.modifiers().testFlag(Qt::ShiftModifier);
  if (drag_) {
    if (event.key() != Qt::Key_Escape) return true;
    drag_.reset();
    marks_->setDragged({});
    renew();
    return true;
  }
  if (const auto phase = phaseKeys_.find(event.key()); phase != phaseKeys_.end()) {
    pickAt(pointer_, QString(*phase), shift);
    return true;
  }
  if (event.key() == Qt::Key_Delete && !shift) return removeAt(pointer_);
  return editKey(event.key(), shift);
}

std::optional<QString> PickEditor::touchedPick() {
  const QPointer<PickEditor> self(this);
  if (const std::optional<Pick> pick = pickUnder(pointer_)) touch(*pick);
  if (!self || currentPick() == nullptr) return {};
  return marks_->current();
}

bool PickEditor::editKey(int key, bool shift) {
  struct PolarityKey {
    int key;
    PickPolarity polarity;
  };
  struct OnsetKey {
    int key;
    PickOnset onset;
  };
  static constexpr PolarityKey kPolarityKeys[] = {{Qt::Key_U, PickPolarity::Positive},
                                                  {Qt::Key_D, PickPolarity::Negative},
                                                  {Qt::Key_X, PickPolarity::Undecidable}};
  static constexpr OnsetKey kOnsetKeys[] = {
      {Qt::Key_I, PickOnset::Impulsive}, {Qt::Key_E, PickOnset::Emergent}, {Qt::Key_Q, PickOnset::Questionable}};
  const auto* const polarity = std::ranges::find(kPolarityKeys, key, &PolarityKey::key);
  const auto* const onset = std::ranges::find(kOnsetKeys, key, &OnsetKey::key);
  const bool isPolarity = polarity != std::end(kPolarityKeys) && !shift;
  const bool isOnset = onset != std::end(kOnsetKeys) && !shift;
  const bool isWidth = key == Qt::Key_W;
  if (!isPolarity && !isOnset && !isWidth) return false;
  if (!touchedPick()) return false;
  const Pick pick = *currentPick();
  if (isPolarity) {
    setPolarity(pick.polarity == polarity->polarity ? PickPolarity::Unknown : polarity->polarity);
  } else if (isOnset) {
    setOnset(pick.onset == onset->onset ? PickOnset::Unknown : onset->onset);
  } else if (const double now = std::max(pick.lowerSeconds.value_or(0), pick.upperSeconds.value_or(0)); now > 0) {
    setUncertainty(shift ? now / kWider : now * kWider);
  } else if (const std::optional<Place> place = placeAt(pointer_)) {
    setUncertainty(kFirstUncertainty * place->secondsPerPoint);
  }
  return true;
}

bool PickEditor::press(const QMouseEvent& event) {
  pointer_ = viewPoint(*view_, event);
  const Qt::KeyboardModifiers others = event.modifiers() & ~(Qt::ShiftModifier | Qt::KeypadModifier);
  if (event.button() != Qt::LeftButton || others != 0) return false;
  const std::optional<Place> place = placeAt(pointer_);
  const std::optional<Pick> pick = place ? pickNear(*place) : std::nullopt;
  if (!pick) return false;
  drag_ = Drag{*pick, *place, pointer_.x(), event.modifiers().testFlag(Qt::ShiftModifier), false};
  view_->setFocus(Qt::MouseFocusReason);
  touch(*pick);
  return true;
}

std::optional<Pick> PickEditor::dragged(QPointF point) const {
  if (!drag_ || !std::isfinite(point.x())) return {};
  Pick pick = drag_->pick;
  const SeismogramRecord& record = *drag_->place.record.record;
  const double seconds = drag_->place.record.seconds + (point.x() - drag_->x) * drag_->place.secondsPerPoint;
  const std::optional<double> at = secondsOnAxis(record, pick.time);
  if (!at) return {};
  if (drag_->isUncertainty) {
    pick.lowerSeconds = std::min(std::abs(seconds - *at), kLargestPickUncertainty);
    pick.upperSeconds = pick.lowerSeconds;
    return pick;
  }
  // The line keeps its distance to the pointer.
  const std::optional<UtcNanoseconds> moment = momentOnAxis(record, *at + (seconds - drag_->place.record.seconds));
  if (!moment) return {};
  pick.time = *moment;
  return pick;
}

bool PickEditor::move(const QMouseEvent& event) {
  pointer_ = viewPoint(*view_, event);
  if (!drag_) return false;
  if (std::abs(pointer_.x() - drag_->x) >= kDragStart) drag_->hasMoved = true;
  if (const std::optional<Pick> pick = dragged(pointer_); pick && drag_->hasMoved) {
    marks_->setDragged(pick);
    view_->setNeedsDisplay();
  }
  return true;
}

bool PickEditor::release() {
  if (!drag_) return false;
  std::optional<Pick> pick = dragged(pointer_);
  const bool hasMoved = drag_->hasMoved;
  drag_.reset();
  marks_->setDragged({});
  renew();
  if (!pick || !hasMoved || !document_) return true;
  pick->mode = PickMode::Manual;
  document_->change(pick->id, *pick);
  return true;
}

} // namespace xov
