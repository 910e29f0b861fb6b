#pragma once

#include "XOV_Graphics/seismic/SacHeader.h"
#include "XOV_Graphics/seismic/SeisTime.h"

#include <QString>

#include <memory>

namespace xov {

/// What the pieces of a channel between its gaps have in common: a SacSeismogram made of it holds little more than
/// its own times. Nothing of it changes.
class XOV_EXPORT SacChannel {
public:
  /// `header` has the values of all pieces but times of their samples, npts, depmin and depmax, which are passed
  /// over; `path` is the file that they came from. `owner` keeps the memory in which their samples lie; without one
  /// that stays for as long as the pieces need it.
  explicit SacChannel(const SacHeader& header, QString path = {}, std::shared_ptr<const void> owner = {});
  ~SacChannel();
  SacChannel(const SacChannel&) = delete;
  SacChannel& operator=(const SacChannel&) = delete;

  /// The header as given to the constructor.
  const SacHeader& header() const { return header_; }
  /// The file that the pieces came from; empty when they came from none.
  const QString& path() const { return path_; }
  /// What keeps the memory of the samples; never null.
  const std::shared_ptr<const void>& owner() const { return owner_; }
  /// The header's reference time; never null.
  const std::shared_ptr<SeisTime>& referenceTime() const { return referenceTime_; }

private:
  SacHeader header_;
  QString path_;
  std::shared_ptr<const void> owner_;
  std::shared_ptr<SeisTime> referenceTime_;
};

} // namespace xov
