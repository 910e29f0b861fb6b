#pragma once

#include "XOV_Graphics/base/Result.h"

#include <exception>
#include <new>

namespace xov {

/// What std::bad_alloc is to a user.
inline constexpr char kNotEnoughMemory[] = "not enough memory";

/// The error of an operation on `name` that threw; without the name where there is no memory left to write it.
Error thrownError(const QString& name, const char* what) noexcept;

/// A line in the log; none where there is no memory left for it.
void logThrown(const char* name, const char* what) noexcept;

/// Runs the body of a public operation, which gives a Result or a Status, and turns whatever it throws into one line,
/// so that nothing is thrown into the host. `name` is what the operation is about, such as a file; the line begins
/// with it where it is not empty.
template <typename Body>
auto guarded(const QString& name, Body&& body) noexcept -> decltype(body()) {
  try {
    return body();
  } catch (const std::bad_alloc&) {
    return thrownError(name, kNotEnoughMemory);
  } catch (const std::exception& exception) {
    return thrownError(name, exception.what());
  } catch (...) {
    return thrownError(name, "failed for an unknown reason");
  }
}

/// Runs what must end where it began, such as a handler of events or what a host gave to be called, and tells of what
/// it throws in the log, in one line that begins with `name`. Whether it came to its end.
template <typename Body>
bool contained(const char* name, Body&& body) noexcept {
  try {
    body();
    return true;
  } catch (const std::bad_alloc&) {
    logThrown(name, kNotEnoughMemory);
  } catch (const std::exception& exception) {
    logThrown(name, exception.what());
  } catch (...) {
    logThrown(name, "failed for an unknown reason");
  }
  return false;
}

} // namespace xov
