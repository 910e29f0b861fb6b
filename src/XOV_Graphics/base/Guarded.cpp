#include "XOV_Graphics/base/Guarded.h"

namespace xov {

Error thrownError(const QString& name, const char* what) noexcept {
  try {
    const QString said = QString::fromUtf8(what).simplified();
    return {name.isEmpty() ? said : name + QStringLiteral(": ") + said};
  } catch (const std::bad_alloc&) {
    // The text of a literal is part of the program.
    return {QStringLiteral("not enough memory")};
  }
}

} // namespace xov
