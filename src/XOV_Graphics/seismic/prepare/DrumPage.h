#pragma once

#include "XOV_Graphics/base/Export.h"
#include "XOV_Graphics/base/Result.h"
#include "XOV_Graphics/seismic/SeismogramRecord.h"

#include <QDateTime>
#include <QStringList>

#include <cstdint>
#include <optional>

namespace xov {

/// More rows cannot be told apart on a page.
inline constexpr int kMostDrumRows = 2048;

/// From when to when a page reaches. What is invalid follows from the recording.
struct XOV_EXPORT DrumSpan {
  QDateTime start; ///< at which the first row begins
  QDateTime end;   ///< in or at the end of the last row
};

/// A recording on a page of rows.
struct XOV_EXPORT DrumPage {
  SeismogramArray pieces; ///< in time order; all times count from `start`
  QDateTime start;        ///< at which the first row begins, UTC
  std::int32_t rows = 1;  ///< as many as the pieces need
  double gain = 1;        ///< half row heights that the largest sample may rise so that rows can be told apart
  QStringList notes;      ///< what of the records is not drawn, one line each
};

/// How many half row heights the largest sample of a page may rise so that rows can be told apart: so many that the
/// middle one of the minutes reaches 0.6 of them, and 8 at most. 1 without samples. Pieces must not be null and their
/// intervals above 0; one without samples counts for nothing.
XOV_EXPORT double drumGain(const SeismogramArray& pieces);

/// Puts the pieces of one channel, in any order, on a page that starts at the first whole hour (UTC) with at least a
/// minute of data: a few milliseconds before midnight, as files of a day have them, make no row of their own. Where
/// no hour has as much, it is the hour of the earliest sample. That hour also becomes the zero of the pieces' times:
/// what else a view adds to the times of samples and events then is 0. The mean of the recording is taken away.
///
/// A row lasts `rowSeconds`. The page has `rows` (1 to kMostDrumRows), or as many as the recording needs. Samples
/// before and beyond the page are left out, as the view would draw them above and below the rows. A record with the
/// samples of another one at the same time is left out, too.
///
/// A span that is given goes before: the page starts with it, at whatever moment, and has the rows that it needs,
/// unless `rows` tells them.
///
/// Refuses rows without a duration, a span that ends before it starts, records of several channels, and a recording
/// of which no time is known; of others, pieces without a time are left out. Records must not be null; those that
/// nobody else holds lend their samples (changedRecord()).
XOV_EXPORT Result<DrumPage> layOutDrum(SeismogramArray records, double rowSeconds, std::optional<int> rows = {},
                                       const DrumSpan& span = {});

} // namespace xov
