#pragma once

#include "XOV_Graphics/base/Export.h"

#include <QString>

#include <algorithm>
#include <cstddef>
#include <string_view>

namespace xov {

/// The text of a SAC text field: everything before the first NUL, without blanks at either end, read as Latin-1.
/// Empty for an unset field.
XOV_EXPORT QString sacFieldText(std::string_view bytes);

/// A text field of the SAC header, N bytes padded with blanks. An unset field holds "-12345".
template <std::size_t N>
struct SacText {
  char bytes[N]; ///< as in the file, without a zero behind them

  /// An unset field.
  SacText() : SacText(std::string_view("-12345")) {}
  /// The first N characters of `text`.
  SacText(std::string_view text) {
    const std::size_t length = std::min(text.size(), N);
    std::copy_n(text.data(), length, bytes);
    std::fill(bytes + length, bytes + N, ' ');
  }
  SacText(const char* text) : SacText(std::string_view(text)) {}

  /// The text; empty when the field is not set.
  QString text() const { return sacFieldText({bytes, N}); }
};

} // namespace xov
