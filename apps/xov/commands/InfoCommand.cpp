#include "apps/xov/commands/InfoCommand.h"

#include "apps/xov/inputs/InputFiles.h"
#include "apps/xov/terminal/ProgramName.h"

#include <QCoreApplication>
#include <QDateTime>

#include <XOV_Graphics/base/InputFile.h>
#include <XOV_Graphics/base/TimeText.h>
#include <XOV_Graphics/seismic/Picks.h>
#include <XOV_Graphics/seismic/io/events/EventReaders.h>
#include <XOV_Graphics/seismic/prepare/RecordCopy.h>
#include <XOV_Graphics/seismic/prepare/RecordPicks.h>
#include <XOV_Graphics/seismic/prepare/TimeAxis.h>
#include <XOV_Graphics/seismic/realtime/seedlink/SeedLinkStreams.h>
#include <algorithm>
#include <charconv>
#include <cmath>
#include <span>

namespace xov::cli {

namespace {

constexpr double kMillisecondsPerSecond = 1000;
constexpr double kLongestOffset = 1e11; // seconds; some three thousand years
constexpr int kSecondsDecimals = 3;
constexpr int kDegreesDecimals = 2;
constexpr int kPlaceDecimals = 4; // of degrees; some ten metres
constexpr int kMeanDigits = 6;
constexpr int kArrivalDecimals = 2; // of seconds; other programs' times differ by more
constexpr int kRayParameterDecimals = 3;
constexpr int kAngleDecimals = 1;

struct Heading {
  const char* text;
  TextTable::Align align;
};

using enum TextTable::Align;

constexpr Heading kHeadings[] = {
    {"net", Left},    {"sta", Left},    {"loc", Left},       {"chan", Left},  {"start", Left},
    {"npts", Right},  {"delta", Right}, {"duration", Right}, {"min", Right},  {"max", Right},
    {"dist", Right},  {"az", Right},    {"mean", Right},     {"lat", Right},  {"lon", Right},
    {"evlat", Right}, {"evlon", Right}, {"evdepth", Right},  {"picks", Left}, {"file", Left},
};

constexpr Heading kEventHeadings[] = {
    {"time", Left}, {"lat", Right}, {"lon", Right}, {"depth", Right},
    {"mag", Right}, {"type", Left}, {"name", Left}, {"file", Left},
};

constexpr Heading kStreamHeadings[] = {
    {"net", Left}, {"sta", Left}, {"loc", Left}, {"chan", Left}, {"start", Left}, {"end", Left},
};
constexpr double kLongestAnswerSeconds = 60;

constexpr Heading kArrivalHeadings[] = {
    {"net", Left},      {"sta", Left},    {"loc", Left},  {"chan", Left},     {"dist", Right},
    {"evdepth", Right}, {"phase", Left},  {"time", Left}, {"seconds", Right}, {"rayp", Right},
    {"takeoff", Right}, {"incid", Right}, {"file", Left},
};

TextTable tableWith(std::span<const Heading> headings) {
  TextTable table;
  for (const Heading& heading : headings)
    table.addColumn(QString::fromLatin1(heading.text), heading.align);
  return table;
}

constexpr float kSmallestPlain = 1e-4F; // smaller and larger numbers are written with an exponent
constexpr float kLargestPlain = 1e9F;

// The fewest digits that give the same float back: 0.01, not 0.0099999998.
QString shortest(float value) {
  if (!isDefined(value)) return {};
  const float size = std::abs(value);
  const bool plain = value == 0 || (size >= kSmallestPlain && size < kLargestPlain);
  char digits[64];
  const auto end = std::to_chars(std::begin(digits), std::end(digits), value,
                                 plain ? std::chars_format::fixed : std::chars_format::scientific);
  return QString::fromLatin1(digits, end.ptr - digits);
}

QString fixed(double value, int decimals) {
  return isDefined(value) ? QString::number(value, 'f', decimals) : QString();
}

// UTC of a time on the record's axis.
QString momentText(const SeismogramRecord& record, double seconds) {
  const QDateTime reference = referenceTimeOf(record);
  if (!reference.isValid() || !(std::abs(seconds) < kLongestOffset)) return {};
  return utcText(reference.addMSecs(std::llround(seconds * kMillisecondsPerSecond)));
}

// From the first sample to the last, in double precision: a day does not fit single precision to the millisecond.
double durationSeconds(const SeismogramRecord& record, std::int64_t samples) {
  const double interval = intervalSeconds(record);
  return isDefined(interval) ? interval * double(std::max<std::int64_t>(samples - 1, 0)) : interval;
}

// A coordinate in double precision has more digits than the place of an instrument.
QString degrees(double value) { return isDefined(value) ? QString::number(value, 'f', kPlaceDecimals) : QString(); }

QString meanText(const SampleTally& samples) {
  return samples.hasFinite() ? QString::number(samples.mean(), 'g', kMeanDigits) : QString();
}

QString pickName(int key) {
  if (key == kFirstArrivalKey) return QStringLiteral("a");
  if (key == kEndOfSignalKey) return QStringLiteral("f");
  return QStringLiteral("t%1").arg(key);
}

QString pickText(const SeismogramRecord& record, int key) {
  const QString label = record.pickLabelWithKey(key);
  const QString time = pickName(key) + QLatin1Char('=') + shortest(record.timePickKey(key));
  return label.isEmpty() || label == QLatin1String(kUndefinedLabel) ? time : time + QLatin1Char('(') + label + ')';
}

// A cell is one word, so that the table can be taken apart at its blanks.
QString word(QString text) { return text.replace(QLatin1Char(' '), QLatin1Char('_')); }

} // namespace

QString picksText(const SeismogramRecord& record) {
  QStringList picks;
  if (isDefined(record.originTimeOffset())) picks.append(QStringLiteral("o=") + shortest(record.originTimeOffset()));
  for (int key = 0; key <= kEndOfSignalKey; ++key) {
    if (isDefined(record.timePickKey(key))) picks.append(pickText(record, key));
  }
  return word(picks.join(QLatin1Char(',')));
}

QStringList infoCells(const SeismogramSummary& summary) {
  const SeismogramRecord& record = *summary.record;
  const SampleTally& samples = summary.samples;
  const SacFooter precise = preciseValuesOf(record);
  return {word(record.knetwk()),
          word(record.kstnm()),
          word(record.khole()),
          word(record.kcmpnm()),
          momentText(record, double(record.b())),
          QString::number(samples.count()),
          shortest(record.delta()),
          fixed(durationSeconds(record, samples.count()), kSecondsDecimals),
          samples.hasFinite() ? shortest(samples.min()) : QString(),
          samples.hasFinite() ? shortest(samples.max()) : QString(),
          fixed(double(record.gcarc()), kDegreesDecimals),
          fixed(double(record.azimuth()), kDegreesDecimals),
          meanText(samples),
          degrees(precise.stla),
          degrees(precise.stlo),
          degrees(precise.evla),
          degrees(precise.evlo),
          shortest(record.evdp()),
          picksText(record)};
}

QStringList eventCells(const Hypocentre& event) {
  const HypocentreValues& values = event.values();
  const float magnitude = event.magnitude();
  const auto first = std::ranges::find(values.magnitudes, magnitude, &EventMagnitude::value);
  return {utcText(event.oDate()),
          degrees(double(values.latitudeDeg)),
          degrees(double(values.longitudeDeg)),
          shortest(values.depthKm),
          shortest(magnitude),
          first == values.magnitudes.end() ? QString() : word(first->type),
          word(values.name)};
}

QStringList arrivalCells(const SeismogramRecord& record, const PhaseArrival& arrival) {
  const std::optional<double> origin = originSeconds(record);
  return {word(record.knetwk()),
          word(record.kstnm()),
          word(record.khole()),
          word(record.kcmpnm()),
          fixed(double(record.gcarc()), kDegreesDecimals),
          shortest(record.evdp()),
          phaseName(arrival.phase),
          origin ? momentText(record, *origin + arrival.seconds) : QString(),
          fixed(arrival.seconds, kArrivalDecimals),
          fixed(arrival.rayParameter, kRayParameterDecimals),
          fixed(arrival.takeOffDeg, kAngleDecimals),
          fixed(arrival.incidenceDeg, kAngleDecimals)};
}

TextTable infoTable() { return tableWith(kHeadings); }

TextTable eventTable() { return tableWith(kEventHeadings); }

TextTable arrivalTable() { return tableWith(kArrivalHeadings); }

void InfoCommand::addOptions(const Options& options) {
  inputs_.allowNone();
  inputs_.addOptions(options, "FILES", "Seismogram or event files, folders of them, or patterns in quotes");
  options.addFlag("--arrivals", arrivals_, "Print when phases arrive at the records instead");
  options.add("--seedlink", seedLink_, "Print which channels a SeedLink server has, and of what time, instead")
      .typeName("SERVER");
  preparation_.addOptions(options);
  options.afterParsing([this] {
    if (seedLink_.empty() && inputs_.names().isEmpty())
      throw UsageError("FILES", "expected seismogram or event files, or --seedlink");
    if (!seedLink_.empty() && !inputs_.names().isEmpty())
      throw UsageError("--seedlink", "found files, too; expected either");
  });
}

namespace {

QString roundingNote(const QString& name, const SeismogramSummary& summary) {
  return QStringLiteral("%1: samples of %2: beyond 16777216, which single precision rounds")
      .arg(name, summary.record->labelString());
}

// The tables of seismograms and events, row by row.
class Tables {
public:
  Result<ReadFile> add(const QString& name, const SeismogramReadOptions& options) {
    const Result<SeismogramFileSummary> file = summarizeInputFile(name, options);
    if (!file) return addEvents(name, file.error());
    ReadFile found{!file->records.empty(), file->notes};
    for (const SeismogramSummary& summary : file->records) {
      records_.addRow(infoCells(summary) << name);
      if (summary.samples.isRounded()) found.notes.append(roundingNote(name, summary));
    }
    hasRecords_ = hasRecords_ || found.holdsRecords;
    return found;
  }

  // Records that have been made ready have their samples in memory.
  void addPrepared(const Records& prepared) {
    for (std::size_t i = 0; i < prepared.records.size(); ++i)
      records_.addRow(infoCells(summaryOf(prepared.records[i])) << prepared.files[qsizetype(i)]);
    hasRecords_ = hasRecords_ || !prepared.records.empty();
  }

  QString text() const {
    QStringList tables;
    if (hasRecords_) tables.append(records_.text());
    if (hasEvents_) tables.append(events_.text());
    return tables.join(QLatin1Char('\n'));
  }

private:
  // A file that is no seismogram may be one of events; else what is wrong with it as a seismogram is what to say.
  Result<ReadFile> addEvents(const QString& name, const QString& reason) {
    if (isReadingFailure(reason) || name == QLatin1String("-")) return Error{reason};
    const Result<EventFile> file = readEvents(name);
    if (!file) return Error{isReadingFailure(file.error()) || looksLikeEvents(name) ? file.error() : reason};
    if (file->events.empty()) return Error{reason};
    for (const auto& event : file->events)
      events_.addRow(eventCells(*event) << name);
    hasEvents_ = true;
    return ReadFile{true, file->notes};
  }

  TextTable records_ = infoTable();
  TextTable events_ = eventTable();
  bool hasRecords_ = false;
  bool hasEvents_ = false;
};

// The table of arrivals, record by record.
class Arrivals {
public:
  Result<ReadFile> add(const QString& name, const SeismogramReadOptions& options) {
    const Result<SeismogramFileSummary> file = summarizeInputFile(name, options);
    if (!file) return Error{file.error()};
    for (const SeismogramSummary& summary : file->records)
      addRecord(name, *summary.record);
    return ReadFile{!file->records.empty(), file->notes};
  }

  void addPrepared(const Records& prepared) {
    for (std::size_t i = 0; i < prepared.records.size(); ++i)
      addRecord(prepared.files[qsizetype(i)], *prepared.records[i]);
  }

  QString text() const { return hasRows_ ? table_.text() : QString(); }

  /// Empty when all is known.
  QString note() const {
    return withoutDistance_.empty() ? QString()
                                    : "no distance of " + stationsText(withoutDistance_) + ": arrivals are not known";
  }

private:
  void addRecord(const QString& name, const SeismogramRecord& record) {
    for (const PhaseArrival& arrival : arrivalsOf(record)) {
      table_.addRow(arrivalCells(record, arrival) << name);
      hasRows_ = true;
    }
    if (!isDefined(double(record.gcarc()))) withoutDistance_.push_back(copyOfRecord(record));
  }

  TextTable table_ = arrivalTable();
  SeismogramArray withoutDistance_;
  bool hasRows_ = false;
};

} // namespace

// Whatever is done to records, or where they lie, is told of records in memory; else their samples are not kept.
template <typename Table>
ExitCode InfoCommand::fill(Table& table) const {
  if (preparation_.isWanted()) {
    const Records prepared = preparation_.apply(inputs_.read());
    table.addPrepared(prepared);
    return prepared.records.empty() ? ExitCode::Failed : prepared.status;
  }
  return inputs_.readEach(
      [&table](const QString& name, const SeismogramReadOptions& options) { return table.add(name, options); });
}

ExitCode InfoCommand::printArrivals() const {
  Arrivals arrivals;
  const ExitCode status = fill(arrivals);
  print(arrivals.text());
  if (const QString text = arrivals.note(); !text.isEmpty()) note(text);
  return status;
}

ExitCode InfoCommand::printStreams() const {
  const Result<SeedLinkAddress> server = parseSeedLinkAddress(QString::fromStdString(seedLink_));
  if (!server) {
    complain("--seedlink: " + server.error());
    return ExitCode::Failed;
  }
  ProgramName program;
  const QCoreApplication application(program.count, program.words);
  Result<std::vector<SeedLinkStream>> streams = Error{};
  const SeedLinkInquiry inquiry(*server, kLongestAnswerSeconds, [&streams](const auto& answer) {
    streams = answer;
    QCoreApplication::quit();
  });
  QCoreApplication::exec();
  if (!streams) {
    complain(streams.error());
    return ExitCode::Failed;
  }
  TextTable table = tableWith(kStreamHeadings);
  for (const SeedLinkStream& stream : *streams)
    table.addRow({stream.codes[0], stream.codes[1], stream.codes[2], stream.codes[3], utcText(stream.start),
                  utcText(stream.end)});
  print(table.text());
  return ExitCode::Ok;
}

ExitCode InfoCommand::run() {
  if (!seedLink_.empty()) return printStreams();
  if (arrivals_) return printArrivals();
  Tables tables;
  const ExitCode status = fill(tables);
  print(tables.text());
  const QString done = preparation_.text();
  if (!done.isEmpty() && !tables.text().isEmpty()) print(QStringLiteral("# ") + done + QLatin1Char('\n'));
  return status;
}

} // namespace xov::cli
