#pragma once

#include <QString>
#include <QStringList>

#include <XOV_Graphics/base/Result.h>
#include <cstddef>
#include <map>
#include <vector>

namespace xov::cli {

/// What fields in file names stand for, by their names.
using NameFields = std::map<QString, QString>;

/// The name of a file with fields in braces, such as "{station}.{date}.png". "{{" stands for a brace.
class FileTemplate {
public:
  /// Refuses fields of other names than `known` and braces that are not closed.
  static Result<FileTemplate> parse(const QString& text, const QStringList& known);

  /// The name with the fields filled in. A value comes from files, so it gets no say in where the file lies or how it
  /// hides: of its characters only letters, digits, '.', '_', '-' and '+' stay, the others become '_', as do a '.' or
  /// '-' that would begin a name, and it is cut at kLongestValue characters. A field without a value is empty, or '_'
  /// where it would begin a name.
  QString filledWith(const NameFields& fields) const;

  static constexpr qsizetype kLongestValue = 64;

private:
  struct Part {
    QString text; ///< as it stands there, or the name of a field
    bool isField = false;
  };
  std::vector<Part> parts_;
};

/// A file of a plot of several pages, and which pages it holds, counted from 0.
struct PageFile {
  QString name;
  std::vector<std::size_t> pages;
};

/// Which files hold the pages of these names. Where a file may hold several pages (`sharing`), those of the same name
/// lie in one; else those are numbered, as plot_1.png and plot_2.png. Refuses names that are still the same.
Result<std::vector<PageFile>> filesOfPages(const QStringList& names, bool sharing);

/// The name with a number before its extension, with zeros in front up to so many digits: plot_07.png.
QString numberedName(const QString& name, std::size_t number, int digits = 1);

/// A number of a page, with zeros in front as its largest one needs them: 07 of 12.
QString pageNumber(std::size_t number, std::size_t largest);

} // namespace xov::cli
