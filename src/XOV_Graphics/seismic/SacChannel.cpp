#include "XOV_Graphics/seismic/SacChannel.h"

#include "XOV_Graphics/seismic/SharedReferenceTime.h"

#include <utility>

namespace xov {

SacChannel::SacChannel(const SacHeader& header, QString path, std::shared_ptr<const void> owner)
    : header_(header),
      path_(std::move(path)),
      owner_(std::move(owner)),
      referenceTime_(sharedReferenceTime(header)) {
  if (!owner_) owner_ = std::make_shared<int>(); // the host's word that the samples stay
}

SacChannel::~SacChannel() = default;

} // namespace xov
