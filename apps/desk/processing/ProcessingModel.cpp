#include "apps/desk/processing/ProcessingModel.h"

namespace xov::desk {

void ProcessingModel::setSteps(const ProcessingList& steps) {
  if (steps == steps_) return;
  if (steps.size() == steps_.size()) { // what is selected stays
    steps_ = steps;
    if (!steps_.empty()) Q_EMIT dataChanged(index(0, 0), index(rowCount() - 1, kColumnCount - 1));
    return;
  }
  beginResetModel();
  steps_ = steps;
  endResetModel();
}

int ProcessingModel::rowCount(const QModelIndex& parent) const { return parent.isValid() ? 0 : int(steps_.size()); }

int ProcessingModel::columnCount(const QModelIndex& parent) const { return parent.isValid() ? 0 : kColumnCount; }

QVariant ProcessingModel::data(const QModelIndex& index, int role) const {
  if (!index.isValid() || index.row() >= rowCount()) return {};
  const ProcessingStep& step = steps_[std::size_t(index.row())];
  if (role == Qt::CheckStateRole && index.column() == Step) return step.isOn ? Qt::Checked : Qt::Unchecked;
  if (role == Qt::ToolTipRole) return QString(step.option + QLatin1Char(' ') + step.value).trimmed();
  if (role != Qt::DisplayRole && role != Qt::EditRole) return {};
  if (index.column() == Value) return step.value;
  const StepKind* const kind = stepKindOf(step.option);
  return kind == nullptr ? step.option : stepTitle(*kind);
}

QVariant ProcessingModel::headerData(int section, Qt::Orientation orientation, int role) const {
  if (orientation != Qt::Horizontal || role != Qt::DisplayRole) return {};
  return section == Step ? tr("Step") : tr("Value");
}

Qt::ItemFlags ProcessingModel::flags(const QModelIndex& index) const {
  if (!index.isValid() || index.row() >= rowCount()) return {};
  constexpr Qt::ItemFlags kPlain = Qt::ItemIsEnabled | Qt::ItemIsSelectable;
  if (index.column() == Step) return kPlain | Qt::ItemIsUserCheckable;
  const StepKind* const kind = stepKindOf(steps_[std::size_t(index.row())].option);
  return kind != nullptr && kind->usual != nullptr ? kPlain | Qt::ItemIsEditable : kPlain;
}

bool ProcessingModel::setData(const QModelIndex& index, const QVariant& value, int role) {
  if (!index.isValid() || index.row() >= rowCount()) return false;
  ProcessingList changed = steps_;
  ProcessingStep& step = changed[std::size_t(index.row())];
  const bool isSwitch = role == Qt::CheckStateRole && index.column() == Step;
  if (!isSwitch && (role != Qt::EditRole || index.column() != Value)) return false;
  if (isSwitch) {
    step.isOn = value.toInt() == Qt::Checked;
  } else {
    step.value = value.toString().simplified();
    if (const QString problem = problemOf(step); !problem.isEmpty()) {
      Q_EMIT refused(problem);
      return false;
    }
  }
  if (changed == steps_) return true;
  const QString title = data(index.siblingAtColumn(Step), Qt::DisplayRole).toString();
  if (!isSwitch)
    Q_EMIT wished(changed, tr("Change of %1").arg(title));
  else
    Q_EMIT wished(changed, step.isOn ? tr("%1 on").arg(title) : tr("%1 off").arg(title));
  return true;
}

} // namespace xov::desk
