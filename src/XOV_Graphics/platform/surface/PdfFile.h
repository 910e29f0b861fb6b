#pragma once

#include "XOV_Graphics/platform/surface/PdfTable.h"

#include <QByteArray>

#include <optional>

namespace xov {

/// A PDF file of one page as Qt writes it, whose page can be given another content: the operators that paint it.
class PdfFile {
public:
  /// Nothing when the file is built in a way that this class does not know.
  static std::optional<PdfFile> parse(const QByteArray& file);

  /// The operators of the page, unpacked.
  const QByteArray& content() const { return content_; }

  /// The file with other operators on its page; every other object stays as it is. Throws std::bad_alloc.
  QByteArray withContent(const QByteArray& content) const;

private:
  bool readContent();

  QByteArray file_;
  QByteArray content_;
  PdfTable table_;
  ByteRange stream_; ///< the packed content
  ByteRange length_; ///< the digits that say how long it is
};

} // namespace xov
