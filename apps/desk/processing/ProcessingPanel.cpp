#include "apps/desk/processing/ProcessingPanel.h"

#include "apps/desk/desktop/FileDialogs.h"

#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QMenu>
#include <QTableView>
#include <QToolButton>
#include <QVBoxLayout>

namespace xov::desk {

ProcessingPanel::ProcessingPanel(QWidget* parent)
    : QWidget(parent),
      table_(new QTableView(this)),
      message_(new QLabel(this)) {
  setObjectName(QStringLiteral("processing"));
  table_->setObjectName(QStringLiteral("processingSteps"));
  table_->setAccessibleName(tr("Steps of processing"));
  table_->setModel(&model_);
  table_->setSelectionBehavior(QAbstractItemView::SelectRows);
  table_->setSelectionMode(QAbstractItemView::SingleSelection);
  table_->setTabKeyNavigation(false);
  table_->horizontalHeader()->setStretchLastSection(true);
  table_->horizontalHeader()->setSectionResizeMode(ProcessingModel::Step, QHeaderView::ResizeToContents);
  table_->verticalHeader()->hide();
  message_->setObjectName(QStringLiteral("processingMessage"));
  message_->setWordWrap(true);
  message_->hide();
  auto* const layout = new QVBoxLayout(this);
  layout->addWidget(table_);
  layout->addWidget(message_);
  buildButtons();
  buildMenus();
  connect(&model_, &ProcessingModel::wished, this, [this](const ProcessingList& steps, const QString& what) {
    say({});
    Q_EMIT stepsWished(steps, what);
  });
  connect(&model_, &ProcessingModel::refused, this, &ProcessingPanel::say);
  connect(table_->selectionModel(), &QItemSelectionModel::selectionChanged, this, &ProcessingPanel::enableButtons);
  connect(&model_, &QAbstractItemModel::modelReset, this, &ProcessingPanel::enableButtons);
  showNothing();
}

QToolButton* ProcessingPanel::button(const QString& name, const QString& text, const QString& tip) {
  auto* const made = new QToolButton(this);
  made->setObjectName(name);
  made->setText(text);
  made->setToolTip(tip);
  made->setFocusPolicy(Qt::StrongFocus);
  return made;
}

void ProcessingPanel::buildButtons() {
  add_ = button(QStringLiteral("addStep"), tr("&Add"), tr("Add a step"));
  remove_ = button(QStringLiteral("removeStep"), tr("Remo&ve"), tr("Take the selected step away"));
  up_ = button(QStringLiteral("stepUp"), tr("&Up"), tr("Do the selected step earlier"));
  down_ = button(QStringLiteral("stepDown"), tr("&Down"), tr("Do the selected step later"));
  raw_ = button(QStringLiteral("rawData"), tr("&Raw"), tr("Show the data without any step"));
  presets_ = button(QStringLiteral("presets"), tr("Prese&ts"), tr("Open and save lists of steps"));
  auto* const row = new QHBoxLayout;
  for (QToolButton* const each : {add_, remove_, up_, down_, raw_, presets_})
    row->addWidget(each);
  row->addStretch();
  static_cast<QVBoxLayout*>(layout())->addLayout(row);
  raw_->setCheckable(true);
  connect(remove_, &QToolButton::clicked, this, &ProcessingPanel::removeStep);
  connect(up_, &QToolButton::clicked, this, [this] { moveStep(-1); });
  connect(down_, &QToolButton::clicked, this, [this] { moveStep(1); });
  connect(raw_, &QToolButton::clicked, this, &ProcessingPanel::rawWished);
}

void ProcessingPanel::buildMenus() {
  auto* const kinds = new QMenu(add_);
  for (const StepKind& kind : stepKinds()) {
    QAction* const action = kinds->addAction(stepTitle(kind), this, [this, &kind] { addStep(kind); });
    action->setObjectName(QLatin1String("add") + QLatin1String(kind.option));
  }
  add_->setMenu(kinds);
  add_->setPopupMode(QToolButton::InstantPopup);
  auto* const presets = new QMenu(presets_);
  presets
      ->addAction(tr("&Open…"), this,
                  [this] { askForFiles(this, [this](const QStringList& paths) { openPreset(paths.value(0)); }); })
      ->setObjectName(QStringLiteral("openPreset"));
  presets
      ->addAction(tr("&Save…"), this,
                  [this] {
                    askForNewFile(this, tr("Save Preset"), QStringLiteral("steps.xovsteps"),
                                  {QStringLiteral("xovsteps")},
                                  [this](const QStringList& paths) { savePreset(paths.value(0)); });
                  })
      ->setObjectName(QStringLiteral("savePreset"));
  presets_->setMenu(presets);
  presets_->setPopupMode(QToolButton::InstantPopup);
}

void ProcessingPanel::showSteps(const ProcessingList& steps, bool isRaw) {
  setEnabled(true);
  model_.setSteps(steps);
  raw_->setChecked(isRaw);
  table_->setEnabled(!isRaw);
  enableButtons();
}

void ProcessingPanel::showNothing() {
  model_.setSteps({});
  raw_->setChecked(false);
  setEnabled(false);
}

int ProcessingPanel::selectedRow() const {
  const QModelIndexList rows = table_->selectionModel()->selectedRows();
  return rows.isEmpty() ? -1 : rows.front().row();
}

void ProcessingPanel::enableButtons() {
  const int row = selectedRow();
  remove_->setEnabled(row >= 0);
  up_->setEnabled(row > 0);
  down_->setEnabled(row >= 0 && row + 1 < model_.rowCount());
}

void ProcessingPanel::say(const QString& text) {
  message_->setText(text);
  message_->setVisible(!text.isEmpty());
}

void ProcessingPanel::addStep(const StepKind& kind) {
  const QString option = QLatin1String(kind.option);
  const QString usual = QLatin1String(kind.usual == nullptr ? "" : kind.usual);
  if (takesFile(option))
    askForFiles(this, [this, option](const QStringList& paths) { insertStep({option, paths.value(0)}); });
  else
    insertStep({option, usual});
}

void ProcessingPanel::insertStep(const ProcessingStep& step) {
  say({});
  ProcessingList steps = model_.steps();
  const int selected = selectedRow();
  const int row = selected < 0 ? int(steps.size()) : selected + 1;
  steps.insert(steps.begin() + row, step);
  Q_EMIT stepsWished(steps, tr("Add %1").arg(stepTitle(*stepKindOf(step.option))));
  table_->selectRow(row);
}

void ProcessingPanel::removeStep() {
  const int row = selectedRow();
  if (row < 0) return;
  say({});
  ProcessingList steps = model_.steps();
  const StepKind* const kind = stepKindOf(steps[std::size_t(row)].option);
  steps.erase(steps.begin() + row);
  Q_EMIT stepsWished(steps, tr("Remove %1").arg(kind == nullptr ? QString() : stepTitle(*kind)));
  if (model_.rowCount() > 0) table_->selectRow(std::min(row, model_.rowCount() - 1));
}

void ProcessingPanel::moveStep(int by) {
  const int row = selectedRow();
  ProcessingList steps = model_.steps();
  const int other = row + by;
  if (row < 0 || other < 0 || other >= int(steps.size())) return;
  say({});
  std::swap(steps[std::size_t(row)], steps[std::size_t(other)]);
  Q_EMIT stepsWished(steps, by < 0 ? tr("Step earlier") : tr("Step later"));
  table_->selectRow(other);
}

void ProcessingPanel::openPreset(const QString& path) {
  const Result<Preset> preset = readPreset(path);
  if (!preset) return say(preset.error());
  say(preset->problems.join(QLatin1Char('\n')));
  Q_EMIT stepsWished(preset->steps, tr("Open preset"));
}

void ProcessingPanel::savePreset(const QString& path) {
  const Status written = writePreset(path, model_.steps());
  say(written.error());
}

} // namespace xov::desk
