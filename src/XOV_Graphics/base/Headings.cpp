#include "XOV_Graphics/base/Headings.h"

#include <algorithm>

namespace xov {

qsizetype headingIndex(const QStringList& headings, const QString& name) {
  const qsizetype exact = headings.indexOf(name);
  if (exact >= 0) return exact;
  const auto found = std::ranges::find_if(
      headings, [&](const QString& heading) { return heading.compare(name, Qt::CaseInsensitive) == 0; });
  return found == headings.end() ? -1 : found - headings.begin();
}

} // namespace xov
