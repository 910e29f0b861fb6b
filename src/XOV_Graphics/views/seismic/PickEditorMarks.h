#pragma once

#include "XOV_Graphics/seismic/arrivals/Arrivals.h"
#include "XOV_Graphics/seismic/picks/PickDocument.h"
#include "XOV_Graphics/views/seismic/PickSource.h"

#include <QHash>
#include <QPointer>

#include <map>
#include <utility>

namespace xov {

/// What a view marks while an editor is on: the picks of a document, those of headers that the document does not
/// know, and expected arrivals.
class PickEditorMarks : public PickSource {
public:
  explicit PickEditorMarks(PickDocument* document) : document_(document) {}

  /// The picks of a record: the document's, then those of its header alone.
  PickArray picksAt(const SeismogramRecord& record) const;
  std::optional<std::vector<MarkedPick>> picksToMark(const SeismogramRecord& record) const override;

  /// The document has changed.
  void forget() { byStation_.clear(); }
  void setPhases(const std::vector<SeismicPhase>& phases);
  void setCurrent(const QString& id) { current_ = id; }
  const QString& current() const { return current_; }
  /// Is marked in the place of the pick of that id.
  void setDragged(const std::optional<Pick>& pick) { dragged_ = pick; }

private:
  void addArrivals(const SeismogramRecord& record, const PickArray& picks, std::vector<MarkedPick>& marks) const;

  QPointer<PickDocument> document_;
  std::vector<SeismicPhase> phases_;
  QString current_;
  std::optional<Pick> dragged_;
  mutable QHash<QString, std::vector<std::size_t>> byStation_; ///< rows of the document; empty while not known
  mutable std::map<std::pair<float, float>, std::vector<PhaseArrival>> arrivals_; ///< by distance and depth
};

} // namespace xov
