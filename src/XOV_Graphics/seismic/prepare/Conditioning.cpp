#include "XOV_Graphics/seismic/prepare/Conditioning.h"

#include "XOV_Graphics/base/Guarded.h"
#include "XOV_Graphics/base/Numbers.h"
#include "XOV_Graphics/seismic/prepare/RecordSamples.h"
#include "XOV_Graphics/seismic/prepare/TimeAxis.h"

#include <utility>

namespace xov {

std::shared_ptr<SacSeismogram> detrended(const SeismogramRecord& record, int order) {
  std::vector<double> samples = doublesOf(record);
  removePolynomial(samples, order);
  return copyWithSamples(record, samples);
}

Result<std::shared_ptr<SacSeismogram>> taperedByShare(const SeismogramRecord& record, double share,
                                                      TaperShape shape) noexcept {
  return guarded({}, [&]() -> Result<std::shared_ptr<SacSeismogram>> {
    if (!(share >= 0 && share <= 0.5))
      return errorOf(record,
                     QStringLiteral("found a taper of %1 of the record, expected 0 to 0.5").arg(numberText(share)));
    std::vector<double> samples = doublesOf(record);
    applyTaperShare(samples, share, shape);
    return copyWithSamples(record, samples);
  });
}

Result<std::shared_ptr<SacSeismogram>> taperedBySeconds(const SeismogramRecord& record, double seconds,
                                                        TaperShape shape) noexcept {
  return guarded({}, [&]() -> Result<std::shared_ptr<SacSeismogram>> {
    if (!(seconds >= 0))
      return errorOf(record, QStringLiteral("found a taper of %1 s, expected 0 or more").arg(numberText(seconds)));
    if (const Status status = checkInterval(record); !status) return Error{status.error()};
    std::vector<double> samples = doublesOf(record);
    applyTaper(samples, seconds / intervalSeconds(record), shape);
    return copyWithSamples(record, samples);
  });
}

Result<std::shared_ptr<SacSeismogram>> filtered(const SeismogramRecord& record, const ButterworthFilter& filter,
                                                FilterPhase phase) noexcept {
  return guarded({}, [&]() -> Result<std::shared_ptr<SacSeismogram>> {
    Result<std::vector<Biquad>> sections = designButterworth(filter, intervalSeconds(record));
    if (!sections) return errorOf(record, sections.error());
    std::vector<double> samples = doublesOf(record);
    applyFilter(samples, std::move(sections).value(), phase);
    return copyWithSamples(record, samples);
  });
}

} // namespace xov
