#include "XOV_Graphics/seismic/SharedReferenceTime.h"

#include <array>
#include <mutex>

namespace xov {

std::shared_ptr<UtcTime> sharedReferenceTime(const SacHeader& header) {
  struct Moment {
    std::array<std::int32_t, 6> fields = {};
    std::shared_ptr<UtcTime> time;
  };
  // Of all threads, as a moment never changes. The system ends a program that has no memory left to note what goes
  // with a thread.
  static std::mutex mutex;
  static Moment latest;
  const std::scoped_lock lock(mutex);
  const std::array<std::int32_t, 6> fields{header.nzyear, header.nzjday, header.nzhour,
                                           header.nzmin,  header.nzsec,  header.nzmsec};
  if (latest.time == nullptr || latest.fields != fields)
    latest = {fields, std::make_shared<UtcTime>(xov::referenceTime(header))};
  return latest.time;
}

} // namespace xov
