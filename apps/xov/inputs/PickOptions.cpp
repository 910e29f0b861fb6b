#include "apps/xov/inputs/PickOptions.h"

#include "apps/xov/terminal/Messages.h"

#include <QStringList>

#include <XOV_Graphics/seismic/prepare/RecordPicks.h>

namespace xov::cli {

void PickOptions::addOptions(const Options& options) {
  const Option names =
      options.add("--picks", names_, "Draw these picks only: labels, or phases to predict, as 'P,S' or 'PKP,pP'")
          .typeName("NAME[,...]")
          .listBetweenCommas();
  options.addFlag("--no-picks", none_, "Draw no picks").excludes(names);
}

SeismogramArray PickOptions::apply(SeismogramArray records) const {
  if (none_) return withPicksNamed(std::move(records), {});
  if (names_.empty()) return records;
  QStringList names;
  for (const std::string& name : names_)
    names.append(QString::fromStdString(name).trimmed());
  names.removeAll(QString());
  PreparedRecords picked = withPicksOrPredictions(std::move(records), names);
  for (const QString& text : picked.notes)
    note(text);
  return std::move(picked.records);
}

} // namespace xov::cli
