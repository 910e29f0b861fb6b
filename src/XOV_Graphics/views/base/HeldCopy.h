#pragma once

#include <memory>

namespace xov {

/// What a host's array holds now; null where the host has let it go. Its objects are the host's, too, and may change
/// the array while they are asked: a view goes over a copy.
template <typename Array>
std::shared_ptr<const Array> heldCopy(const std::shared_ptr<const Array>& array) {
  return array ? std::make_shared<const Array>(*array) : nullptr;
}

template <typename Array>
std::shared_ptr<const Array> heldCopy(const std::weak_ptr<const Array>& array) {
  return heldCopy(array.lock());
}

} // namespace xov
