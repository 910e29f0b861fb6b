#include "apps/desk/events/EventPanel.h"

#include <QHeaderView>
#include <QKeyEvent>
#include <QSortFilterProxyModel>

#include <XOV_Graphics/platform/Pasteboard.h>
#include <algorithm>

namespace xov::desk {

namespace {

constexpr int kRowMargin = 4;
const QString kPlainText = QStringLiteral("text/plain");
const QString kWidestOriginTime = QStringLiteral("0000-00-00T00:00:00.000Z00");

} // namespace

EventPanel::EventPanel(QWidget* parent)
    : QTableView(parent),
      model_(new EventTableModel(this)),
      sorted_(new QSortFilterProxyModel(this)) {
  setObjectName(QStringLiteral("events"));
  setAccessibleName(tr("Events of the box"));
  sorted_->setSourceModel(model_);
  sorted_->setSortRole(EventTableModel::kSortRole);
  sorted_->setSortCaseSensitivity(Qt::CaseInsensitive);
  setModel(sorted_);
  setSortingEnabled(true);
  sortByColumn(EventTableModel::Time, Qt::AscendingOrder);
  setSelectionBehavior(QAbstractItemView::SelectRows);
  setEditTriggers(QAbstractItemView::NoEditTriggers);
  setTabKeyNavigation(false);
  verticalHeader()->hide();
  verticalHeader()->setDefaultSectionSize(fontMetrics().height() + kRowMargin);
  setWordWrap(false);
  horizontalHeader()->resizeSection(EventTableModel::Time, fontMetrics().horizontalAdvance(kWidestOriginTime));
  horizontalHeader()->setStretchLastSection(true);
  connect(this, &QAbstractItemView::activated, this, [this](const QModelIndex& index) {
    const std::shared_ptr<Hypocentre> chosen = model_->events()[std::size_t(sorted_->mapToSource(index).row())];
    Q_EMIT opened(*chosen);
  });
}

void EventPanel::setEvents(HypocentreArray events) { model_->setEvents(std::move(events)); }

QString EventPanel::text() const {
  const QModelIndexList selected = selectionModel()->selectedRows();
  std::vector<int> rows;
  for (const QModelIndex& index : selected)
    rows.push_back(index.row());
  if (rows.empty()) {
    for (int row = 0; row < sorted_->rowCount(); ++row)
      rows.push_back(row);
  }
  std::ranges::sort(rows);
  QStringList lines;
  QStringList cells;
  for (int column = 0; column < EventTableModel::kColumnCount; ++column)
    cells.append(model_->headerData(column, Qt::Horizontal, Qt::DisplayRole).toString());
  lines.append(cells.join(QLatin1Char('\t')));
  for (const int row : rows) {
    cells.clear();
    for (int column = 0; column < EventTableModel::kColumnCount; ++column)
      cells.append(sorted_->index(row, column).data().toString().simplified());
    lines.append(cells.join(QLatin1Char('\t')));
  }
  return lines.join(QLatin1Char('\n')) + QLatin1Char('\n');
}

void EventPanel::copy() const {
  Pasteboard clipboard = Pasteboard::generalPasteboard();
  clipboard.declareTypes({kPlainText});
  clipboard.setData(text().toUtf8(), kPlainText);
}

// The window has that key, too.
bool EventPanel::event(QEvent* event) {
  if (event->type() == QEvent::ShortcutOverride && static_cast<QKeyEvent*>(event)->matches(QKeySequence::Copy))
    event->accept();
  return QTableView::event(event);
}

void EventPanel::keyPressEvent(QKeyEvent* event) {
  if (event->matches(QKeySequence::Copy)) return copy();
  QTableView::keyPressEvent(event);
}

} // namespace xov::desk
