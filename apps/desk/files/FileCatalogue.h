#pragma once

#include "apps/desk/files/FileEntry.h"

#include <QAbstractTableModel>
#include <QHash>
#include <QRegularExpression>
#include <QSortFilterProxyModel>

#include <optional>

namespace xov::desk {

/// What was opened: a row for each channel of a seismogram file, and for each other file.
class FileCatalogue : public QAbstractTableModel {
  Q_OBJECT
public:
  enum Column : std::uint8_t {
    Kind,
    Network,
    Station,
    Location,
    Channel,
    Start,
    End,
    Rate,
    Samples,
    Gaps,
    Distance,
    What,
    File,
    kColumnCount
  };
  /// The value that rows are sorted by.
  static constexpr int kSortRole = Qt::UserRole;

  explicit FileCatalogue(QObject* parent = nullptr) : QAbstractTableModel(parent) {}

  /// Adds entries at the end; those of a file that is listed already take the place of what it was.
  void add(const FileEntries& entries);
  /// Takes rows away, whichever of them there are.
  void remove(std::vector<int> rows);
  void clear();

  const FileEntries& entries() const { return entries_; }
  /// How many rows a file has.
  int rowsOf(const QString& path) const { return rowsOf_.value(path); }

  int rowCount(const QModelIndex& parent = {}) const override;
  int columnCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role) const override;
  QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
  void removeFiles(const QHash<QString, int>& paths);

  FileEntries entries_;
  QHash<QString, int> rowsOf_; ///< how many each path has
};

/// The rows of a catalogue that a text and a kind select, sorted by the values of a column: those without a value
/// come last, whichever way.
class CatalogueFilter : public QSortFilterProxyModel {
  Q_OBJECT
public:
  explicit CatalogueFilter(FileCatalogue& catalogue, QObject* parent = nullptr);

  /// Rows hold each word of the text in one of their cells, whatever its case. A word with * or ? stands for a whole
  /// cell, or the codes of a channel joined by points.
  void setText(const QString& text);
  /// Nothing: all kinds.
  void setKind(std::optional<FileKind> kind);

  const FileEntry& entryAt(const QModelIndex& index) const;

protected:
  bool filterAcceptsRow(int row, const QModelIndex& parent) const override;
  bool lessThan(const QModelIndex& left, const QModelIndex& right) const override;

private:
  FileCatalogue& catalogue_;
  std::vector<QRegularExpression> words_;
  std::optional<FileKind> kind_;
};

} // namespace xov::desk
