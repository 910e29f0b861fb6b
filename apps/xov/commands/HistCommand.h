#pragma once

#include "apps/xov/commands/Command.h"
#include "apps/xov/inputs/ColumnInputs.h"
#include "apps/xov/inputs/LogAxisOptions.h"
#include "apps/xov/inputs/TraceStyle.h"
#include "apps/xov/options/Options.h"
#include "apps/xov/output/Output.h"

#include <cstdint>
#include <memory>
#include <optional>

namespace xov {
class XOVHistogramView;
}

namespace xov::cli {

/// `xov hist`: a column of numbers as a histogram, drawn or dumped as text.
class HistCommand : public Command {
public:
  void addOptions(const Options& options) override;
  ExitCode run() override;

private:
  void checkRange() const;
  std::unique_ptr<XOVHistogramView> makeView(const QRectF& frame, const ColumnData& data) const;

  ColumnInputs inputs_{{"1"}, "C", "Count"};
  LogAxisOptions logAxes_;
  LineWidthOption lineWidth_;
  Output output_{"hist", {600, 500}};
  std::int32_t bins_ = 20;
  std::optional<double> min_;
  std::optional<double> max_;
  bool removeMean_ = false;
  bool dump_ = false;
};

/// The range of a histogram.
struct BinRange {
  float min = 0;
  float max = 0;
};

/// The range to give to a histogram view for `bins` bins of values between `lowest` and `highest`; `min` and `max`
/// are the ends that the user gave.
///
/// The view divides the range by one more than the number of bins. So the upper end, unless given, lies one bin above
/// the highest value, and the bins are those that divide the values' own range; else the last one would stand for
/// twice as wide a range as its bar shows. Without a range of its own the values get one like those of other plots.
BinRange binRange(float lowest, float highest, std::int32_t bins, std::optional<double> min,
                  std::optional<double> max);

/// The same for bins that are equally wide along a logarithmic axis. All values are above 0.
BinRange logBinRange(float lowest, float highest, std::int32_t bins, std::optional<double> min,
                     std::optional<double> max);

} // namespace xov::cli
