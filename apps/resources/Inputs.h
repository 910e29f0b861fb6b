#pragma once

#include "apps/resources/BoundaryFiles.h"
#include "apps/resources/ElevationGrid.h"
#include "apps/resources/Packages.h"
#include "apps/resources/Pictures.h"

#include <XOV_Graphics/base/Result.h>
#include <memory>
#include <optional>

namespace xov::maker {

/// What the resources are made of, read from the packages when it is first asked for.
class Inputs {
public:
  Inputs(const Packages& packages, Progress progress);

  Result<const ElevationGrid*> grid();
  Result<const MapPainter*> painter();
  /// Trenches, ridges and transform faults, in this order, cut at the meridians.
  Result<const std::vector<NamedSegments>*> boundaries();

private:
  const Packages& packages_;
  Progress progress_;
  std::optional<ElevationGrid> grid_;
  std::unique_ptr<MapPainter> painter_;
  std::vector<NamedSegments> boundaries_;
};

} // namespace xov::maker
