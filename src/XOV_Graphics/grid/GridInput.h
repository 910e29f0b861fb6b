#pragma once

#include "XOV_Graphics/base/Result.h"
#include "XOV_Graphics/grid/Grid.h"

#include <QByteArray>

#include <new>

namespace xov {

/// The size of a file. Refuses what is not an ordinary one: a pipe would block, a device may have no end.
Result<qint64> gridFileSize(const QString& path);

/// Reads a whole ordinary file, unless it is larger than that.
Result<QByteArray> readGridFile(const QString& path, qint64 mostBytes);

/// Runs the body of a public operation. A lack of memory is a failure like any other, so that nothing is thrown into
/// the host.
template <class Body>
Result<Grid> guardedGrid(const QString& name, const Body& body) noexcept {
  try {
    return body();
  } catch (const std::bad_alloc&) {
    return Error{name + QStringLiteral(": not enough memory")};
  }
}

} // namespace xov
