#pragma once

#include "apps/xov/options/Options.h"

#include <QDateTime>

#include <XOV_Graphics/seismic/SeismogramRecord.h>
#include <string>

namespace xov {
class SeismogramView;
}

namespace xov::cli {

/// The option --time-axis: whether plots of seismograms show UTC or seconds.
class TimeAxisOption {
public:
  void addOptions(const Options& options);

  /// Shows seconds unless the user says otherwise: limits are given in seconds.
  void preferSeconds() { prefersSeconds_ = true; }

  /// Lets the view show UTC where the user wants it or, unless told otherwise, where the records have a common
  /// reference time and none knows of an event, whose origin seconds would count from. Says so where the user wants
  /// UTC and the records have no common reference time.
  void apply(SeismogramView& view, const SeismogramArray& records) const;
  /// The moment that such a view counts from; invalid for seconds.
  QDateTime referenceOf(const SeismogramArray& records) const;

private:
  std::string axis_;
  bool prefersSeconds_ = false;
};

} // namespace xov::cli
