#pragma once

#include <XOV_Graphics/seismic/SacFooter.h>
#include <XOV_Graphics/seismic/SacHeader.h>
#include <XOV_Graphics/seismic/SeismogramRecord.h>
#include <memory>
#include <pybind11/numpy.h>
#include <pybind11/pybind11.h>

namespace xov::python {

/// A trace over the memory of a NumPy array, which it keeps alive. What an array holds later than when a figure was
/// made of it may be drawn wrongly: who changes samples makes a new figure.
class Record {
public:
  using Samples = pybind11::array_t<float, pybind11::array::c_style>;

  /// `header` holds values by their SAC names: numbers (times in seconds from the reference time), texts, and
  /// "start", the reference time in milliseconds since 1970 (UTC). Throws ValueError where one is unknown or beyond
  /// its range.
  Record(Samples samples, double delta, const pybind11::dict& header, QString path);

  /// A new trace over the same samples.
  std::shared_ptr<SeismogramRecord> make() const;

  const pybind11::object& samples() const { return *array_; }
  double delta() const { return precise_.delta; }
  std::string name() const;

private:
  std::shared_ptr<pybind11::object> array_; // let go of with the interpreter's lock
  const float* data_ = nullptr;
  std::size_t count_ = 0;
  SacHeader header_;
  SacFooter precise_;
  QString path_;
};

void defineRecord(pybind11::module_& module);

} // namespace xov::python
