#pragma once

#include "apps/xov/inputs/RecordPlot.h"
#include "apps/xov/inputs/Records.h"
#include "apps/xov/options/Options.h"

#include <QString>

#include <string>

namespace xov::cli {

/// The options --align and --reduce of commands that draw records on one time axis.
class AxisAlignment {
public:
  void addOptions(const Options& options);

  /// Whether records count from moments of their own.
  bool isWanted() const { return !phase_.empty() || kmPerSecond_ > 0; }

  /// What is left to do about their axes once they are aligned.
  TimeAxes axes() const { return isWanted() ? TimeAxes::AsTheyAre : TimeAxes::Common; }

  /// The records with their times counted from these moments. Says how many have none; those are left out. The status
  /// is Failed where none is left.
  Records apply(Records records) const;

  /// The moments as the user named them.
  QString text() const;

  /// What the time axis shows then: "Time after P (s)".
  QString axisLabel() const;

private:
  QString why() const;

  std::string phase_;
  double kmPerSecond_ = 0; ///< 0 without a reduction
};

} // namespace xov::cli
