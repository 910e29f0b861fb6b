#pragma once

#include <QString>

#include <utility>

namespace xov {

/// Why an operation failed, in one line that is fit for the user: the file, the field or byte offset, what was found
/// and what was expected.
struct Error {
  QString text; ///< one line, without a line end
};

/// A value, or the error that stood in its way. A Result without a value hands out a default-constructed one.
template <typename T>
class [[nodiscard]] Result {
public:
  /// Success, with its value.
  Result(T value) : value_(std::move(value)), hasValue_(true) {}
  /// Failure.
  Result(Error error) : error_(std::move(error.text)) {}

  /// Whether it is success.
  bool hasValue() const noexcept { return hasValue_; }
  /// As hasValue().
  explicit operator bool() const noexcept { return hasValue_; }
  /// The value; only of a success.
  const T& value() const& noexcept { return value_; }
  /// The value, moved out; only of a success.
  T&& value() && noexcept { return std::move(value_); }
  /// The value; only of a success.
  const T& operator*() const& noexcept { return value_; }
  /// The value's members; only of a success.
  const T* operator->() const noexcept { return &value_; }
  /// The line that says what went wrong; empty when there is a value.
  const QString& error() const noexcept { return error_; }

private:
  T value_{};
  QString error_;
  bool hasValue_ = false;
};

/// Success, or the error that stood in its way.
class [[nodiscard]] Status {
public:
  /// Success.
  Status() = default;
  /// Failure.
  Status(Error error) : error_(std::move(error.text)), ok_(false) {}

  /// Whether it is success.
  explicit operator bool() const noexcept { return ok_; }
  /// The line that says what went wrong; empty after success.
  const QString& error() const noexcept { return error_; }

private:
  QString error_;
  bool ok_ = true;
};

/// For operations that tell a host of a failure by `false` and a line in `error`, where it gave one: whether `status`
/// is success, with its line in `error` when it is not.
inline bool succeeded(const Status& status, QString* error) {
  if (!status && error != nullptr) *error = status.error();
  return bool(status);
}

} // namespace xov
