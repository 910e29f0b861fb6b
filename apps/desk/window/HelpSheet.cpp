#include "apps/desk/window/HelpSheet.h"

#include <QCoreApplication>
#include <QDialog>
#include <QHeaderView>
#include <QMainWindow>
#include <QMenu>
#include <QMenuBar>
#include <QTreeWidget>
#include <QVBoxLayout>

#include <XOV_Graphics/views/navigation/PlotNavigator.h>
#include <XOV_Graphics/views/seismic/PickEditor.h>

namespace xov::desk {

namespace {

constexpr QSize kSheetSize(560, 640);

QString sheetText(const char* text) { return QCoreApplication::translate("HelpSheet", text); }

QString withoutMarks(QString text) { return text.remove(QLatin1Char('&')).remove(QChar(0x2026)); }

void addRows(std::vector<ShortcutRow>& rows, const QString& menu, const QList<QAction*>& actions) {
  for (const QAction* const action : actions) {
    const QString text = withoutMarks(action->text());
    if (const QMenu* const below = action->menu<QMenu*>())
      addRows(rows, menu.isEmpty() ? text : menu + QStringLiteral(" › ") + text, below->actions());
    for (const QKeySequence& keys : action->shortcuts())
      rows.push_back({menu, text, keys.toString(QKeySequence::NativeText)});
  }
}

} // namespace

std::vector<ShortcutRow> shortcutsOf(const QWidget& window) {
  std::vector<ShortcutRow> rows;
  if (const auto* const main = qobject_cast<const QMainWindow*>(&window))
    addRows(rows, {}, main->menuWidget()->actions());
  for (const PlotNavigator::Key& key : PlotNavigator::keys())
    rows.push_back({sheetText("In plots"), key.effect, key.keys});
  rows.push_back(
      {sheetText("In plots"), sheetText("Measure in a box, or choose events by it"), sheetText("Alt+left button")});
  for (const PickEditor::Key& key : PickEditor::keys())
    rows.push_back({sheetText("On seismograms, while picking"), key.effect, key.keys});
  return rows;
}

void showHelpSheet(QWidget& window) {
  auto* const dialog = new QDialog(&window);
  dialog->setObjectName(QStringLiteral("helpSheet"));
  dialog->setAttribute(Qt::WA_DeleteOnClose);
  dialog->setWindowTitle(sheetText("Keys"));
  dialog->resize(kSheetSize);
  auto* const tree = new QTreeWidget;
  tree->setAccessibleName(sheetText("Keys and what they do"));
  tree->setHeaderLabels({sheetText("What"), sheetText("Keys")});
  tree->setRootIsDecorated(false);
  QTreeWidgetItem* heading = nullptr;
  for (const ShortcutRow& row : shortcutsOf(window)) {
    if (heading == nullptr || heading->text(0) != row.menu) {
      heading = new QTreeWidgetItem(tree, {row.menu});
      QFont bold = tree->font();
      bold.setBold(true);
      heading->setFont(0, bold);
    }
    new QTreeWidgetItem(heading, {row.text, row.keys});
  }
  tree->expandAll();
  tree->header()->setSectionResizeMode(0, QHeaderView::Stretch);
  tree->header()->setSectionResizeMode(1, QHeaderView::ResizeToContents);
  tree->header()->setStretchLastSection(false);
  auto* const column = new QVBoxLayout(dialog);
  column->addWidget(tree);
  dialog->open();
}

} // namespace xov::desk
