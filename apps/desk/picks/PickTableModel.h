#pragma once

#include <QAbstractTableModel>
#include <QPointer>

#include <XOV_Graphics/seismic/picks/PickDocument.h>

namespace xov::desk {

/// The picks of a document as a table whose cells change them.
class PickTableModel : public QAbstractTableModel {
  Q_OBJECT
public:
  enum Column { Time, Phase, Channel, Lower, Upper, Polarity, Onset, Mode, Comment, ColumnCount };

  /// Empty when the document has gone.
  explicit PickTableModel(PickDocument& document, QObject* parent = nullptr);

  /// The pick of a row, as a copy; nothing where there is no such row.
  std::optional<Pick> pickAt(int row) const;

  int rowCount(const QModelIndex& parent = {}) const override;
  int columnCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
  QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;
  Qt::ItemFlags flags(const QModelIndex& index) const override;
  /// Times as QuakeML writes them, uncertainties in seconds, polarity, onset and mode in the words of QuakeML; false
  /// for anything else, which changes nothing.
  bool setData(const QModelIndex& index, const QVariant& value, int role = Qt::EditRole) override;

private:
  QPointer<PickDocument> document_;
};

} // namespace xov::desk
