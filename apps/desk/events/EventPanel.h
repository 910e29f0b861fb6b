#pragma once

#include "apps/desk/events/EventTableModel.h"

#include <QTableView>

class QSortFilterProxyModel;

namespace xov::desk {

/// Events to choose from: sorted by any column, copied as text, and opened by a double click or Return.
class EventPanel : public QTableView {
  Q_OBJECT
public:
  explicit EventPanel(QWidget* parent = nullptr);

  void setEvents(HypocentreArray events);
  /// Those of the selected rows, all where none is, in the order in which they are shown: a row of names and one for
  /// each event, with tabulators.
  QString text() const;

Q_SIGNALS:
  void opened(const xov::Hypocentre& event);

protected:
  bool event(QEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;

private:
  void copy() const;

  EventTableModel* model_;
  QSortFilterProxyModel* sorted_;
};

} // namespace xov::desk
