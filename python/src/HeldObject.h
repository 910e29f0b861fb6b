#pragma once

#include <memory>
#include <pybind11/pybind11.h>
#include <utility>

namespace xov::python {

/// An object of Python's that any thread may let go of, with or without the interpreter's lock, and after its end.
inline std::shared_ptr<pybind11::object> heldObject(pybind11::object object) {
  return {new pybind11::object(std::move(object)), [](pybind11::object* held) {
            if (Py_IsInitialized() == 0) {
              (void)held->release(); // the interpreter has ended, and its memory with it
            } else {
              const pybind11::gil_scoped_acquire lock;
              *held = pybind11::object();
            }
            delete held;
          }};
}

} // namespace xov::python
