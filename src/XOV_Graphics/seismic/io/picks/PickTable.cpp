#include "XOV_Graphics/seismic/io/picks/PickTable.h"

#include "XOV_Graphics/base/Fields.h"
#include "XOV_Graphics/base/LeftOut.h"
#include "XOV_Graphics/base/Numbers.h"
#include "XOV_Graphics/base/TextLines.h"
#include "XOV_Graphics/seismic/io/picks/PickDraft.h"

#include <QLocale>

#include <algorithm>
#include <array>

namespace xov {

namespace {

// In the order in which they are written.
enum class PickColumn : std::uint8_t {
  Time,
  Phase,
  Network,
  Station,
  Location,
  Channel,
  Lower,
  Upper,
  Polarity,
  Onset,
  Mode,
  Comment,
  Id,
  Uncertainty, ///< of both sides; read only
  Count,
};

constexpr auto kPickColumnCount = std::size_t(PickColumn::Count);
constexpr char kHeading[] = "time,phase,network,station,location,channel,lower_s,upper_s,polarity,onset,mode,"
                            "comment,id";
constexpr char kPickSeparators[] = {',', ';', '\t'};

struct PickColumnName {
  const char* name; ///< letters and digits only, in lower case
  PickColumn column;
};

constexpr PickColumnName kPickColumnNames[] = {
    {"time", PickColumn::Time},
    {"timeutc", PickColumn::Time},
    {"picktime", PickColumn::Time},
    {"phase", PickColumn::Phase},
    {"phasehint", PickColumn::Phase},
    {"network", PickColumn::Network},
    {"net", PickColumn::Network},
    {"station", PickColumn::Station},
    {"sta", PickColumn::Station},
    {"location", PickColumn::Location},
    {"loc", PickColumn::Location},
    {"channel", PickColumn::Channel},
    {"chan", PickColumn::Channel},
    {"cha", PickColumn::Channel},
    {"lowers", PickColumn::Lower},
    {"lower", PickColumn::Lower},
    {"uppers", PickColumn::Upper},
    {"upper", PickColumn::Upper},
    {"polarity", PickColumn::Polarity},
    {"onset", PickColumn::Onset},
    {"mode", PickColumn::Mode},
    {"comment", PickColumn::Comment},
    {"id", PickColumn::Id},
    {"pickid", PickColumn::Id},
    {"uncertainty", PickColumn::Uncertainty},
    {"uncertaintys", PickColumn::Uncertainty},
};

/// Which field of a row is which column.
class PickLayout {
public:
  /// That of the tables that are written here.
  PickLayout() {
    places_.fill(-1);
    for (std::size_t i = 0; i < std::size_t(PickColumn::Uncertainty); ++i)
      places_[i] = int(i);
  }

  /// The layout that a row of names gives; nothing when it does not name a time, and a station or a phase.
  static std::optional<PickLayout> named(QByteArrayView row) {
    for (const char separator : kPickSeparators) {
      PickLayout layout;
      layout.separator_ = separator;
      layout.places_.fill(-1);
      layout.takeNames(row);
      if (layout.has(PickColumn::Time) && (layout.has(PickColumn::Station) || layout.has(PickColumn::Phase)))
        return layout;
    }
    return {};
  }

  bool has(PickColumn column) const { return places_[std::size_t(column)] >= 0; }
  std::vector<QByteArrayView> fields(QByteArrayView row) const { return fieldsOf(row, separator_); }

  QString text(const std::vector<QByteArrayView>& fields, PickColumn column) const {
    const int place = places_[std::size_t(column)];
    return place < 0 || std::size_t(place) >= fields.size() ? QString() : fieldText(fields[std::size_t(place)]);
  }

private:
  void takeNames(QByteArrayView row) {
    int place = 0;
    for (const QByteArrayView field : fieldsOf(row, separator_)) {
      const QString key = headingKey(field);
      const auto* const known = std::ranges::find_if(
          kPickColumnNames, [&](const PickColumnName& name) { return key == QLatin1String(name.name); });
      if (known != std::end(kPickColumnNames) && !has(known->column)) places_[std::size_t(known->column)] = place;
      ++place;
    }
  }

  char separator_ = kPickSeparators[0];
  std::array<int, kPickColumnCount> places_{};
};

PickDraft draftOf(const PickLayout& layout, QByteArrayView row) {
  const std::vector<QByteArrayView> fields = layout.fields(row);
  const auto text = [&](PickColumn column) { return layout.text(fields, column); };
  PickDraft draft;
  draft.takeTime(text(PickColumn::Time));
  draft.pick.phase = text(PickColumn::Phase);
  draft.pick.channel = {text(PickColumn::Network), text(PickColumn::Station), text(PickColumn::Location),
                        text(PickColumn::Channel)};
  for (std::optional<double> Pick::*side : {&Pick::lowerSeconds, &Pick::upperSeconds})
    draft.takeUncertainty(text(PickColumn::Uncertainty), side);
  draft.takeUncertainty(text(PickColumn::Lower), &Pick::lowerSeconds);
  draft.takeUncertainty(text(PickColumn::Upper), &Pick::upperSeconds);
  draft.takePolarity(text(PickColumn::Polarity));
  draft.takeOnset(text(PickColumn::Onset));
  draft.takeMode(text(PickColumn::Mode));
  draft.pick.comment = text(PickColumn::Comment);
  draft.pick.id = text(PickColumn::Id);
  return draft;
}

void appendText(QByteArray& row, QString text) {
  for (QChar& character : text)
    if (character < QLatin1Char(' ')) character = QLatin1Char(' ');
  const bool isPlain =
      std::ranges::none_of(text, [](QChar c) { return c == QLatin1Char(',') || c == QLatin1Char('"'); });
  if (isPlain && text == text.trimmed()) {
    row += text.toUtf8();
  } else {
    row += '"' + text.replace(QLatin1Char('"'), QStringLiteral("\"\"")).toUtf8() + '"';
  }
}

QString secondsText(const std::optional<double>& seconds) {
  return seconds ? QString::number(*seconds, 'g', QLocale::FloatingPointShortest) : QString();
}

} // namespace

bool isPickTable(QByteArrayView head) {
  const std::optional<QByteArrayView> row = TextLines(withoutMark(head)).next();
  return row && PickLayout::named(*row);
}

Result<PickFile> readPickTable(QByteArrayView text, const QString& name) {
  TextLines lines(withoutMark(text));
  const std::optional<QByteArrayView> names = lines.next();
  const std::optional<PickLayout> layout = names ? PickLayout::named(*names) : std::nullopt;
  if (!layout) return Error{name + ": line 1: expected names of columns, such as " + QLatin1String(kHeading)};
  PickList picks(name);
  while (const std::optional<QByteArrayView> row = lines.next()) {
    if (!withoutBlanks(*row).isEmpty()) picks.add(draftOf(*layout, *row), lines.number());
  }
  return picks.result();
}

QByteArray pickRow(const Pick& pick) {
  const auto& [network, station, location, channel] = pick.channel;
  QByteArray row = utcText(pick.time).toLatin1();
  for (const QString& text : {pick.phase, network, station, location, channel, secondsText(pick.lowerSeconds),
                              secondsText(pick.upperSeconds), pickWord(pick.polarity), pickWord(pick.onset),
                              pickWord(pick.mode), pick.comment, pick.id}) {
    row += ',';
    appendText(row, text);
  }
  return row;
}

std::optional<Pick> pickOfRow(QByteArrayView row) {
  PickDraft draft = draftOf(PickLayout(), row);
  if (!draft.problem.isEmpty()) return {};
  return std::move(draft.pick);
}

QByteArray pickTable(const PickArray& picks) {
  QByteArray table = kHeading;
  table += '\n';
  for (const Pick& pick : picks)
    table += pickRow(pick) + '\n';
  return table;
}

} // namespace xov
