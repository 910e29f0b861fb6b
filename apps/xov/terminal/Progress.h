#pragma once

#include <QElapsedTimer>
#include <QString>

#include <cstdint>

namespace xov::cli {

/// A bar on standard error, "reading [#####               ]  25 %", for work that takes long. Nothing is shown when
/// standard error is no terminal, nor in the first half second. The Listener of a thread, if it has one, is told
/// instead.
class Progress {
public:
  /// `what` is being done; `total` is how much of it there is, in any unit.
  Progress(const QString& what, std::int64_t total);
  /// Removes the bar.
  ~Progress();
  Progress(const Progress&) = delete;
  Progress& operator=(const Progress&) = delete;

  /// What a Listener throws goes on to the caller.
  void advanceTo(std::int64_t done);
  /// Removes the bar until the next step, for a message to be written.
  void clear();

  /// The bar as text.
  static QString bar(const QString& what, std::int64_t done, std::int64_t total);

private:
  QString what_;
  std::int64_t total_;
  bool terminal_;
  bool shown_ = false;
  std::int64_t nextUpdateMs_;
  QElapsedTimer clock_;
};

} // namespace xov::cli
