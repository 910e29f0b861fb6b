#pragma once

#include "XOV_Graphics/base/Export.h"
#include "XOV_Graphics/seismic/arrivals/SeismicPhase.h"
#include "XOV_Graphics/seismic/picks/PickDocument.h"
#include "XOV_Graphics/views/seismic/SeismogramView.h"

#include <QMap>
#include <QObject>
#include <QPointer>

#include <memory>
#include <optional>
#include <vector>

class QKeyEvent;
class QMouseEvent;

namespace xov {

class PickEditorMarks;

/// Lets mouse and keys set picks on the traces of a view. To switch it on:
///
///     auto* editor = new PickEditor(view, document); // the view owns it
///     editor->setPredictedPhases({*phaseNamed("P"), *phaseNamed("S")});
///
/// P and S, or the keys of setPhaseKey(), set a pick of that name at the pointer on the trace under it; where the
/// part of time that is shown has one of that name on the channel, it goes there, unless Shift is held. A pick is
/// dragged by its line; with Shift the distance to it becomes its uncertainty. Delete removes the pick under the
/// pointer. U and D say that the first motion goes up or down, X that it cannot be told; I, E and Q that the onset is
/// impulsive, emergent or questionable; W and Shift+W double and halve the uncertainty: of the pick under the
/// pointer, or else of the one touched last. Escape ends a drag without a change. keys() has it all as texts, for a
/// help sheet.
///
/// The view marks the document's picks in place of those in headers that the document knows, so that pictures and
/// exports show them; picks of headers are taken into the document when they are touched. Without an editor a view is
/// as before. What is neither a key of the editor nor on a pick goes on to the view. Main thread only.
class XOV_EXPORT PickEditor : public QObject {
  Q_OBJECT

public:
  /// A line of the help sheet.
  struct Key {
    QString keys;   ///< such as "Del"
    QString effect; ///< what they do, in a few words
  };

  /// `view`, not null, becomes the parent. The document may go away at any time.
  PickEditor(SeismogramView* view, PickDocument* document);
  ~PickEditor() override;

  /// The view with the picks.
  SeismogramView* view() const { return view_; }
  /// The document that is edited; null once it is gone.
  PickDocument* document() const { return document_; }
  /// On at first. While it is off, nothing is marked or answered.
  bool isEnabled() const { return enabled_; }
  /// Sets isEnabled().
  void setEnabled(bool enabled);

  /// Which key sets a pick of which phase; P and S of their own names at first. An empty name takes a key away.
  void setPhaseKey(Qt::Key key, const QString& phase);
  /// The phase of each key (Qt::Key).
  const QMap<int, QString>& phaseKeys() const { return phaseKeys_; }
  /// Phases whose arrivals are marked beside, with dashes, where a record knows distance and origin time; none at
  /// first.
  void setPredictedPhases(const std::vector<SeismicPhase>& phases);
  /// Keys and mouse in this program's language.
  static std::vector<Key> keys();

  /// The pick that was touched last; null where there is none. It is marked in another colour.
  const Pick* currentPick() const;
  void setCurrentPick(const QString& id);

  // What keys do, for menus and buttons.

  /// Sets a pick of that name at a point of the view, by the user's hand. Nothing where no trace is.
  void pickAt(QPointF point, const QString& phase, bool another = false);
  /// The pick whose line is within 4 points of a point, on the trace under it; nothing where there is none.
  std::optional<Pick> pickUnder(QPointF point) const;
  /// Removes it.
  bool removeAt(QPointF point);
  /// Of the current pick.
  void setPolarity(PickPolarity polarity);
  /// Of the current pick.
  void setOnset(PickOnset onset);
  /// Of the current pick: as much earlier as later, or nothing where it is not known.
  void setUncertainty(std::optional<double> seconds);

  /// Hears the events of the view.
  bool eventFilter(QObject* watched, QEvent* event) override;

Q_SIGNALS:
  /// Another pick was touched.
  void currentPickChanged(const QString& id);
  /// Why a pick could not be set, in one line.
  void refused(const QString& reason);

private:
  bool take(QEvent& event);
  struct Place {
    PointedRecord record;
    double secondsPerPoint = 0;
  };
  struct Drag {
    Pick pick;
    Place place; ///< where it began
    double x = 0;
    bool isUncertainty = false;
    bool hasMoved = false;
  };

  std::optional<Place> placeAt(QPointF point) const;
  std::optional<Pick> pickNear(const Place& place) const;
  /// The pick under the pointer, else the current one, as one of the document.
  std::optional<QString> touchedPick();
  void touch(const Pick& pick);
  void changeCurrent(const Pick& to);
  bool isShown(const Place& place, const Pick& pick) const;
  bool key(const QKeyEvent& event);
  bool editKey(int key, bool shift);
  bool press(const QMouseEvent& event);
  bool move(const QMouseEvent& event);
  bool release();
  std::optional<Pick> dragged(QPointF point) const;
  void renew();

  SeismogramView* view_;
  QPointer<PickDocument> document_;
  std::shared_ptr<PickEditorMarks> marks_;
  bool enabled_ = true;
  QMap<int, QString> phaseKeys_;
  QPointF pointer_;
  std::optional<Drag> drag_;
};

} // namespace xov
