#pragma once

#include "XOV_Graphics/base/Export.h"
#include "XOV_Graphics/base/Result.h"
#include "XOV_Graphics/seismic/ChannelPatterns.h"
#include "XOV_Graphics/seismic/realtime/seedlink/SeedLinkAddress.h"

#include <QDateTime>

#include <functional>
#include <memory>
#include <vector>

namespace xov {

/// A channel that a server has, and of what time.
struct XOV_EXPORT SeedLinkStream {
  ChannelCodes codes; ///< of the channel
  QDateTime start;    ///< invalid where the server does not say
  QDateTime end;      ///< invalid where the server does not say
};

/// Reads the answer to INFO STREAMS of protocol 3.1, XML. Streams of other than data records are left out.
Result<std::vector<SeedLinkStream>> parseStreamsXml(const QByteArray& text);

/// The same of protocol 4.0, JSON.
Result<std::vector<SeedLinkStream>> parseStreamsJson(const QByteArray& text);

/// Asks a server what it has, in the event loop of the thread that it was made in.
class XOV_EXPORT SeedLinkInquiry {
public:
  /// Told once: what the server has, or one line why it is not known.
  using Answer = std::function<void(const Result<std::vector<SeedLinkStream>>&)>;

  /// Calls `answer` once: with the streams in the server's order, or with one line that says why there are none. A
  /// server that takes longer than `longestSeconds`, or sends more than 64 MiB, has failed.
  SeedLinkInquiry(const SeedLinkAddress& server, double longestSeconds, Answer answer);
  /// Ends the connection; `answer` is not called any more.
  ~SeedLinkInquiry();
  SeedLinkInquiry(const SeedLinkInquiry&) = delete;
  SeedLinkInquiry& operator=(const SeedLinkInquiry&) = delete;

private:
  class Private;
  std::unique_ptr<Private> d_;
};

} // namespace xov
