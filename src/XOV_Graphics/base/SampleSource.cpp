#include "XOV_Graphics/base/SampleSource.h"

namespace xov {

SampleSource::~SampleSource() = default;

} // namespace xov
