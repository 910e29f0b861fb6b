#include "apps/desk/picks/PickTableModel.h"

#include <XOV_Graphics/base/Numbers.h>

namespace xov::desk {

namespace {

constexpr int kShownDigits = 3;

QString secondsText(const std::optional<double>& seconds) {
  return seconds ? QString::number(*seconds, 'g', QLocale::FloatingPointShortest) : QString();
}

bool takeSeconds(const QString& text, std::optional<double>& seconds) {
  if (text.isEmpty()) {
    seconds.reset();
    return true;
  }
  const std::optional<double> number = toNumber<double>(text.toUtf8());
  if (!number || !(*number >= 0 && *number <= kLargestPickUncertainty)) return false;
  seconds = number;
  return true;
}

template <typename Value>
bool takeWord(const std::optional<Value>& read, Value& value) {
  if (read) value = *read;
  return read.has_value();
}

bool takeText(Pick& pick, int column, const QString& text) {
  switch (column) {
  case PickTableModel::Time:
    return takeWord(parseUtcNanoseconds(text), pick.time);
  case PickTableModel::Phase:
    pick.phase = text;
    return !text.isEmpty();
  case PickTableModel::Lower:
    return takeSeconds(text, pick.lowerSeconds);
  case PickTableModel::Upper:
    return takeSeconds(text, pick.upperSeconds);
  case PickTableModel::Polarity:
    return takeWord(pickPolarity(text), pick.polarity);
  case PickTableModel::Onset:
    return takeWord(pickOnset(text), pick.onset);
  case PickTableModel::Mode:
    return takeWord(pickMode(text), pick.mode);
  case PickTableModel::Comment:
    pick.comment = text;
    return true;
  default:
    return false;
  }
}

QString textOf(const Pick& pick, int column) {
  switch (column) {
  case PickTableModel::Time:
    return utcText(pick.time);
  case PickTableModel::Phase:
    return pick.phase;
  case PickTableModel::Channel:
    return channelName(pick.channel);
  case PickTableModel::Lower:
    return secondsText(pick.lowerSeconds);
  case PickTableModel::Upper:
    return secondsText(pick.upperSeconds);
  case PickTableModel::Polarity:
    return pickWord(pick.polarity);
  case PickTableModel::Onset:
    return pickWord(pick.onset);
  case PickTableModel::Mode:
    return pickWord(pick.mode);
  case PickTableModel::Comment:
    return pick.comment;
  default:
    return {};
  }
}

} // namespace

PickTableModel::PickTableModel(PickDocument& document, QObject* parent)
    : QAbstractTableModel(parent),
      document_(&document) {
  const auto renew = [this] {
    beginResetModel();
    endResetModel();
  };
  connect(&document, &PickDocument::wasReset, this, renew);
  connect(&document, &PickDocument::changed, this, [this, renew](const PickChange& change) {
    if (change.before && change.after) {
      Q_EMIT dataChanged(index(int(change.row), 0), index(int(change.row), ColumnCount - 1));
    } else {
      renew();
    }
  });
}

std::optional<Pick> PickTableModel::pickAt(int row) const {
  if (row < 0 || !document_ || std::size_t(row) >= document_->picks().size()) return {};
  return document_->picks()[std::size_t(row)];
}

int PickTableModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() || !document_ ? 0 : int(document_->picks().size());
}

int PickTableModel::columnCount(const QModelIndex& parent) const { return parent.isValid() ? 0 : ColumnCount; }

QVariant PickTableModel::data(const QModelIndex& index, int role) const {
  const std::optional<Pick> pick = pickAt(index.row());
  if (!pick || (role != Qt::DisplayRole && role != Qt::EditRole)) return {};
  const bool isSeconds = index.column() == Lower || index.column() == Upper;
  const QString text = textOf(*pick, index.column());
  return isSeconds && role == Qt::DisplayRole && !text.isEmpty()
             ? QString::number(text.toDouble(), 'g', kShownDigits) // what a pointer at a pixel says has many more
             : text;
}

QVariant PickTableModel::headerData(int section, Qt::Orientation orientation, int role) const {
  if (orientation != Qt::Horizontal || role != Qt::DisplayRole) return {};
  const QString titles[] = {tr("Time (UTC)"), tr("Phase"), tr("Channel"), tr("Early (s)"), tr("Late (s)"),
                            tr("Polarity"),   tr("Onset"), tr("Mode"),    tr("Comment")};
  return section >= 0 && section < ColumnCount ? titles[section] : QVariant();
}

Qt::ItemFlags PickTableModel::flags(const QModelIndex& index) const {
  const Qt::ItemFlags flags = QAbstractTableModel::flags(index);
  return index.isValid() && index.column() != Channel ? flags | Qt::ItemIsEditable : flags;
}

bool PickTableModel::setData(const QModelIndex& index, const QVariant& value, int role) {
  std::optional<Pick> pick = pickAt(index.row());
  if (!pick || role != Qt::EditRole || !takeText(*pick, index.column(), value.toString().trimmed())) return false;
  document_->change(pick->id, *pick);
  return true;
}

} // namespace xov::desk
