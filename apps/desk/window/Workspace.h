#pragma once

#include "apps/desk/panes/Pane.h"

#include <QDockWidget>
#include <QMainWindow>

#include <vector>

namespace xov::desk {

/// Where panes stand: as tabs, beside and below each other, or torn off as windows of their own. Each pane has a
/// number by which it is known for as long as the program runs, closed or not.
class Workspace : public QMainWindow {
  Q_OBJECT
public:
  explicit Workspace(CommandRunner run, QWidget* parent = nullptr);
  ~Workspace() override;

  /// A new pane, as a tab over the current one; `number` is a new one where it is 0.
  Pane* open(const PlotRequest& request, int number = 0);
  void close(int number);

  /// In the order in which they were opened.
  std::vector<Pane*> panes() const;
  Pane* pane(int number) const;
  int numberOf(const Pane* pane) const;
  /// The pane that was last looked at or worked in; nullptr where there is none.
  Pane* currentPane() const { return current_; }
  void setCurrentPane(Pane* pane);

  /// Puts the current pane beside or below all others.
  void split(Qt::Orientation orientation);
  /// Makes a window of the current pane, or takes it back.
  void tearOff();
  /// So many panes further on, in the order of their opening.
  void goTo(int step);
  /// Brings a pane to the front, with the keyboard.
  void goTo(Pane& pane);

Q_SIGNALS:
  void paneOpened(xov::desk::Pane* pane);
  void paneClosing(xov::desk::Pane* pane);
  void currentPaneChanged(xov::desk::Pane* pane);
  /// The user wants a pane closed.
  void closeAsked(int number);

protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

private:
  struct Place {
    int number;
    QDockWidget* dock;
    Pane* pane;
  };
  const Place* placeOf(const Pane* pane) const;
  void noteFocus(const QWidget* widget);

  CommandRunner run_;
  std::vector<Place> places_;
  Pane* current_ = nullptr;
  int lastNumber_ = 0;
};

} // namespace xov::desk
