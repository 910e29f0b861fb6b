#pragma once

#include "apps/desk/processing/ProcessingModel.h"

#include <QWidget>

class QLabel;
class QTableView;
class QToolButton;

namespace xov::desk {

/// Shows the steps of a pane, to be added, changed, moved, switched off and taken away, and presets of them. It
/// changes nothing itself: what the user wants goes to who has the pane, and comes back by showSteps().
class ProcessingPanel : public QWidget {
  Q_OBJECT
public:
  explicit ProcessingPanel(QWidget* parent = nullptr);

  /// Shows these steps; the panel is for nothing where there is no pane that takes any.
  void showSteps(const ProcessingList& steps, bool isRaw);
  void showNothing();

  ProcessingModel& model() { return model_; }
  QTableView& table() { return *table_; }

  // What the buttons do.

  /// Adds a step with its usual value behind the one that is selected, or at the end. Where it takes a file, asks for
  /// one first.
  void addStep(const StepKind& kind);
  void removeStep();
  /// Moves the selected step up (-1) or down (1).
  void moveStep(int by);
  /// Reads a preset in place of the steps; says what is wrong with its lines.
  void openPreset(const QString& path);
  void savePreset(const QString& path);

Q_SIGNALS:
  void stepsWished(const xov::desk::ProcessingList& steps, const QString& what);
  void rawWished(bool isRaw);

private:
  void buildButtons();
  void buildMenus();
  QToolButton* button(const QString& name, const QString& text, const QString& tip);
  void insertStep(const ProcessingStep& step);
  int selectedRow() const;
  void say(const QString& text);
  void enableButtons();

  ProcessingModel model_;
  QTableView* table_;
  QLabel* message_;
  QToolButton* add_;
  QToolButton* remove_;
  QToolButton* up_;
  QToolButton* down_;
  QToolButton* raw_;
  QToolButton* presets_;
};

} // namespace xov::desk
