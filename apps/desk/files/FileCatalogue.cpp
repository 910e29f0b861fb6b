#include "apps/desk/files/FileCatalogue.h"

#include <XOV_Graphics/base/FileName.h>
#include <XOV_Graphics/base/TimeText.h>
#include <algorithm>
#include <utility>

namespace xov::desk {

namespace {

struct Heading {
  const char* text;
  const char* tip;
};

constexpr Heading kHeadings[] = {
    {QT_TRANSLATE_NOOP("FileCatalogue", "Kind"), ""},
    {QT_TRANSLATE_NOOP("FileCatalogue", "Net"), QT_TRANSLATE_NOOP("FileCatalogue", "Network")},
    {QT_TRANSLATE_NOOP("FileCatalogue", "Station"), ""},
    {QT_TRANSLATE_NOOP("FileCatalogue", "Loc"), QT_TRANSLATE_NOOP("FileCatalogue", "Location")},
    {QT_TRANSLATE_NOOP("FileCatalogue", "Channel"), ""},
    {QT_TRANSLATE_NOOP("FileCatalogue", "Start"), QT_TRANSLATE_NOOP("FileCatalogue", "First sample, UTC")},
    {QT_TRANSLATE_NOOP("FileCatalogue", "End"), QT_TRANSLATE_NOOP("FileCatalogue", "Last sample, UTC")},
    {QT_TRANSLATE_NOOP("FileCatalogue", "Rate (Hz)"), ""},
    {QT_TRANSLATE_NOOP("FileCatalogue", "Samples"), ""},
    {QT_TRANSLATE_NOOP("FileCatalogue", "Gaps"), QT_TRANSLATE_NOOP("FileCatalogue", "Gaps and overlaps")},
    {QT_TRANSLATE_NOOP("FileCatalogue", "Distance (°)"), QT_TRANSLATE_NOOP("FileCatalogue", "From the event")},
    {QT_TRANSLATE_NOOP("FileCatalogue", "Holds"), ""},
    {QT_TRANSLATE_NOOP("FileCatalogue", "File"), ""},
};
static_assert(std::size(kHeadings) == FileCatalogue::kColumnCount);

constexpr int kRateDigits = 6;
constexpr int kDistanceDecimals = 2;

QString fileName(const QString& path) { return path.section(QLatin1Char('/'), -1); }

/// A byte of a name that is no text is shown as what stands for such.
QString shownName(const QString& name) { return isByteName(name) ? QString::fromUtf8(fileNameBytes(name)) : name; }

// A cell without a value has none to sort by.

QVariant timeValue(const QDateTime& time) { return time.isValid() ? QVariant(time) : QVariant(); }

QVariant valueOf(const FileEntry& entry, int column) {
  const ChannelOutline& channel = entry.channel;
  switch (column) {
  case FileCatalogue::Kind:
    return fileKindText(entry.kind);
  case FileCatalogue::Network:
  case FileCatalogue::Station:
  case FileCatalogue::Location:
  case FileCatalogue::Channel: {
    const QString& code = channel.codes[std::size_t(column - FileCatalogue::Network)];
    return code.isEmpty() ? QVariant() : QVariant(code);
  }
  case FileCatalogue::Start:
    return timeValue(channel.start);
  case FileCatalogue::End:
    return timeValue(channel.end);
  case FileCatalogue::Rate:
    return channel.rateHz > 0 ? QVariant(channel.rateHz) : QVariant();
  case FileCatalogue::Samples:
    return channel.sampleCount >= 0 ? QVariant(qlonglong(channel.sampleCount)) : QVariant();
  case FileCatalogue::Gaps:
    return channel.pieceCount > 0 ? QVariant(channel.pieceCount - 1) : QVariant();
  case FileCatalogue::Distance:
    return channel.distanceDeg ? QVariant(*channel.distanceDeg) : QVariant();
  case FileCatalogue::What:
    return entry.what;
  case FileCatalogue::File:
    return shownName(fileName(entry.path));
  default:
    return {};
  }
}

QString textOf(const FileEntry& entry, int column) {
  const QVariant value = valueOf(entry, column);
  if (value.typeId() == QMetaType::QDateTime) return utcText(value.toDateTime());
  if (column == FileCatalogue::Distance && value.isValid())
    return QString::number(value.toDouble(), 'f', kDistanceDecimals);
  if (value.typeId() == QMetaType::Double) return QString::number(value.toDouble(), 'g', kRateDigits);
  return value.toString();
}

bool isNumber(int column) { return column >= FileCatalogue::Rate && column <= FileCatalogue::Distance; }

bool precedes(const QVariant& left, const QVariant& right) {
  return QVariant::compare(left, right) == QPartialOrdering::Less;
}

} // namespace

void FileCatalogue::add(const FileEntries& entries) {
  if (entries.empty()) return;
  QHash<QString, int> known;
  for (const FileEntry& entry : entries) {
    if (const auto rows = rowsOf_.constFind(entry.path); rows != rowsOf_.cend()) known[entry.path] = *rows;
  }
  if (!known.isEmpty()) removeFiles(known);
  const int first = rowCount();
  beginInsertRows({}, first, first + int(entries.size()) - 1);
  entries_.insert(entries_.end(), entries.begin(), entries.end());
  for (const FileEntry& entry : entries)
    ++rowsOf_[entry.path];
  endInsertRows();
}

void FileCatalogue::removeFiles(const QHash<QString, int>& paths) {
  std::vector<int> rows;
  for (int row = 0; row < rowCount(); ++row) {
    if (paths.contains(entries_[std::size_t(row)].path)) rows.push_back(row);
  }
  remove(std::move(rows));
}

void FileCatalogue::remove(std::vector<int> rows) {
  std::ranges::sort(rows, std::greater<>());
  rows.erase(std::unique(rows.begin(), rows.end()), rows.end());
  for (auto last = rows.begin(); last != rows.end();) {
    if (*last < 0 || *last >= rowCount()) {
      ++last;
      continue;
    }
    auto first = last; // of rows that lie together
    while (std::next(first) != rows.end() && *std::next(first) == *first - 1 && *std::next(first) >= 0)
      ++first;
    beginRemoveRows({}, *first, *last);
    for (int row = *first; row <= *last; ++row) {
      const QString& path = entries_[std::size_t(row)].path;
      if (--rowsOf_[path] == 0) rowsOf_.remove(path);
    }
    entries_.erase(entries_.begin() + *first, entries_.begin() + *last + 1);
    endRemoveRows();
    last = std::next(first);
  }
}

void FileCatalogue::clear() {
  beginResetModel();
  entries_.clear();
  rowsOf_.clear();
  endResetModel();
}

int FileCatalogue::rowCount(const QModelIndex& parent) const { return parent.isValid() ? 0 : int(entries_.size()); }

int FileCatalogue::columnCount(const QModelIndex& parent) const { return parent.isValid() ? 0 : kColumnCount; }

QVariant FileCatalogue::data(const QModelIndex& index, int role) const {
  if (!index.isValid() || index.row() >= rowCount()) return {};
  const FileEntry& entry = entries_[std::size_t(index.row())];
  switch (role) {
  case Qt::DisplayRole:
    return textOf(entry, index.column());
  case Qt::ToolTipRole:
    return shownName(entry.path);
  case Qt::TextAlignmentRole:
    return isNumber(index.column()) ? QVariant(Qt::AlignRight | Qt::AlignVCenter) : QVariant();
  case kSortRole:
    return valueOf(entry, index.column());
  default:
    return {};
  }
}

QVariant FileCatalogue::headerData(int section, Qt::Orientation orientation, int role) const {
  if (orientation != Qt::Horizontal || section < 0 || section >= kColumnCount) return {};
  const Heading& heading = kHeadings[section];
  if (role == Qt::DisplayRole) return tr(heading.text);
  if (role == Qt::ToolTipRole && *heading.tip != '\0') return tr(heading.tip);
  return {};
}

CatalogueFilter::CatalogueFilter(FileCatalogue& catalogue, QObject* parent)
    : QSortFilterProxyModel(parent),
      catalogue_(catalogue) {
  setSourceModel(&catalogue);
}

void CatalogueFilter::setText(const QString& text) {
  words_.clear();
  static const QRegularExpression blanks(QStringLiteral("\\s+"));
  for (const QString& word : text.split(blanks, Qt::SkipEmptyParts)) {
    const bool isPattern = word.contains(QLatin1Char('*')) || word.contains(QLatin1Char('?'));
    // Of a pattern only * and ? mean something: a bracket that is being typed hides nothing.
    QString expression = QRegularExpression::escape(word);
    if (isPattern) {
      expression.replace(QStringLiteral("\\*"), QStringLiteral(".*"))
          .replace(QStringLiteral("\\?"), QStringLiteral("."));
      expression = QRegularExpression::anchoredPattern(expression);
    }
    words_.emplace_back(expression, QRegularExpression::CaseInsensitiveOption);
  }
  invalidateFilter();
}

void CatalogueFilter::setKind(std::optional<FileKind> kind) {
  kind_ = kind;
  invalidateFilter();
}

const FileEntry& CatalogueFilter::entryAt(const QModelIndex& index) const {
  return catalogue_.entries()[std::size_t(mapToSource(index).row())];
}

bool CatalogueFilter::filterAcceptsRow(int row, const QModelIndex& /*parent*/) const {
  const FileEntry& entry = catalogue_.entries()[std::size_t(row)];
  if (kind_ && entry.kind != *kind_) return false;
  if (words_.empty()) return true;
  QStringList cells = {channelName(entry.channel.codes), shownName(entry.path)};
  for (int column = 0; column < FileCatalogue::kColumnCount; ++column)
    cells.append(textOf(entry, column));
  return std::ranges::all_of(words_, [&](const QRegularExpression& word) {
    return std::ranges::any_of(cells, [&](const QString& cell) { return word.match(cell).hasMatch(); });
  });
}

bool CatalogueFilter::lessThan(const QModelIndex& left, const QModelIndex& right) const {
  const QVariant leftValue = left.data(FileCatalogue::kSortRole);
  const QVariant rightValue = right.data(FileCatalogue::kSortRole);
  if (leftValue.isValid() != rightValue.isValid()) return leftValue.isValid() == (sortOrder() == Qt::AscendingOrder);
  if (!leftValue.isValid()) return false;
  return precedes(leftValue, rightValue);
}

} // namespace xov::desk
