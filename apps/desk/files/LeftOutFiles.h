#pragma once

#include "apps/desk/files/FileEntry.h"

#include <QAbstractTableModel>

namespace xov::desk {

/// Files that could not be read, with the reasons.
class LeftOutFiles : public QAbstractTableModel {
  Q_OBJECT
public:
  explicit LeftOutFiles(QObject* parent = nullptr) : QAbstractTableModel(parent) {}

  void add(const QString& path, const QString& reason);
  void clear();

  int rowCount(const QModelIndex& parent = {}) const override;
  int columnCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role) const override;
  QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
  std::vector<LeftOutFile> files_;
};

} // namespace xov::desk
