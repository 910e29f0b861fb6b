#include "XOV_Graphics/base/LeftOut.h"

namespace xov {

namespace {

constexpr qsizetype kQuotedCharacters = 40;

} // namespace

void LeftOut::count(qint64 line, const QString& problem) {
  ++total_;
  if (problem.isEmpty()) return;
  if (leftOut_++ > 0) return;
  firstLine_ = line;
  firstProblem_ = problem;
}

QString LeftOut::text() const {
  return file_ + ": " + QString::number(leftOut_) + " of " + QString::number(total_) + QLatin1Char(' ') +
         QLatin1String(what_) + (total_ == 1 ? "" : "s") + " left out, the first on line " +
         QString::number(firstLine_) + ": " + firstProblem_;
}

QStringList LeftOut::notes() const { return leftOut_ > 0 ? QStringList{text()} : QStringList(); }

Error LeftOut::error() const { return {text()}; }

QString unreadableTime(const QString& written) {
  if (written.isEmpty()) return QStringLiteral("time: found nothing");
  return "time: found \"" + written.left(kQuotedCharacters).simplified() +
         "\", expected a time such as 2011-03-11T05:46:24.1Z";
}

} // namespace xov
