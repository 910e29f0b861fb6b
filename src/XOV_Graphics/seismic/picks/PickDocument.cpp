#include "XOV_Graphics/seismic/picks/PickDocument.h"

#include <QPointer>

#include <algorithm>
#include <cmath>
#include <utility>

namespace xov {

namespace {

std::optional<double> soundUncertainty(std::optional<double> seconds) {
  return seconds && *seconds >= 0 && *seconds <= kLargestPickUncertainty ? seconds : std::nullopt;
}

void makeSound(Pick& pick) {
  pick.lowerSeconds = soundUncertainty(pick.lowerSeconds);
  pick.upperSeconds = soundUncertainty(pick.upperSeconds);
}

} // namespace

PickDocument::PickDocument(QObject* parent) : QObject(parent) {}

PickDocument::~PickDocument() = default;

std::optional<std::size_t> PickDocument::rowOf(const QString& id) const {
  const auto found = std::ranges::find(picks_, id, &Pick::id);
  return found == picks_.end() ? std::nullopt : std::optional(std::size_t(found - picks_.begin()));
}

const Pick* PickDocument::find(const QString& id) const {
  const std::optional<std::size_t> row = rowOf(id);
  return row ? &picks_[*row] : nullptr;
}

QString PickDocument::add(Pick pick) {
  if (pick.id.isEmpty() || knownIds_.contains(pick.id)) pick.id = newPickId();
  makeSound(pick);
  const QString id = pick.id;
  edit({picks_.size(), {}, std::move(pick)});
  return id;
}

bool PickDocument::change(const QString& id, Pick to) {
  const std::optional<std::size_t> row = rowOf(id);
  if (!row) return false;
  to.id = id;
  makeSound(to);
  if (to == picks_[*row]) return false;
  edit({*row, picks_[*row], std::move(to)});
  return true;
}

bool PickDocument::move(const QString& id, UtcNanoseconds time) {
  const Pick* const pick = find(id);
  if (pick == nullptr) return false;
  Pick moved = *pick;
  moved.time = time;
  return change(id, std::move(moved));
}

bool PickDocument::rename(const QString& id, const QString& phase) {
  const Pick* const pick = find(id);
  if (pick == nullptr) return false;
  Pick renamed = *pick;
  renamed.phase = phase;
  return change(id, std::move(renamed));
}

bool PickDocument::remove(const QString& id) {
  const std::optional<std::size_t> row = rowOf(id);
  if (!row) return false;
  edit({*row, picks_[*row], {}});
  return true;
}

bool PickDocument::apply(const PickChange& change) {
  const bool adds = !change.before && change.after;
  const bool fits = adds ? change.row <= picks_.size() && !rowOf(change.after->id)
                         : change.before && change.row < picks_.size() && picks_[change.row] == *change.before &&
                               (!change.after || change.after->id == change.before->id);
  if (!fits) return false;
  carryOut(change);
  Q_EMIT changed(change);
  return true;
}

std::size_t PickDocument::take(PickArray picks) {
  const bool wasSaved = !isModified();
  std::size_t taken = 0;
  for (Pick& pick : picks) {
    if (pick.id.isEmpty()) pick.id = newPickId();
    if (knownIds_.contains(pick.id)) continue;
    append(std::move(pick));
    ++taken;
  }
  if (wasSaved) markSaved();
  if (taken > 0) Q_EMIT wasReset();
  return taken;
}

void PickDocument::restore(const QString& id, const std::optional<Pick>& pick) {
  const std::optional<std::size_t> row = rowOf(id);
  if (pick) {
    Pick restored = *pick;
    restored.id = id;
    if (row) {
      makeSound(restored);
      picks_[*row] = std::move(restored);
    } else {
      append(std::move(restored));
    }
  } else {
    knownIds_.insert(id);
    if (row) picks_.erase(picks_.begin() + std::ptrdiff_t(*row));
  }
  Q_EMIT wasReset();
}

void PickDocument::reset(PickArray picks) {
  picks_.clear();
  knownIds_.clear();
  for (Pick& pick : picks) {
    if (pick.id.isEmpty() || knownIds_.contains(pick.id)) pick.id = newPickId();
    append(std::move(pick));
  }
  markSaved();
  Q_EMIT wasReset();
}

void PickDocument::append(Pick pick) {
  makeSound(pick);
  knownIds_.insert(pick.id);
  picks_.push_back(std::move(pick));
}

void PickDocument::carryOut(const PickChange& change) {
  const auto place = picks_.begin() + std::ptrdiff_t(change.row);
  if (change.before && change.after) {
    *place = *change.after;
  } else if (change.after) {
    knownIds_.insert(change.after->id);
    picks_.insert(place, *change.after);
  } else {
    picks_.erase(place);
  }
}

// The host may let the document go in answer to a signal.
void PickDocument::edit(const PickChange& change) {
  const QPointer<PickDocument> self(this);
  carryOut(change);
  Q_EMIT changed(change);
  if (self) Q_EMIT edited(change);
}

} // namespace xov
