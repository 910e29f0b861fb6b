// Whatever the bytes are, the readers of picks give picks of stations with uncertainties in range and ids of their
// own, which are read back as they are written, or one line of error. So does the journal.

#include "../Claims.h"
#include "XOV_Graphics/seismic/io/picks/PickTable.h"
#include "XOV_Graphics/seismic/io/picks/QuakeMlPicks.h"

#include <QSet>

#include <cstdint>

using namespace xov;

namespace {

bool isUncertainty(const std::optional<double>& seconds) {
  return !seconds || (*seconds >= 0 && *seconds <= kLargestPickUncertainty);
}

void checkPicks(const Result<PickFile>& file) {
  if (!file) {
    fuzz::requireOneLine(file.error());
    return;
  }
  for (const QString& note : file->notes)
    fuzz::requireOneLine(note);
  QSet<QString> ids;
  for (const Pick& pick : file->picks) {
    fuzz::require(!pick.channel[1].isEmpty(), "a pick has a station");
    fuzz::require(isUncertainty(pick.lowerSeconds) && isUncertainty(pick.upperSeconds), "uncertainties are some");
    fuzz::require(!ids.contains(pick.id), "no two picks have one id");
    ids.insert(pick.id);
    const std::optional<Pick> again = pickOfRow(pickRow(pick));
    fuzz::require(again && again->time == pick.time && again->lowerSeconds == pick.lowerSeconds &&
                      again->polarity == pick.polarity,
                  "a pick is read back as it is written");
  }
  if (const Result<QByteArray> document = quakeMlOf(file->picks, nullptr, QStringLiteral("in"))) {
    const Result<PickFile> again = readQuakeMlPicks(*document, QStringLiteral("in"));
    fuzz::require(again && again->picks.size() == file->picks.size(), "a document is read back as it is written");
  } else {
    fuzz::requireOneLine(document.error());
  }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const QByteArrayView bytes(reinterpret_cast<const char*>(data), qsizetype(size));
  checkPicks(parsePicks(bytes, QStringLiteral("in")));
  checkPicks(readPickTable(bytes, QStringLiteral("in")));
  return 0;
}
