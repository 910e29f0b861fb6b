#include "XOV_Graphics/base/Version.h"

namespace xov {

QVersionNumber version() { return {XOV_VERSION_MAJOR, XOV_VERSION_MINOR, XOV_VERSION_PATCH}; }

} // namespace xov
