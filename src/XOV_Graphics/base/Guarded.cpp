#include "XOV_Graphics/base/Guarded.h"

#include "XOV_Graphics/base/Log.h"

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

void logThrown(const char* name, const char* what) noexcept {
  try {
    qCWarning(log, "%s: %s", name, qUtf8Printable(QString::fromUtf8(what).simplified()));
  } catch (...) { // the host's handler of messages, or Qt's for want of memory
    static_cast<void>(what);
  }
}

} // namespace xov
