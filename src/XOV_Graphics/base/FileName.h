#pragma once

#include "XOV_Graphics/base/Export.h"

#include <QByteArray>
#include <QByteArrayView>
#include <QString>

namespace xov {

/// Names of files in Unix are bytes, and QString holds those that are UTF-8. A byte of a name that is not becomes a
/// character that no text has, U+DC00 + byte, and so finds its way back: such a name survives in a QString, though
/// Qt's own classes for files do not find what it names. The library's readers and writers do.

/// The name of a file as the system has it, made a QString.
XOV_EXPORT QString fileNameFromBytes(QByteArrayView bytes);

/// The bytes of a name, such as the system wants them.
XOV_EXPORT QByteArray fileNameBytes(const QString& name);

/// Whether a name holds bytes that are not UTF-8.
XOV_EXPORT bool isByteName(const QString& name);

/// Makes a folder and those that it lies in, whatever bytes their names are made of; whether it is there then.
XOV_EXPORT bool makeFolder(const QString& name);

/// Whether there is a folder of that name.
XOV_EXPORT bool isFolder(const QString& name);

} // namespace xov
