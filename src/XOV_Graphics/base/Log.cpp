#include "XOV_Graphics/base/Log.h"

namespace xov {

const QLoggingCategory& log() {
  static const QLoggingCategory category("xov");
  return category;
}

const QLoggingCategory& cellLog() {
  static const QLoggingCategory category("xov.cells");
  return category;
}

} // namespace xov
