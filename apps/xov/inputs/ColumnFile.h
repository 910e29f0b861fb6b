#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <XOV_Graphics/base/Result.h>
#include <vector>

namespace xov::cli {

/// Columns of numbers from a text file.
struct ColumnData {
  QStringList names;                       ///< headings of the columns, empty where the file has none
  std::vector<std::vector<float>> columns; ///< equally long; NaN where a field is empty, infinite beyond a float
};

/// Reads columns from a text file, or from standard input when `path` is "-". `wanted` names them by number from 1 on
/// or by heading, whatever its case.
///
/// Fields are separated by semicolons, or by commas, or by tabs below a heading, or by blanks and tabs; the first
/// line decides. Numbers have a decimal point. The first line is the heading unless it has a number in each column
/// that is wanted. Empty lines and lines that start with # count for nothing. Fields may stand in double quotes. The
/// first line that lacks a wanted column, or has something else than a number in it, is refused with its line number.
Result<ColumnData> readColumns(const QString& path, const QStringList& wanted);

/// The same from memory; `name` stands for the file in errors.
Result<ColumnData> parseColumns(const QByteArray& text, const QString& name, const QStringList& wanted);

} // namespace xov::cli
