#pragma once

#include "XOV_Graphics/base/Result.h"

#include <exception>
#include <new>

namespace xov {

/// Runs the body of a public operation on a file and turns whatever it throws into one line, so that nothing is
/// thrown into the host.
template <typename Body>
auto guarded(const QString& name, Body&& body) noexcept -> decltype(body()) {
  try {
    return body();
  } catch (const std::bad_alloc&) {
    return Error{name + ": not enough memory"};
  } catch (const std::exception& exception) {
    return Error{name + ": " + QString::fromUtf8(exception.what())};
  }
}

} // namespace xov
