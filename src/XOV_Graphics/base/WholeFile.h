#pragma once

#include "XOV_Graphics/base/Export.h"

#include <QByteArray>
#include <QString>

#include <functional>

class QIODevice;

namespace xov {

/// Writes a whole file or nothing: the bytes go to a temporary file beside it that then takes its place. False, with
/// one line in `error` that names the file, when that fails; a file that stood there stays as it was. Devices and
/// pipes are written to as they are.
XOV_EXPORT bool writeFileAtomically(const QString& path, const QByteArray& bytes, QString* error = nullptr);

/// Takes a file that cannot be understood out of the way of a new one, so that what it holds is not lost: it has
/// ".broken" behind its name then, in the place of one that was kept so before. The new name; empty where the file
/// stays, since it is no ordinary file or the system refuses.
XOV_EXPORT QString setFileAside(const QString& path);

/// Writes what a file will hold to a device; false when the device does not take it.
using FileContents = std::function<bool(QIODevice&)>;

/// The same for contents too large to be made first. They are asked for only when the file could be opened.
XOV_EXPORT bool writeFileAtomically(const QString& path, const FileContents& contents, QString* error = nullptr);

} // namespace xov
