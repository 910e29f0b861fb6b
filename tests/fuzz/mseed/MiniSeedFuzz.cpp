// Whatever the bytes are, the miniSEED reader gives traces that views can draw, or one line of error. The traces of a
// channel have one time axis and come in time order, and a selection gives a part of what all channels give.

#include "../Claims.h"
#include "XOV_Graphics/seismic/SacSeismogram.h"
#include "XOV_Graphics/seismic/io/mseed/MiniSeedReader.h"

#include <cmath>
#include <cstdint>

using namespace xov;
using fuzz::require;

namespace {

void checkTrace(SeismogramRecord& trace) {
  require(trace.npts() > 0, "a trace has samples");
  require(trace.delta() > 0 && std::isfinite(trace.delta()), "the interval is finite and above zero");
  require(std::isfinite(trace.b()) && std::isfinite(trace.e()) && trace.e() >= trace.b(),
          "a trace ends after it begins");
  require(trace.b() >= 0, "no trace begins before the reference time");
  float sum = 0;
  for (int i = 0; i < trace.npts(); ++i)
    sum += trace.GetSacSeis()[i];
  (void)sum;
  trace.ComputeExtrema();
  require(trace.smin() <= trace.smax(), "the extremes are in order");
  require(trace.mySeisReferenceTime()->nsDate().isValid(), "the reference time is known");
  require(trace.labelString().count(QLatin1Char('.')) >= 3, "the label has the four codes");
}

bool isSameChannel(const SeismogramRecord& left, const SeismogramRecord& right) {
  return left.knetwk() == right.knetwk() && left.kstnm() == right.kstnm() && left.khole() == right.khole() &&
         left.kcmpnm() == right.kcmpnm();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const QByteArrayView bytes(reinterpret_cast<const char*>(data), qsizetype(size));
  const Result<SeismogramFile> file = parseMiniSeed(bytes, QStringLiteral("in"));
  if (!file) {
    fuzz::requireOneLine(file.error());
    return 0;
  }
  for (const QString& note : file->notes)
    fuzz::requireOneLine(note);
  require(!file->records.empty(), "a file that is read holds traces");
  std::size_t samples = 0;
  for (std::size_t i = 0; i < file->records.size(); ++i) {
    SeismogramRecord& trace = *file->records[i];
    checkTrace(trace);
    samples += std::size_t(trace.npts());
    if (i == 0 || !isSameChannel(*file->records[i - 1], trace)) continue;
    const SeismogramRecord& before = *file->records[i - 1];
    require(before.b() <= trace.b(), "pieces come in time order");
    require(before.mySeisReferenceTime()->nsDate() == trace.mySeisReferenceTime()->nsDate(),
            "pieces share a time axis");
  }
  // Steim2 holds seven samples in four bytes at most.
  require(samples <= size * 7 / 4, "there are no more samples than fit");
  const Result<SeismogramFile> part = parseMiniSeed(bytes, QStringLiteral("in"), {{QStringLiteral("BH?")}});
  require(!part || part->records.size() <= file->records.size(), "a selection is a part");
  return 0;
}
