#pragma once

#include <QPointer>
#include <QTableView>

#include <XOV_Graphics/seismic/picks/PickDocument.h>

class QSortFilterProxyModel;

namespace xov::desk {

class PickTableModel;

/// The table of picks: sorted by a click on a title, changed by a double click or F2, rows removed by Delete.
class PickPanel : public QTableView {
  Q_OBJECT
public:
  explicit PickPanel(PickDocument& document, QWidget* parent = nullptr);

  /// Goes to the row of a pick.
  void show(const QString& id);

Q_SIGNALS:
  /// The user goes to the row of that pick.
  void chosen(const QString& id);

protected:
  void keyPressEvent(QKeyEvent* event) override;

private:
  QString idAt(const QModelIndex& index) const;

  QPointer<PickDocument> document_;
  PickTableModel* model_;
  QSortFilterProxyModel* sorted_;
};

} // namespace xov::desk
