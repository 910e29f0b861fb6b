#pragma once

#include "apps/xov/terminal/ThreadScope.h"

#include <QString>

#include <cstdint>

namespace xov::cli {

/// Hears what a command has to say in place of the terminal, for a program with windows that runs commands.
class Listener {
public:
  Listener() = default;
  Listener(const Listener&) = delete;
  Listener& operator=(const Listener&) = delete;
  virtual ~Listener() = default;

  /// A complaint or a note, one line.
  virtual void said(const QString& text) = 0;
  /// How far work has come that takes long. What this throws ends the command.
  virtual void advanced(const QString& what, std::int64_t done, std::int64_t total) = 0;
};

/// While this lives, the thread that it was made in has this listener.
using ListenerScope = ThreadScope<Listener*>;

/// The listener of this thread; nullptr where the terminal hears everything.
inline Listener* currentListener() { return ListenerScope::current(); }

} // namespace xov::cli
