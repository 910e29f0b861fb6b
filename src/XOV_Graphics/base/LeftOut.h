#pragma once

#include "XOV_Graphics/base/Result.h"

#include <QStringList>

namespace xov {

/// Counts the parts of a text file that are read and those that are left out, and keeps the first problem.
class LeftOut {
public:
  /// `what` names a part in the singular.
  LeftOut(QString file, const char* what) : file_(std::move(file)), what_(what) {}

  /// Counts the part on that line; with a problem it is left out.
  void count(qint64 line, const QString& problem);

  /// Whether there were parts and all of them are left out.
  bool isAll() const { return leftOut_ > 0 && leftOut_ == total_; }
  /// One line when something is left out.
  QStringList notes() const;
  /// The same when all is.
  Error error() const;

private:
  QString text() const;

  QString file_;
  const char* what_;
  qint64 total_ = 0;
  qint64 leftOut_ = 0;
  qint64 firstLine_ = 0;
  QString firstProblem_;
};

/// The problem of a time that cannot be read.
QString unreadableTime(const QString& written);

} // namespace xov
