#pragma once

#include "apps/desk/picks/PickSession.h"

#include <QAction>
#include <QList>
#include <QPointer>

namespace xov {
class PickEditor;
class XOVView;
} // namespace xov

namespace xov::desk {

class MainWindow;
class Pane;
class PickPanel;

/// Picks in a window: a table beside the panes, an editor on each plot of seismograms, and the ways into files.
class PicksTool : public QObject {
  Q_OBJECT
public:
  explicit PicksTool(MainWindow& window);

  PickSession& session() { return *session_; }
  /// Whether mouse and keys set picks.
  bool isPicking() const { return picking_->isChecked(); }
  void setPicking(bool isPicking) { picking_->setChecked(isPicking); }
  /// Whether the window may close now. Where picks are not saved the user is asked, without blocking, and the window
  /// closes when that is settled.
  bool mayClose();

private:
  void addActions();
  std::optional<HypocentreValues> event() const;
  void watch(Pane* pane);
  void edit(XOVView* view);
  void setUp(PickEditor& editor) const;
  void setUpAll();
  void openPicks();
  void save(bool underNewName, const std::function<void()>& saved = {});
  void saveIntoCopies();
  void choose(const QString& id);

  MainWindow& window_;
  PickSession* session_;
  PickPanel* panel_;
  QAction* picking_ = nullptr;
  QAction* expecting_ = nullptr;
  QList<QPointer<PickEditor>> editors_;
};

} // namespace xov::desk
