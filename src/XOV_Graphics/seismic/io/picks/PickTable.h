#pragma once

#include "XOV_Graphics/base/Result.h"
#include "XOV_Graphics/seismic/io/picks/PickFiles.h"

#include <QByteArrayView>

namespace xov {

/// Whether a text begins with the names of columns of picks: time, and station or phase.
bool isPickTable(QByteArrayView head);

/// Reads a table of picks with a row of names.
Result<PickFile> readPickTable(QByteArrayView text, const QString& name);

/// The table as writePicks() writes it.
QByteArray pickTable(const PickArray& picks);

/// A pick as a row of that table, without its end; line ends in texts become blanks.
QByteArray pickRow(const Pick& pick);

/// The pick of such a row; nothing where it is none.
std::optional<Pick> pickOfRow(QByteArrayView row);

} // namespace xov
