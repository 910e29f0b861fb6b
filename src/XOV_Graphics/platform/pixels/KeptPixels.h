#pragma once

#include "XOV_Graphics/platform/pixels/KeptTexts.h"
#include "XOV_Graphics/platform/pixels/ScaledImages.h"

namespace xov {

/// What a view keeps between its pictures, so that what has not changed is not worked out again.
struct KeptPixels {
  ScaledImages images;
  KeptTexts texts;
};

} // namespace xov
