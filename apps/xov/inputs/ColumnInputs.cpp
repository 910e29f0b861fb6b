#include "apps/xov/inputs/ColumnInputs.h"

#include "apps/xov/inputs/GivenInputs.h"
#include "apps/xov/terminal/Messages.h"

#include <QFileInfo>

#include <XOV_Graphics/base/FileName.h>

namespace xov::cli {

namespace {

QString textOr(const std::optional<std::string>& given, const QString& fallback) {
  return given ? QString::fromStdString(*given) : fallback;
}

std::string joined(const std::vector<std::string>& words) {
  std::string text;
  for (const std::string& word : words)
    text += text.empty() ? word : " " + word;
  return text;
}

} // namespace

void ColumnInputs::addOptions(const Options& options) {
  options.add("FILE", file_, "Text or CSV file of columns, or - for standard input").required().typeName("");
  options.add("--columns", columns_, "What to draw, by number or heading (default " + joined(columns_) + ")")
      .typeName(names_)
      .takesExactly(int(columns_.size()));
  options.add("--xlabel", xLabel_, "Label of the X axis (default: the column's heading)").typeName("TEXT");
  options.add("--ylabel", yLabel_, "Label of the Y axis (default: " + std::string(yDefault_) + ")").typeName("TEXT");
}

std::optional<ColumnData> ColumnInputs::read() const {
  if (givenInputs().columns && file_ == kGivenInput) return givenInputs().columns();
  QStringList wanted;
  for (const std::string& column : columns_)
    wanted.append(QString::fromStdString(column));
  Result<ColumnData> data = readColumns(fileNameFromBytes(file_), wanted);
  if (data) return *data;
  complain(data.error());
  return {};
}

void ColumnInputs::complainOf(const QString& what) const {
  complain(fileNameFromBytes(file_) + QStringLiteral(": ") + what);
}

void ColumnInputs::noteOf(const QString& what) const { note(fileNameFromBytes(file_) + QStringLiteral(": ") + what); }

QString ColumnInputs::xLabelOr(const QString& fallback) const { return textOr(xLabel_, fallback); }

QString ColumnInputs::yLabelOr(const QString& fallback) const { return textOr(yLabel_, fallback); }

QString ColumnInputs::title() const {
  return file_ == "-" || file_ == kGivenInput ? QString() : QFileInfo(fileNameFromBytes(file_)).completeBaseName();
}

} // namespace xov::cli
