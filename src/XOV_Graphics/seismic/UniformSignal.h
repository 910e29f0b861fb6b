#pragma once

#include "XOV_Graphics/base/Export.h"

#include <QString>

#include <memory>
#include <vector>

namespace xov {

/// An evenly sampled series without a seismological header.
class XOV_EXPORT UniformSignal {
public:
  UniformSignal() = default;
  UniformSignal(const UniformSignal&) = delete;
  UniformSignal& operator=(const UniformSignal&) = delete;
  virtual ~UniformSignal();

  /// The samples, npts() of them in one piece. They stay owned by the series and valid while it lives. May be null
  /// when npts() is 0.
  virtual const float* dataPointer() const = 0;
  /// Number of samples.
  virtual int npts() const = 0;
  /// Sample interval in seconds.
  virtual float delta() const = 0;
  /// Smallest sample.
  virtual float min() const = 0;
  /// Largest sample.
  virtual float max() const = 0;
  /// Caption of the series.
  virtual QString description() const = 0;
};

/// Several series, as the view takes them.
using UniformSignalArray = std::vector<std::shared_ptr<UniformSignal>>;

} // namespace xov
