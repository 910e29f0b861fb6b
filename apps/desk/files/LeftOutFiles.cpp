#include "apps/desk/files/LeftOutFiles.h"

namespace xov::desk {

void LeftOutFiles::add(const QString& path, const QString& reason) {
  // The table has the file in a column of its own.
  const QString name = path + QStringLiteral(": ");
  const QString rest = reason.startsWith(name) ? reason.mid(name.size()) : reason;
  beginInsertRows({}, rowCount(), rowCount());
  files_.push_back({path, rest});
  endInsertRows();
}

void LeftOutFiles::clear() {
  beginResetModel();
  files_.clear();
  endResetModel();
}

int LeftOutFiles::rowCount(const QModelIndex& parent) const { return parent.isValid() ? 0 : int(files_.size()); }

int LeftOutFiles::columnCount(const QModelIndex& parent) const { return parent.isValid() ? 0 : 2; }

QVariant LeftOutFiles::data(const QModelIndex& index, int role) const {
  if (!index.isValid() || index.row() >= rowCount()) return {};
  const LeftOutFile& file = files_[std::size_t(index.row())];
  if (role == Qt::ToolTipRole) return index.column() == 0 ? file.path : file.reason;
  if (role != Qt::DisplayRole) return {};
  return index.column() == 0 ? file.path.section(QLatin1Char('/'), -1) : file.reason;
}

QVariant LeftOutFiles::headerData(int section, Qt::Orientation orientation, int role) const {
  if (orientation != Qt::Horizontal || role != Qt::DisplayRole) return {};
  return section == 0 ? tr("Left out") : tr("Reason");
}

} // namespace xov::desk
