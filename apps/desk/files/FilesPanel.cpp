#include "apps/desk/files/FilesPanel.h"

#include <QAction>
#include <QComboBox>
#include <QDateTimeEdit>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QSpinBox>
#include <QTableView>
#include <QToolButton>
#include <QVBoxLayout>

#include <algorithm>

namespace xov::desk {

namespace {

constexpr int kLeftOutHeight = 110;
constexpr int kCellMargin = 16;
constexpr int kShortestKind = 8; // characters of a kind that are seen at least
// Of memory for samples, as xov takes them.
constexpr int kLeastMegabytes = 16;
constexpr int kMostMegabytes = 1 << 20;
constexpr int kMegabyteStep = 64;

QTableView* tableOf(QAbstractItemModel& model, const QString& name, QWidget* parent) {
  auto* const table = new QTableView(parent);
  table->setObjectName(name);
  table->setModel(&model);
  table->setSelectionBehavior(QAbstractItemView::SelectRows);
  table->setEditTriggers(QAbstractItemView::NoEditTriggers);
  table->setTabKeyNavigation(false); // the key leads out of it
  table->setWordWrap(false);
  table->verticalHeader()->hide();
  table->verticalHeader()->setDefaultSectionSize(table->fontMetrics().height() + 4);
  table->horizontalHeader()->setStretchLastSection(true);
  return table;
}

} // namespace

FilesPanel::FilesPanel(QWidget* parent) : QWidget(parent) {
  setObjectName(QStringLiteral("files"));
  auto* const layout = new QVBoxLayout(this);
  buildFilter(*layout);
  buildTable(*layout);
  buildTimes(*layout);
  buildProgress(*layout);
  connect(&loader_, &FileLoader::found, this, [this](const FileEntries& entries) { catalogue_.add(entries); });
  connect(&loader_, &FileLoader::leftOut, this, [this](const QString& path, const QString& reason) {
    leftOut_.add(path, reason);
    leftOutTable_->show();
  });
  connect(&loader_, &FileLoader::advanced, this, &FilesPanel::showAdvance);
  connect(&loader_, &FileLoader::finished, this, [this] {
    bar_->hide();
    cancel_->hide();
    showCounts();
    Q_EMIT listed();
  });
  showCounts();
}

FilesPanel::~FilesPanel() = default;

void FilesPanel::buildFilter(QLayout& layout) {
  auto* const row = new QHBoxLayout;
  filter_ = new QLineEdit(this);
  filter_->setObjectName(QStringLiteral("filesFilter"));
  filter_->setPlaceholderText(tr("Filter: words, or patterns as II.*.BHZ"));
  filter_->setAccessibleName(tr("Filter of files"));
  filter_->setClearButtonEnabled(true);
  connect(filter_, &QLineEdit::textChanged, this, [this](const QString& text) {
    shown_.setText(text);
    showCounts();
  });
  kind_ = new QComboBox(this);
  kind_->setObjectName(QStringLiteral("filesKind"));
  kind_->setAccessibleName(tr("Kind of files"));
  kind_->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
  kind_->setMinimumContentsLength(kShortestKind);
  kind_->addItem(tr("All kinds"));
  for (const FileKind kind : kFileKinds)
    kind_->addItem(fileKindText(kind), int(kind));
  connect(kind_, &QComboBox::currentIndexChanged, this, [this](int item) {
    shown_.setKind(item == 0 ? std::nullopt : std::optional(FileKind(kind_->itemData(item).toInt())));
    showCounts();
  });
  row->addWidget(filter_, 1);
  row->addWidget(kind_);
  static_cast<QBoxLayout&>(layout).addLayout(row);
}

QToolButton* FilesPanel::button(const QString& name, const QString& text, void (FilesPanel::*act)()) {
  auto* const made = new QToolButton(this);
  made->setObjectName(name);
  made->setText(text);
  made->setFocusPolicy(Qt::StrongFocus);
  connect(made, &QToolButton::clicked, this, act);
  return made;
}

void FilesPanel::buildTable(QLayout& layout) {
  table_ = tableOf(shown_, QStringLiteral("filesTable"), this);
  table_->setAccessibleName(tr("Files"));
  table_->setSortingEnabled(true);
  table_->sortByColumn(-1, Qt::AscendingOrder); // as they came, until a heading is clicked
  // As wide as what mostly stands there.
  constexpr const char* kUsualTexts[FileCatalogue::kColumnCount] = {
      "Seismogram", "",        "", "", "",          "2000-00-00T00:00:00.000Z", "2000-00-00T00:00:00.000Z",
      "",           "0000000", "", "", "SAC binary"};
  for (int column = 0; column + 1 < FileCatalogue::kColumnCount; ++column) {
    const int usual = table_->fontMetrics().horizontalAdvance(QLatin1String(kUsualTexts[column])) + kCellMargin;
    table_->setColumnWidth(column, std::max(usual, table_->horizontalHeader()->sectionSizeHint(column)));
  }
  // What tells most rows apart comes first.
  table_->horizontalHeader()->moveSection(FileCatalogue::Kind, FileCatalogue::Distance);
  table_->horizontalHeader()->setSectionsMovable(true);
  auto* const open = new QAction(tr("Open"), table_);
  open->setObjectName(QStringLiteral("showFiles"));
  open->setShortcuts({QKeySequence(Qt::Key_Return), QKeySequence(Qt::Key_Enter)});
  auto* const remove = new QAction(tr("Remove from the list"), table_);
  remove->setObjectName(QStringLiteral("removeFiles"));
  remove->setShortcut(QKeySequence::Delete);
  for (QAction* const action : {open, remove}) {
    action->setShortcutContext(Qt::WidgetShortcut);
    table_->addAction(action);
  }
  table_->setContextMenuPolicy(Qt::ActionsContextMenu);
  connect(open, &QAction::triggered, this, &FilesPanel::openSelected);
  connect(remove, &QAction::triggered, this, &FilesPanel::removeSelected);
  connect(table_, &QTableView::doubleClicked, this, &FilesPanel::openSelected);
  connect(table_->selectionModel(), &QItemSelectionModel::selectionChanged, this, &FilesPanel::showTimes);
  leftOutTable_ = tableOf(leftOut_, QStringLiteral("leftOutTable"), this);
  leftOutTable_->setAccessibleName(tr("Files that could not be read"));
  leftOutTable_->setMaximumHeight(kLeftOutHeight);
  leftOutTable_->hide();
  layout.addWidget(table_);
  layout.addWidget(leftOutTable_);
}

void FilesPanel::buildTimes(QLayout& layout) {
  times_ = new QWidget(this);
  times_->setObjectName(QStringLiteral("archiveTimes"));
  auto* const rows = new QFormLayout(times_);
  rows->setContentsMargins(0, 0, 0, 0);
  const auto edit = [&](const QString& name, const QString& text) {
    auto* const made = new QDateTimeEdit(times_);
    made->setObjectName(name);
    made->setTimeSpec(Qt::UTC);
    made->setDisplayFormat(QStringLiteral("yyyy-MM-dd HH:mm"));
    made->setCalendarPopup(true);
    rows->addRow(text, made);
    return made;
  };
  from_ = edit(QStringLiteral("archiveFrom"), tr("F&rom"));
  to_ = edit(QStringLiteral("archiveTo"), tr("&To"));
  times_->hide();
  layout.addWidget(times_);
}

void FilesPanel::buildProgress(QLayout& layout) {
  auto* row = new QHBoxLayout;
  counts_ = new QLabel(this);
  counts_->setObjectName(QStringLiteral("filesCounts"));
  counts_->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred); // a long line must not widen the list
  bar_ = new QProgressBar(this);
  bar_->setObjectName(QStringLiteral("filesProgress"));
  bar_->setAccessibleName(tr("Files that have been looked into"));
  bar_->hide();
  cancel_ = new QPushButton(tr("Cancel"), this);
  cancel_->setObjectName(QStringLiteral("filesCancel"));
  cancel_->hide();
  connect(cancel_, &QPushButton::clicked, this, &FilesPanel::cancel);
  row->addWidget(counts_, 1);
  row->addWidget(bar_, 1);
  row->addWidget(cancel_);
  static_cast<QBoxLayout&>(layout).addLayout(row);
  row = new QHBoxLayout;
  row->addStretch();
  memory_ = new QSpinBox(this);
  memory_->setObjectName(QStringLiteral("sampleMemory"));
  memory_->setAccessibleName(tr("Memory for samples"));
  memory_->setToolTip(tr("Memory for samples of large files, which are read as they are drawn"));
  memory_->setRange(kLeastMegabytes, kMostMegabytes);
  memory_->setSingleStep(kMegabyteStep);
  memory_->setSuffix(tr(" MB"));
  memory_->setValue(options_.sampleMegabytes);
  connect(memory_, &QSpinBox::valueChanged, this, [this](int megabytes) { options_.sampleMegabytes = megabytes; });
  row->addWidget(memory_);
  row->addWidget(button(QStringLiteral("filesShow"), tr("&Show"), &FilesPanel::openSelected));
  row->addWidget(button(QStringLiteral("filesClear"), tr("C&lear"), &FilesPanel::clear));
  static_cast<QBoxLayout&>(layout).addLayout(row);
}

void FilesPanel::add(const QStringList& paths) { loader_.load(paths); }

void FilesPanel::showAdvance(qint64 done, qint64 total) {
  // Without a number while folders are looked through. Counted in thousandths: totals may be beyond an int.
  constexpr int kSteps = 1000;
  bar_->setRange(0, total > 0 ? kSteps : 0);
  if (total > 0) bar_->setValue(int(done * kSteps / total));
  bar_->show();
  cancel_->show();
  showCounts();
}

void FilesPanel::showCounts() {
  const int rows = catalogue_.rowCount();
  const int shown = shown_.rowCount();
  QString text = rows == shown ? tr("Rows: %1").arg(rows) : tr("Rows: %1 of %2").arg(shown).arg(rows);
  if (leftOut_.rowCount() > 0) text += tr(", left out: %1").arg(leftOut_.rowCount());
  counts_->setText(text);
}

std::vector<PlotRequest> FilesPanel::seismogramsBetween(const QDateTime& from, const QDateTime& to) const {
  FileEntries entries;
  for (const FileEntry& entry : catalogue_.entries()) {
    const bool hasSamples = entry.kind == FileKind::Seismograms || entry.kind == FileKind::Archive;
    const ChannelOutline& channel = entry.channel;
    const bool isOfThen = channel.start.isValid() && channel.start <= to && channel.end >= from;
    if (hasSamples && isOfThen) entries.push_back(entry);
  }
  OpeningOptions options = options_;
  options.from = from;
  options.to = to;
  return requestsForEntries(
      entries, [this](const QString& path) { return catalogue_.rowsOf(path); }, options);
}

FileEntries FilesPanel::chosen() const {
  FileEntries entries;
  const QModelIndexList rows = table_->selectionModel()->selectedRows();
  for (const QModelIndex& row : rows)
    entries.push_back(shown_.entryAt(row));
  if (!entries.empty()) return entries;
  for (int row = 0; row < shown_.rowCount(); ++row)
    entries.push_back(shown_.entryAt(shown_.index(row, 0)));
  return entries;
}

/// The times of an archive belong to the rows of one that are selected.
void FilesPanel::showTimes() {
  QDateTime end;
  const QModelIndexList rows = table_->selectionModel()->selectedRows();
  for (const QModelIndex& row : rows) {
    const FileEntry& entry = shown_.entryAt(row);
    if (entry.kind == FileKind::Archive && (!end.isValid() || entry.channel.end > end)) end = entry.channel.end;
  }
  times_->setVisible(end.isValid());
  if (end.isValid() && !options_.from.isValid()) {
    const DaySpan last = dayOf(end);
    from_->setDateTime(last.from);
    to_->setDateTime(last.to);
  }
}

void FilesPanel::setArchiveTime(const QDateTime& from, const QDateTime& to) {
  options_.from = from;
  options_.to = to;
  if (!from.isValid() || !to.isValid()) return;
  from_->setDateTime(from.toUTC());
  to_->setDateTime(to.toUTC());
}

void FilesPanel::setSampleMegabytes(int megabytes) { memory_->setValue(megabytes); }

void FilesPanel::openSelected() {
  OpeningOptions options = options_;
  if (times_->isVisibleTo(this)) {
    options.from = from_->dateTime();
    options.to = to_->dateTime();
  }
  const auto rowsOf = [this](const QString& path) { return catalogue_.rowsOf(path); };
  for (const PlotRequest& request : requestsForEntries(chosen(), rowsOf, options))
    Q_EMIT requested(request);
}

void FilesPanel::removeSelected() {
  std::vector<int> rows;
  const QModelIndexList selected = table_->selectionModel()->selectedRows();
  for (const QModelIndex& row : selected)
    rows.push_back(shown_.mapToSource(row).row());
  catalogue_.remove(std::move(rows));
  showCounts();
}

void FilesPanel::clear() {
  loader_.cancel();
  catalogue_.clear();
  leftOut_.clear();
  leftOutTable_->hide();
  showCounts();
}

} // namespace xov::desk
