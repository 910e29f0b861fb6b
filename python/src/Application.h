#pragma once

#include <pybind11/pybind11.h>

namespace xov::python {

/// Qt's application object: the program's own, or one that is made with the first plot and stays to the end. Throws
/// RuntimeError in another thread than its own.
void needApplication();

/// Whether windows can be seen.
bool hasWindows();

/// Runs Qt's loop until no window is left, or the user has pressed Ctrl-C, which is thrown as KeyboardInterrupt.
void runUntilWindowsAreClosed();

} // namespace xov::python
