#pragma once

#include "XOV_Graphics/seismic/FocalMechanism.h"
#include "XOV_Graphics/seismic/signal/SymmetricMatrix.h"

namespace xov {

/// A moment tensor with x to the east, y to the north and z up.
inline SymmetricMatrix sourceMatrix(const MomentTensor& tensor) {
  return {tensor.Mpp, tensor.Mtt, tensor.Mrr, -tensor.Mtp, tensor.Mrp, -tensor.Mrt};
}

} // namespace xov
