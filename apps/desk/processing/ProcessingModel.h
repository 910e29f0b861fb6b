#pragma once

#include "apps/desk/processing/ProcessingSteps.h"

#include <QAbstractTableModel>

namespace xov::desk {

/// A list of steps as a table: a box that switches a step off, its name, and its value, which may be written over.
/// What the user does is asked for by wished(); the list changes when it is set.
class ProcessingModel : public QAbstractTableModel {
  Q_OBJECT
public:
  enum Column : std::uint8_t { Step, Value, kColumnCount };

  explicit ProcessingModel(QObject* parent = nullptr) : QAbstractTableModel(parent) {}

  const ProcessingList& steps() const { return steps_; }
  void setSteps(const ProcessingList& steps);

  int rowCount(const QModelIndex& parent = {}) const override;
  int columnCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role) const override;
  QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
  Qt::ItemFlags flags(const QModelIndex& index) const override;
  bool setData(const QModelIndex& index, const QVariant& value, int role) override;

Q_SIGNALS:
  /// The user wants another list; `what` names the change.
  void wished(const xov::desk::ProcessingList& steps, const QString& what);
  /// The user wrote a value that is none.
  void refused(const QString& problem);

private:
  ProcessingList steps_;
};

} // namespace xov::desk
