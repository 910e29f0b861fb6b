#pragma once

#include "apps/xov/inputs/ColumnFile.h"
#include "apps/xov/options/Options.h"

#include <optional>
#include <string>
#include <vector>

namespace xov::cli {

/// What the commands that draw columns of numbers share: the file, --columns, --xlabel and --ylabel.
class ColumnInputs {
public:
  /// `defaults` are the columns that are read unless the user says otherwise, and as many as the user has to name;
  /// `names` stands for them in the help, and `yDefault` for the label that --ylabel replaces.
  ColumnInputs(std::vector<std::string> defaults, const char* names, const char* yDefault = "the column's heading")
      : names_(names),
        yDefault_(yDefault),
        columns_(std::move(defaults)) {}

  void addOptions(const Options& options);

  /// The columns in the order of their options. None, with a message, when they cannot be read.
  std::optional<ColumnData> read() const;

  /// Says what is wrong with the contents of the file.
  void complainOf(const QString& what) const;
  /// The same for what does not make the command fail: note().
  void noteOf(const QString& what) const;

  /// The label that the user gave, an empty one included, or else `fallback`.
  QString xLabelOr(const QString& fallback) const;
  QString yLabelOr(const QString& fallback) const;
  /// A title for the plot: the name of the file without its extension; empty for standard input.
  QString title() const;

private:
  const char* names_;
  const char* yDefault_;
  std::string file_;
  std::vector<std::string> columns_;
  std::optional<std::string> xLabel_;
  std::optional<std::string> yLabel_;
};

} // namespace xov::cli
