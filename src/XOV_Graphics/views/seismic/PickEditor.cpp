#include "XOV_Graphics/views/seismic/PickEditor.h"

#include "XOV_Graphics/seismic/StationInventory.h"
#include "XOV_Graphics/seismic/prepare/PicksOfRecords.h"
#include "XOV_Graphics/views/seismic/PickEditorMarks.h"

#include <algorithm>
#include <cmath>

namespace xov {

namespace {

constexpr double kReach = 4; // points, from the line of a pick

} // namespace

PickEditor::PickEditor(SeismogramView* view, PickDocument* document)
    : QObject(view),
      view_(view),
      document_(document),
      marks_(std::make_shared<PickEditorMarks>(document)),
      phaseKeys_{{Qt::Key_P, QStringLiteral("P")}, {Qt::Key_S, QStringLiteral("S")}} {
  view_->installEventFilter(this);
  view_->setPickSource(marks_);
  if (document_) {
    connect(document_, &PickDocument::changed, this, &PickEditor::renew);
    connect(document_, &PickDocument::wasReset, this, &PickEditor::renew);
    connect(document_, &QObject::destroyed, this, &PickEditor::renew);
  }
  renew();
}

PickEditor::~PickEditor() = default;

void PickEditor::setEnabled(bool enabled) {
  enabled_ = enabled;
  drag_.reset();
  marks_->setDragged({});
  view_->setPickSource(enabled ? std::shared_ptr<const PickSource>(marks_) : nullptr);
  renew();
}

void PickEditor::setPhaseKey(Qt::Key key, const QString& phase) {
  if (phase.isEmpty()) {
    phaseKeys_.remove(int(key));
  } else {
    phaseKeys_[int(key)] = phase;
  }
}

void PickEditor::setPredictedPhases(const std::vector<SeismicPhase>& phases) {
  marks_->setPhases(phases);
  renew();
}

std::vector<PickEditor::Key> PickEditor::keys() {
  return {
      {tr("P, S"), tr("Set a pick of that name at the pointer, or move the one that is shown")},
      {tr("Shift+P, Shift+S"), tr("Set another pick of that name")},
      {tr("Drag a pick"), tr("Move it")},
      {tr("Shift+drag a pick"), tr("Set its uncertainty")},
      {tr("Delete"), tr("Remove the pick under the pointer")},
      {tr("U, D, X"), tr("First motion up, down, undecidable")},
      {tr("I, E, Q"), tr("Onset impulsive, emergent, questionable")},
      {tr("W, Shift+W"), tr("Double and halve the uncertainty")},
      {tr("Escape"), tr("End a drag without a change")},
  };
}

void PickEditor::renew() {
  marks_->forget();
  view_->setNeedsDisplay();
}

const Pick* PickEditor::currentPick() const { return document_ ? document_->find(marks_->current()) : nullptr; }

void PickEditor::setCurrentPick(const QString& id) {
  if (id == marks_->current()) return;
  marks_->setCurrent(id);
  view_->setNeedsDisplay();
  Q_EMIT currentPickChanged(id);
}

std::optional<PickEditor::Place> PickEditor::placeAt(QPointF point) const {
  if (!std::isfinite(point.x()) || !std::isfinite(point.y())) return {};
  const std::optional<PointedRecord> found = view_->recordAt(point);
  if (!found || !found->record || !std::isfinite(found->seconds)) return {};
  // Time runs evenly along a trace; the neighbour may lie outside, or on another one.
  for (const double step : {1.0, -1.0}) {
    const std::optional<PointedRecord> beside = view_->recordAt(point + QPointF(step, 0));
    if (!beside || beside->index != found->index) continue;
    const double secondsPerPoint = (beside->seconds - found->seconds) / step;
    if (std::isfinite(secondsPerPoint) && secondsPerPoint > 0) return Place{*found, secondsPerPoint};
  }
  return {};
}

std::optional<Pick> PickEditor::pickNear(const Place& place) const {
  std::optional<Pick> nearest;
  double least = kReach * place.secondsPerPoint;
  for (const Pick& pick : marks_->picksAt(*place.record.record)) {
    const std::optional<double> seconds = secondsOnAxis(*place.record.record, pick.time);
    if (!seconds || !(std::abs(*seconds - place.record.seconds) <= least)) continue;
    least = std::abs(*seconds - place.record.seconds);
    nearest = pick;
  }
  return nearest;
}

std::optional<Pick> PickEditor::pickUnder(QPointF point) const {
  const std::optional<Place> place = placeAt(point);
  return place ? pickNear(*place) : std::nullopt;
}

// Whether the pick lies in the part of time that the view shows, as far as its trace is there.
bool PickEditor::isShown(const Place& place, const Pick& pick) const {
  const std::optional<double> seconds = secondsOnAxis(*place.record.record, pick.time);
  if (!seconds) return false;
  const QRectF frame = view_->iRect();
  const double offset = (*seconds - place.record.seconds) / place.secondsPerPoint;
  const double x = pointer_.x() + offset;
  return x >= frame.left() && x <= frame.right();
}

void PickEditor::touch(const Pick& pick) {
  if (document_ && document_->find(pick.id) == nullptr) document_->take({pick});
  setCurrentPick(pick.id);
}

void PickEditor::pickAt(QPointF point, const QString& phase, bool another) {
  const std::optional<Place> place = placeAt(point);
  if (!place || !document_ || phase.isEmpty()) return;
  const SeismogramRecord& record = *place->record.record;
  const ChannelCodes channel = channelCodesOf(record);
  const std::optional<UtcNanoseconds> time = momentOnAxis(record, place->record.seconds);
  constexpr std::size_t kStation = 1;
  if (!time || channel[kStation].isEmpty()) {
    Q_EMIT refused(tr("%1: picks need a station code and a reference time").arg(channelName(channel)));
    return;
  }
  const QPointer<PickEditor> self(this);
  pointer_ = point;
  const PickArray known = marks_->picksAt(record);
  const auto same =
      std::ranges::find_if(known, [&](const Pick& pick) { return pick.phase == phase && isShown(*place, pick); });
  if (!another && same != known.end()) {
    touch(*same);
    if (!self || !document_) return;
    Pick moved = *document_->find(same->id);
    moved.time = *time;
    moved.mode = PickMode::Manual;
    document_->change(same->id, moved);
    return;
  }
  Pick pick;
  pick.phase = phase;
  pick.time = *time;
  pick.channel = channel;
  pick.mode = PickMode::Manual;
  const QString id = document_->add(pick);
  if (self) setCurrentPick(id);
}

bool PickEditor::removeAt(QPointF point) {
  const std::optional<Pick> pick = pickUnder(point);
  if (!pick || !document_) return false;
  const QPointer<PickEditor> self(this);
  touch(*pick);
  if (!self || !document_) return true;
  document_->remove(pick->id);
  if (self) setCurrentPick(QString());
  return true;
}

void PickEditor::changeCurrent(const Pick& to) {
  if (document_) document_->change(to.id, to);
}

void PickEditor::setPolarity(PickPolarity polarity) {
  const Pick* const pick = currentPick();
  if (pick == nullptr) return;
  Pick changed = *pick;
  changed.polarity = polarity;
  changeCurrent(changed);
}

void PickEditor::setOnset(PickOnset onset) {
  const Pick* const pick = currentPick();
  if (pick == nullptr) return;
  Pick changed = *pick;
  changed.onset = onset;
  changeCurrent(changed);
}

void PickEditor::setUncertainty(std::optional<double> seconds) {
  const Pick* const pick = currentPick();
  if (pick == nullptr) return;
  Pick changed = *pick;
  changed.lowerSeconds = seconds;
  changed.upperSeconds = seconds;
  changeCurrent(changed);
}

} // namespace xov
