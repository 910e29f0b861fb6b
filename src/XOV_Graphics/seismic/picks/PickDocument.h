#pragma once

#include "XOV_Graphics/base/Export.h"
#include "XOV_Graphics/seismic/picks/Pick.h"

#include <QObject>
#include <QSet>

#include <optional>

namespace xov {

/// One change of a document of picks: what there was, and what is there instead. Nothing before is a pick that was
/// added, nothing after one that was removed.
struct XOV_EXPORT PickChange {
  std::size_t row = 0;             ///< in the list of picks
  std::optional<Pick> before = {}; ///< nothing where it was added
  std::optional<Pick> after = {};  ///< nothing where it was removed

  /// The change that takes this one back.
  PickChange reversed() const { return {row, after, before}; }
};

/// The picks of a session, which are told apart by their ids. What a user does (add(), change(), remove()) is told of
/// by edited(), as a change that a host keeps for its undo and redo, which apply() it or its reverse. Main thread
/// only.
///
///     connect(&document, &PickDocument::edited, [&](const PickChange& change) { stack.push(new Step(change)); });
class XOV_EXPORT PickDocument : public QObject {
  Q_OBJECT

public:
  /// Without picks.
  explicit PickDocument(QObject* parent = nullptr);
  ~PickDocument() override;

  /// In the order in which they were added.
  const PickArray& picks() const { return picks_; }
  /// The place of a pick; nothing where there is none of that id.
  std::optional<std::size_t> rowOf(const QString& id) const;
  /// The pick of that id; null where there is none. Valid until the next change.
  const Pick* find(const QString& id) const;

  /// Whether there is a pick of that id, or was one.
  bool knows(const QString& id) const { return knownIds_.contains(id); }

  // What a user does.

  /// Adds a pick and gives its id: a new one where it has none or another pick has it. Uncertainties that are none
  /// are left out.
  QString add(Pick pick);
  /// Puts another pick in the place of one, under the same id. False where there is none of that id, or nothing
  /// would change.
  bool change(const QString& id, Pick to);
  /// change() to another time.
  bool move(const QString& id, UtcNanoseconds time);
  /// change() to another phase.
  bool rename(const QString& id, const QString& phase);
  /// Takes a pick out; false where there is none of that id.
  bool remove(const QString& id);

  // What a host does.

  /// Does a change (redo), or takes one back (undo) as its reverse. False where the document does not hold what was
  /// there before.
  bool apply(const PickChange& change);
  /// Takes picks in that came with records or from a file, which is no step of the user's: those whose id the
  /// document has not held before. How many those were.
  std::size_t take(PickArray picks);
  /// Puts a pick under that id as a journal tells it, or takes the one away that has it. One that is taken away
  /// before it comes with its record does not come any more.
  void restore(const QString& id, const std::optional<Pick>& pick);
  /// Begins anew with these picks.
  void reset(PickArray picks = {});

  /// Whether there is anything that markSaved() has not seen.
  bool isModified() const { return picks_ != saved_; }
  /// What there is counts as saved from now on.
  void markSaved() { saved_ = picks_; }

Q_SIGNALS:
  /// A user's change, after changed().
  void edited(const xov::PickChange& change);
  /// A change of one pick, by the user or in undo or redo.
  void changed(const xov::PickChange& change);
  /// Picks are others than before without a step of the user's.
  void wasReset();

private:
  void append(Pick pick);
  void carryOut(const PickChange& change);
  void edit(const PickChange& change);

  PickArray picks_;
  PickArray saved_;
  QSet<QString> knownIds_; ///< of all picks that ever were here
};

} // namespace xov
