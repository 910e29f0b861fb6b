#pragma once

#include <QObject>

#include <functional>

namespace xov::cli {

/// Calls `leave` in the event loop at Ctrl+C, or when the system asks the program to end, so that what is under way
/// can be brought to an end; a second time ends the program at once. For as long as the object is there; one at a
/// time. Where the system has no such signals, nothing happens.
class Interrupt : public QObject {
public:
  explicit Interrupt(std::function<void()> leave);
  ~Interrupt() override;
  Interrupt(const Interrupt&) = delete;
  Interrupt& operator=(const Interrupt&) = delete;
};

} // namespace xov::cli
