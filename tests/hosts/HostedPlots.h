#pragma once

#include "XOV_Graphics/seismic/EventOrigin.h"
#include "XOV_Graphics/seismic/ThreeComponentObservation.h"
#include "XOV_Graphics/seismic/UniformSignal.h"
#include "XOV_Graphics/views/base/XOVView.h"
#include "tests/hosts/HookedRecord.h"

#include <gtest/gtest.h>

#include <memory>
#include <ostream>
#include <vector>

namespace xov::testing {

/// A view of records and all that its host keeps for it. The view, which borrows the rest, goes first.
struct HostedPlot {
  std::shared_ptr<SeismogramArray> records = std::make_shared<SeismogramArray>();
  std::shared_ptr<EventOriginArray> events = std::make_shared<EventOriginArray>();
  std::shared_ptr<UniformSignalArray> signals = std::make_shared<UniformSignalArray>();
  std::shared_ptr<ThreeComponentObservation> observation;
  std::unique_ptr<XOVView> view;

  /// What every question to a record or a signal, and to an event for its time, calls.
  void setAsked(const std::function<void()>& asked) const;
};

/// A kind of view that is drawn from records, by name.
struct RecordPlot {
  const char* name;
  std::unique_ptr<XOVView> (*make)(HostedPlot& host);
};
inline void PrintTo(const RecordPlot& plot, std::ostream* out) { *out << plot.name; }

/// What INSTANTIATE_TEST_SUITE_P() calls it.
inline std::string recordPlotName(const ::testing::TestParamInfo<RecordPlot>& info) { return info.param.name; }

/// All kinds that show records, signals or observations.
const std::vector<RecordPlot>& recordPlots();

/// Three records with picks, two events and a view of them, 300 by 200 points.
HostedPlot hostedPlot(const RecordPlot& plot);

} // namespace xov::testing
