#pragma once

#include "XOV_Graphics/base/XmlElements.h"

#include <QDateTime>

#include <optional>

namespace xov {

/// The first thing that is wrong with a part of a document.
struct XmlProblem {
  qint64 line = 0;
  QString text; ///< empty when nothing is

  void note(qint64 where, const QString& what);
};

/// The finite number that the current element holds; nothing, and a note, when it holds anything else.
std::optional<double> takeNumber(XmlElements& xml, XmlProblem& problem);

/// The same for a number that must lie within these, ends included.
std::optional<double> takeNumberWithin(XmlElements& xml, double lowest, double highest, XmlProblem& problem);

/// The time that an attribute of the current element gives; invalid when it has none, with a note when it is no time.
QDateTime takeTimeAttribute(const XmlElements& xml, const char* attribute, XmlProblem& problem);

} // namespace xov
