#pragma once

#include <QString>

#include <mutex>

namespace xov {

/// While one exists, libmseed is this thread's alone (it composes its messages in one buffer for the whole process),
/// and what it says is kept instead of written. The host's own calls are told where libmseed would tell them.
class LibmseedMessages {
public:
  LibmseedMessages();
  ~LibmseedMessages();
  LibmseedMessages(const LibmseedMessages&) = delete;
  LibmseedMessages& operator=(const LibmseedMessages&) = delete;

  /// The last thing that was said, in one line.
  const QString& text() const { return text_; }

private:
  std::unique_lock<std::mutex> lock_;
  QString text_;
};

} // namespace xov
