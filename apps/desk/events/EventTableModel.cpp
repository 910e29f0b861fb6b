#include "apps/desk/events/EventTableModel.h"

#include <QLocale>

#include <XOV_Graphics/base/TimeText.h>
#include <algorithm>

namespace xov::desk {

namespace {

bool isSet(float value) { return value != kUndefinedValue; }

QString numberText(float value) {
  return isSet(value) ? QString::number(double(value), 'g', 7) : QString(); // digits that single precision has
}

// What the catalogue calls the magnitude that stands for the event.
QString typeOf(const Hypocentre& event) {
  const auto& magnitudes = event.values().magnitudes;
  const auto found = std::ranges::find(magnitudes, event.magnitude(), &EventMagnitude::value);
  return found == magnitudes.end() ? QString() : found->type;
}

float numberOf(const Hypocentre& event, int column) {
  switch (column) {
  case EventTableModel::Latitude:
    return event.values().latitudeDeg;
  case EventTableModel::Longitude:
    return event.values().longitudeDeg;
  case EventTableModel::Depth:
    return event.values().depthKm;
  case EventTableModel::Magnitude:
    return event.magnitude();
  default:
    return kUndefinedValue;
  }
}

QString eventText(const Hypocentre& event, int column) {
  switch (column) {
  case EventTableModel::Time:
    return utcText(event.oDate());
  case EventTableModel::Type:
    return typeOf(event);
  case EventTableModel::Place:
    return event.values().name;
  default:
    return numberText(numberOf(event, column));
  }
}

QVariant sortValue(const Hypocentre& event, int column) {
  switch (column) {
  case EventTableModel::Time:
    return event.oDate();
  case EventTableModel::Type:
  case EventTableModel::Place:
    return eventText(event, column);
  default:
    return numberOf(event, column);
  }
}

} // namespace

void EventTableModel::setEvents(HypocentreArray events) {
  beginResetModel();
  events_ = std::move(events);
  endResetModel();
}

int EventTableModel::rowCount(const QModelIndex& parent) const { return parent.isValid() ? 0 : int(events_.size()); }

int EventTableModel::columnCount(const QModelIndex& parent) const { return parent.isValid() ? 0 : kColumnCount; }

QVariant EventTableModel::data(const QModelIndex& index, int role) const {
  if (!index.isValid()) return {};
  const Hypocentre& event = *events_[std::size_t(index.row())];
  const int column = index.column();
  if (role == kSortRole) return sortValue(event, column);
  if (role == Qt::DisplayRole || role == Qt::ToolTipRole) return eventText(event, column);
  const bool isNumber = column >= Latitude && column <= Magnitude;
  if (role == Qt::TextAlignmentRole && isNumber) return int(Qt::AlignRight | Qt::AlignVCenter);
  return {};
}

QVariant EventTableModel::headerData(int section, Qt::Orientation orientation, int role) const {
  if (orientation != Qt::Horizontal || role != Qt::DisplayRole) return {};
  switch (section) {
  case Time:
    return tr("Origin time (UTC)");
  case Latitude:
    return tr("Latitude");
  case Longitude:
    return tr("Longitude");
  case Depth:
    return tr("Depth (km)");
  case Magnitude:
    return tr("Magnitude");
  case Type:
    return tr("Type");
  case Place:
    return tr("Place");
  default:
    return {};
  }
}

} // namespace xov::desk
