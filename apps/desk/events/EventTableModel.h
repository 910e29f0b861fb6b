#pragma once

#include <QAbstractTableModel>

#include <XOV_Graphics/seismic/Hypocentre.h>

namespace xov::desk {

/// Events as rows of a table.
class EventTableModel : public QAbstractTableModel {
  Q_OBJECT
public:
  enum Column : std::uint8_t { Time, Latitude, Longitude, Depth, Magnitude, Type, Place, kColumnCount };
  /// The value that rows are sorted by.
  static constexpr int kSortRole = Qt::UserRole;

  explicit EventTableModel(QObject* parent = nullptr) : QAbstractTableModel(parent) {}

  void setEvents(HypocentreArray events);
  const HypocentreArray& events() const { return events_; }

  int rowCount(const QModelIndex& parent = {}) const override;
  int columnCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role) const override;
  QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
  HypocentreArray events_;
};

} // namespace xov::desk
