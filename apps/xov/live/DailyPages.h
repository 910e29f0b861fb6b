#pragma once

#include "apps/xov/options/Options.h"
#include "apps/xov/output/FileTemplate.h"

#include <XOV_Graphics/views/base/XOVView.h>
#include <string>

namespace xov::cli {

/// The option --daily: where the pages of days that are over are kept.
class DailyPages {
public:
  /// `source` is the option without which there are no such pages.
  void addOptions(const Options& options, const Option& source);

  bool isGiven() const { return !place_.empty(); }

  /// Writes a page, whole or not at all, under the name that its fields give it; none of the files that are there
  /// gets lost. False where that cannot be done, which has been said in one line.
  bool keep(XOVView& view, const NameFields& fields) const;

private:
  FileTemplate names() const;

  std::string place_; // a folder, or names with fields
};

} // namespace xov::cli
