#pragma once

#include "apps/desk/panes/Pane.h"

#include <QDockWidget>
#include <QTimer>
#include <QWidget>

class QLabel;
class QProgressBar;
class QToolButton;

namespace xov::desk {

/// The bar above a pane: its name, its pages where there are several, that it is reading, and buttons that tear it
/// off and close it. Panes are dragged by it.
class PaneBar : public QWidget {
  Q_OBJECT
public:
  PaneBar(QDockWidget& dock, Pane& pane);

  QSize minimumSizeHint() const override;

private:
  QToolButton* addButton(const QString& name, const QString& text, const QIcon& icon);
  void showPages();
  void showName();
  void showState(const QString& text);

  Pane& pane_;
  QLabel* name_;
  QLabel* state_;
  QLabel* page_;
  QToolButton* previous_ = nullptr;
  QToolButton* next_ = nullptr;
  QProgressBar* busy_;
  QTimer busyTimer_;
};

} // namespace xov::desk
