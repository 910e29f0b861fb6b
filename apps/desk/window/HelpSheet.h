#pragma once

#include <QString>
#include <QWidget>

#include <vector>

namespace xov::desk {

/// A row of the sheet: what a key does.
struct ShortcutRow {
  QString menu;
  QString text;
  QString keys;

  bool operator==(const ShortcutRow&) const = default;
};

/// All shortcuts of the actions in the menus of a window, in the order of the menus, and what mouse and keys do in
/// plots.
std::vector<ShortcutRow> shortcutsOf(const QWidget& window);

/// Opens a sheet with all shortcuts.
void showHelpSheet(QWidget& window);

} // namespace xov::desk
