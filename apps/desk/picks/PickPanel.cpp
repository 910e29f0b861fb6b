#include "apps/desk/picks/PickPanel.h"

#include "apps/desk/picks/PickTableModel.h"

#include <QHeaderView>
#include <QKeyEvent>
#include <QSortFilterProxyModel>

namespace xov::desk {

namespace {

constexpr int kPickRowMargin = 8; // an editor has a frame
const QString kUsualChannel = QStringLiteral("WW.WWWWW.00.WWW");
const QString kWidestTime = QStringLiteral("0000-00-00T00:00:00.000000000Z000");

} // namespace

PickPanel::PickPanel(PickDocument& document, QWidget* parent)
    : QTableView(parent),
      document_(&document),
      model_(new PickTableModel(document, this)),
      sorted_(new QSortFilterProxyModel(this)) {
  setObjectName(QStringLiteral("picks"));
  setAccessibleName(tr("Picks"));
  sorted_->setSourceModel(model_);
  sorted_->setSortCaseSensitivity(Qt::CaseInsensitive);
  setModel(sorted_);
  setSortingEnabled(true);
  sortByColumn(PickTableModel::Time, Qt::AscendingOrder);
  setSelectionBehavior(QAbstractItemView::SelectRows);
  verticalHeader()->hide();
  verticalHeader()->setDefaultSectionSize(fontMetrics().height() + kPickRowMargin);
  setWordWrap(false);
  horizontalHeader()->resizeSection(PickTableModel::Time, fontMetrics().horizontalAdvance(kWidestTime));
  horizontalHeader()->resizeSection(PickTableModel::Channel, fontMetrics().horizontalAdvance(kUsualChannel));
  horizontalHeader()->setStretchLastSection(true);
  connect(selectionModel(), &QItemSelectionModel::currentRowChanged, this, [this](const QModelIndex& current) {
    if (current.isValid()) Q_EMIT chosen(idAt(current));
  });
}

QString PickPanel::idAt(const QModelIndex& index) const {
  const std::optional<Pick> pick = model_->pickAt(sorted_->mapToSource(index).row());
  return pick ? pick->id : QString();
}

void PickPanel::show(const QString& id) {
  const std::optional<std::size_t> row = document_ ? document_->rowOf(id) : std::nullopt;
  if (!row) return;
  const QModelIndex index = sorted_->mapFromSource(model_->index(int(*row), 0));
  if (index.row() != currentIndex().row()) setCurrentIndex(index);
}

void PickPanel::keyPressEvent(QKeyEvent* event) {
  if (event->key() != Qt::Key_Delete || state() == EditingState) {
    QTableView::keyPressEvent(event);
    return;
  }
  QStringList ids;
  for (const QModelIndex& row : selectionModel()->selectedRows())
    ids.append(idAt(row));
  for (const QString& id : ids)
    if (document_) document_->remove(id);
}

} // namespace xov::desk
