#include "apps/xov/commands/InfoCommand.h"

#include "apps/xov/terminal/TextTable.h"

#include <QDateTime>

#include <XOV_Graphics/base/TimeText.h>
#include <XOV_Graphics/seismic/Picks.h>
#include <XOV_Graphics/seismic/prepare/TimeAxis.h>
#include <algorithm>
#include <charconv>
#include <cmath>

namespace xov::cli {

namespace {

constexpr double kMillisecondsPerSecond = 1000;
constexpr double kLongestOffset = 1e11; // seconds; some three thousand years
constexpr int kSecondsDecimals = 3;
constexpr int kDegreesDecimals = 2;

struct Heading {
  const char* text;
  TextTable::Align align;
};

using enum TextTable::Align;

constexpr Heading kHeadings[] = {
    {"net", Left},   {"sta", Left},    {"loc", Left},       {"chan", Left}, {"start", Left},
    {"npts", Right}, {"delta", Right}, {"duration", Right}, {"min", Right}, {"max", Right},
    {"dist", Right}, {"az", Right},    {"picks", Left},     {"file", Left},
};

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

QString startText(const SeismogramRecord& record) {
  const std::shared_ptr<SeisTime> reference = record.mySeisReferenceTime();
  if (!reference || !(std::abs(record.b()) < kLongestOffset)) return {};
  reference->updateNSDate();
  const QDateTime start = reference->nsDate().addMSecs(std::llround(double(record.b()) * kMillisecondsPerSecond));
  return utcText(start);
}

// From the first sample to the last, in double precision: a day does not fit single precision to the millisecond.
double durationSeconds(const SeismogramRecord& record) {
  const double interval = intervalSeconds(record);
  return isDefined(interval) ? interval * std::max(record.npts() - 1, 0) : interval;
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

QStringList infoCells(const SeismogramRecord& record) {
  const bool hasSamples = record.npts() > 0;
  return {word(record.knetwk()),
          word(record.kstnm()),
          word(record.khole()),
          word(record.kcmpnm()),
          startText(record),
          QString::number(record.npts()),
          shortest(record.delta()),
          fixed(durationSeconds(record), kSecondsDecimals),
          hasSamples ? shortest(record.smin()) : QString(),
          hasSamples ? shortest(record.smax()) : QString(),
          fixed(double(record.gcarc()), kDegreesDecimals),
          fixed(double(record.azimuth()), kDegreesDecimals),
          picksText(record)};
}

QString infoTable(const SeismogramArray& records, const QStringList& files) {
  TextTable table;
  for (const Heading& heading : kHeadings)
    table.addColumn(QString::fromLatin1(heading.text), heading.align);
  for (std::size_t i = 0; i < records.size(); ++i)
    table.addRow(infoCells(*records[i]) << files.value(qsizetype(i)));
  return table.text();
}

void InfoCommand::addOptions(CLI::App& options) { inputs_.addOptions(options); }

ExitCode InfoCommand::run() {
  const Records found = inputs_.read();
  if (!found.records.empty()) print(infoTable(found.records, found.files));
  return found.status;
}

} // namespace xov::cli
