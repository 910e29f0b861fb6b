#pragma once

#include "XOV_Graphics/base/Result.h"
#include "XOV_Graphics/grid/Grid.h"

#include <QByteArrayView>
#include <QString>

namespace xov {

/// Reads a grid from lines "x y value" in any order: every x with every y, once each, both evenly spaced. Numbers
/// stand between blanks, tabulators, commas or semicolons, with a decimal point; a value may be nan, and what follows
/// it does not count, nor do empty lines and lines that start with #. The first line that is otherwise is refused
/// with its number, and so is what is no whole, regular grid.
XOV_EXPORT Result<Grid> readXyzGrid(const QString& path) noexcept;

/// The same from memory; `name` stands for the file in errors.
XOV_EXPORT Result<Grid> parseXyzGrid(QByteArrayView text, const QString& name) noexcept;

} // namespace xov
