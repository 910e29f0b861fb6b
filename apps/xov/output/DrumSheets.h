#pragma once

#include <QDateTime>

#include <XOV_Graphics/base/Result.h>
#include <XOV_Graphics/seismic/SeismogramRecord.h>
#include <cstdint>
#include <vector>

namespace xov::cli {

/// What gets a page of its own in a drum.
enum class DrumPaging : std::uint8_t {
  None,    ///< all is on one page
  Channel, ///< each channel
  Day,     ///< each day (UTC) of each channel
};

/// What is on one page of a drum.
struct DrumSheet {
  SeismogramArray records;
  QDateTime start; ///< of its day and of the next one; invalid where the page is not of a day
  QDateTime end;
};

/// More days are most likely a wrong time in a header.
inline constexpr std::size_t kMostDrumSheets = 10000;

/// The recordings page by page: channels in the order of their first records, days in theirs. Records without a time
/// are on no page of a day. Refuses more than kMostDrumSheets. Records must not be null; those of days borrow their
/// samples.
Result<std::vector<DrumSheet>> drumSheets(SeismogramArray records, DrumPaging paging);

} // namespace xov::cli
