#include "apps/xov/prepare/AxisAlignment.h"

#include "apps/xov/inputs/Validators.h"

#include <XOV_Graphics/seismic/prepare/Alignment.h>
#include <XOV_Graphics/seismic/prepare/PreparedRecords.h>

namespace xov::cli {

namespace {

QStringList without(const QStringList& files, const std::vector<std::size_t>& leftOut) {
  QStringList kept = files;
  for (auto index = leftOut.rbegin(); index != leftOut.rend(); ++index)
    if (qsizetype(*index) < kept.size()) kept.removeAt(qsizetype(*index));
  return kept;
}

} // namespace

void AxisAlignment::addOptions(const Options& options) {
  const Option align =
      options.add("--align", phase_, "Count seconds from a pick or an expected phase of each record, as P")
          .typeName("PHASE")
          .check(
              Check{[](const std::string& name) { return std::string(name.empty() ? "expected a phase" : ""); }, {}});
  options.add("--reduce", kmPerSecond_, "Reduce times by distance over this velocity in km/s, as 8")
      .typeName("V")
      .check(numberAboveZero())
      .excludes(align);
}

QString AxisAlignment::axisLabel() const {
  if (phase_.empty()) return QStringLiteral("Time - distance / %1 km/s (s)").arg(kmPerSecond_);
  return QStringLiteral("Time after %1 (s)").arg(QString::fromStdString(phase_));
}

QString AxisAlignment::text() const {
  return QString::fromStdString(phase_) + QLatin1Char(' ') + QString::number(kmPerSecond_);
}

QString AxisAlignment::why() const {
  if (phase_.empty()) return QStringLiteral("no distance, or no origin time where others have one,");
  return QStringLiteral("no pick %1, nor distance and origin time to expect it from,")
      .arg(QString::fromStdString(phase_));
}

Records AxisAlignment::apply(Records records) const {
  const std::size_t count = records.records.size();
  AlignedRecords aligned = phase_.empty() ? reducedBy(onOneAxis(std::move(records.records)), kmPerSecond_)
                                          : alignedOn(std::move(records.records), QString::fromStdString(phase_));
  if (!aligned.leftOut.empty()) {
    complain(QStringLiteral("%1 in %2 of %3 records; left out: %4")
                 .arg(why())
                 .arg(aligned.leftOut.size())
                 .arg(count)
                 .arg(stationsText(aligned.leftOut)));
  }
  records.files = without(records.files, aligned.leftOutIndices);
  records.records = std::move(aligned.records);
  if (records.records.empty()) records.status = ExitCode::Failed;
  return records;
}

} // namespace xov::cli
