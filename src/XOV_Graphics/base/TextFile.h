#pragma once

#include <QByteArray>
#include <QString>

#include <new>

namespace xov {

/// Keeps `text` in `error`, where there is one; false.
inline bool fail(QString* error, const QString& text) {
  if (error != nullptr) *error = text;
  return false;
}

/// Runs the body of a public operation. A lack of memory is a failure like any other, so that nothing is thrown into
/// the host.
template <class Body>
bool withoutThrowing(QString* error, const Body& body) {
  try {
    return body();
  } catch (const std::bad_alloc&) {
    return fail(error, QStringLiteral("not enough memory"));
  }
}

/// Reads a whole file. Refuses what is not an ordinary one: a pipe would block, a device may have no end. False, with
/// one line in `error` that names the file, when it cannot be read.
bool readTextFile(const QString& path, QByteArray& text, QString* error);

} // namespace xov
