#include "XOV_Graphics/seismic/io/stations/StationXmlValues.h"

#include "XOV_Graphics/base/LeftOut.h"
#include "XOV_Graphics/base/Numbers.h"
#include "XOV_Graphics/base/TimeText.h"

#include <cmath>
#include <limits>

namespace xov {

namespace {

constexpr qsizetype kQuotedCharacters = 40;

} // namespace

void XmlProblem::note(qint64 where, const QString& what) {
  if (!text.isEmpty()) return;
  line = where;
  text = what;
}

std::optional<double> takeNumber(XmlElements& xml, XmlProblem& problem) {
  const double largest = std::numeric_limits<double>::max();
  return takeNumberWithin(xml, -largest, largest, problem);
}

std::optional<double> takeNumberWithin(XmlElements& xml, double lowest, double highest, XmlProblem& problem) {
  const QString element = xml.name().toString();
  const qint64 line = xml.lineNumber();
  const QString written = xml.elementText();
  const std::optional<double> number = toNumber<double>(written.toUtf8());
  if (number && *number >= lowest && *number <= highest) return number;
  const bool hasLimits = highest < std::numeric_limits<double>::max();
  problem.note(line, element + ": found \"" + written.left(kQuotedCharacters).simplified() + "\", expected a number" +
                         (hasLimits ? " from " + numberText(lowest) + " to " + numberText(highest) : QString()));
  return {};
}

QDateTime takeTimeAttribute(const XmlElements& xml, const char* attribute, XmlProblem& problem) {
  const QString written = xml.attribute(attribute).trimmed();
  if (written.isEmpty()) return {};
  if (const auto time = parseUtcTime(written)) return *time;
  problem.note(xml.lineNumber(), QLatin1String(attribute) + ": " + unreadableTime(written));
  return {};
}

} // namespace xov
