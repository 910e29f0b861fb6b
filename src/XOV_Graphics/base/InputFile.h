#pragma once

#include "XOV_Graphics/base/Export.h"
#include "XOV_Graphics/base/Result.h"

#include <QByteArray>
#include <QFile>

#include <span>

namespace xov {

/// What a reader takes beside ordinary files.
enum class InputKind : std::uint8_t {
  OrdinaryFile, ///< nothing: a pipe would block, a device may have no end
  AlsoPipes,    ///< pipes and devices: what is read once from its start to its end
};

/// Opens `file` for reading, without a buffer: samples go straight to where they are kept. Refuses folders, and what
/// `kind` does not take, in one line that names the file.
XOV_EXPORT Status openForReading(QFile& file, InputKind kind = InputKind::OrdinaryFile);

/// All that an open file or pipe holds from its position on. Refuses more than `mostBytes`: a file at once, a pipe
/// when a megabyte more has come out of it. `name` stands for it in errors.
XOV_EXPORT Result<QByteArray> readToEnd(QFileDevice& file, const QString& name, qint64 mostBytes);

/// Reads a whole ordinary file of at most `mostBytes`. The size of a larger one is in the error.
XOV_EXPORT Result<QByteArray> readWholeFile(const QString& path, qint64 mostBytes);

/// Fills `bytes` from the device's position on; false when the device ends or fails before they are full.
bool readFully(QIODevice& device, std::span<char> bytes);

} // namespace xov
