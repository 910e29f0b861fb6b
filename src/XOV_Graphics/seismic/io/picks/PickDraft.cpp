#include "XOV_Graphics/seismic/io/picks/PickDraft.h"

#include "XOV_Graphics/base/Numbers.h"

namespace xov {

namespace {

QString unknownWord(const char* what, const QString& found, const char* expected) {
  constexpr qsizetype kQuoted = 40;
  return QStringLiteral("%1 '%2', expected %3")
      .arg(QLatin1String(what), found.left(kQuoted).simplified(), QLatin1String(expected));
}

} // namespace

void PickDraft::note(const QString& found) {
  if (problem.isEmpty()) problem = found;
}

void PickDraft::takeTime(const QString& text) {
  if (const auto time = parseUtcNanoseconds(text)) {
    pick.time = *time;
  } else {
    note(unreadableTime(text));
  }
}

void PickDraft::takeUncertainty(const QString& text, std::optional<double> Pick::*side) {
  if (text.isEmpty()) return;
  const std::optional<double> seconds = toNumber<double>(text.toUtf8());
  if (seconds && *seconds >= 0 && *seconds <= kLargestPickUncertainty) {
    pick.*side = seconds;
  } else {
    note(unknownWord("uncertainty", text, "seconds from 0 to 86400"));
  }
}

void PickDraft::takePolarity(const QString& text) {
  if (const auto found = pickPolarity(text)) {
    pick.polarity = *found;
  } else {
    note(unknownWord("polarity", text, "positive, negative or undecidable"));
  }
}

void PickDraft::takeOnset(const QString& text) {
  if (const auto found = pickOnset(text)) {
    pick.onset = *found;
  } else {
    note(unknownWord("onset", text, "impulsive, emergent or questionable"));
  }
}

void PickDraft::takeMode(const QString& text) {
  if (const auto found = pickMode(text)) {
    pick.mode = *found;
  } else {
    note(unknownWord("mode", text, "manual or automatic"));
  }
}

void PickList::add(PickDraft draft, qint64 line) {
  constexpr std::size_t kStation = 1;
  if (draft.pick.channel[kStation].isEmpty()) draft.note(QStringLiteral("a pick without a station"));
  leftOut_.count(line, draft.problem);
  if (!draft.problem.isEmpty()) return;
  if (draft.pick.id.isEmpty() || ids_.contains(draft.pick.id)) draft.pick.id = newPickId();
  ids_.insert(draft.pick.id);
  file_.picks.push_back(std::move(draft.pick));
}

Result<PickFile> PickList::result() {
  if (leftOut_.isAll()) return leftOut_.error();
  file_.notes = leftOut_.notes();
  return std::move(file_);
}

} // namespace xov
