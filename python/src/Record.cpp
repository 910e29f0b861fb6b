#include "python/src/Record.h"

#include "python/src/HeldObject.h"

#include <QDateTime>

#include <XOV_Graphics/seismic/SacSeismogram.h>
#include <cmath>
#include <limits>
#include <optional>
#include <string>

namespace py = pybind11;

namespace xov::python {

namespace {

struct FloatField {
  const char* name;
  float SacHeader::*value;
  double SacFooter::*precise = nullptr; // where the double-precision footer has it
};

constexpr FloatField kFloats[] = {
    {"b", &SacHeader::b, &SacFooter::b},
    {"o", &SacHeader::o, &SacFooter::o},
    {"a", &SacHeader::a, &SacFooter::a},
    {"f", &SacHeader::f, &SacFooter::f},
    {"t0", &SacHeader::t0, &SacFooter::t0},
    {"t1", &SacHeader::t1, &SacFooter::t1},
    {"t2", &SacHeader::t2, &SacFooter::t2},
    {"t3", &SacHeader::t3, &SacFooter::t3},
    {"t4", &SacHeader::t4, &SacFooter::t4},
    {"t5", &SacHeader::t5, &SacFooter::t5},
    {"t6", &SacHeader::t6, &SacFooter::t6},
    {"t7", &SacHeader::t7, &SacFooter::t7},
    {"t8", &SacHeader::t8, &SacFooter::t8},
    {"t9", &SacHeader::t9, &SacFooter::t9},
    {"stla", &SacHeader::stla, &SacFooter::stla},
    {"stlo", &SacHeader::stlo, &SacFooter::stlo},
    {"evla", &SacHeader::evla, &SacFooter::evla},
    {"evlo", &SacHeader::evlo, &SacFooter::evlo},
    {"stel", &SacHeader::stel},
    {"stdp", &SacHeader::stdp},
    {"evdp", &SacHeader::evdp},
    {"mag", &SacHeader::mag},
    {"dist", &SacHeader::dist},
    {"az", &SacHeader::az},
    {"baz", &SacHeader::baz},
    {"gcarc", &SacHeader::gcarc},
    {"cmpaz", &SacHeader::cmpaz},
    {"cmpinc", &SacHeader::cmpinc},
};

struct TextField {
  const char* name;
  SacText<8> SacHeader::*value;
};

constexpr TextField kTexts[] = {
    {"kstnm", &SacHeader::kstnm},   {"khole", &SacHeader::khole}, {"knetwk", &SacHeader::knetwk},
    {"kcmpnm", &SacHeader::kcmpnm}, {"ko", &SacHeader::ko},       {"ka", &SacHeader::ka},
    {"kf", &SacHeader::kf},         {"kt0", &SacHeader::kt0},     {"kt1", &SacHeader::kt1},
    {"kt2", &SacHeader::kt2},       {"kt3", &SacHeader::kt3},     {"kt4", &SacHeader::kt4},
    {"kt5", &SacHeader::kt5},       {"kt6", &SacHeader::kt6},     {"kt7", &SacHeader::kt7},
    {"kt8", &SacHeader::kt8},       {"kt9", &SacHeader::kt9},     {"kuser0", &SacHeader::kuser0},
};

// Years 1 to 9999, which a header can tell.
constexpr std::int64_t kEarliest = -62135596800000;
constexpr std::int64_t kLatest = 253402300799999;

bool setNumber(const std::string& name, const py::handle& value, SacHeader& header, SacFooter& precise) {
  for (const FloatField& field : kFloats) {
    if (name != field.name) continue;
    const double number = value.cast<double>();
    if (!(std::abs(number) <= double(std::numeric_limits<float>::max())))
      throw py::value_error(name + ": found " + std::to_string(number) + ", expected a finite number");
    header.*field.value = float(number);
    if (field.precise != nullptr) precise.*field.precise = number;
    return true;
  }
  if (name != "idep") return false;
  header.idep = value.cast<std::int32_t>();
  return true;
}

bool setText(const std::string& name, const py::handle& value, SacHeader& header) {
  for (const TextField& field : kTexts) {
    if (name != field.name) continue;
    const QByteArray latin = QString::fromStdString(value.cast<std::string>()).toLatin1();
    header.*field.value = SacText<8>(latin.constData());
    return true;
  }
  return false;
}

void setStart(std::int64_t milliseconds, SacHeader& header) {
  if (milliseconds < kEarliest || milliseconds > kLatest)
    throw py::value_error("start: expected a time in the years 1 to 9999");
  setReferenceTime(header, QDateTime::fromMSecsSinceEpoch(milliseconds, Qt::UTC));
}

} // namespace

Record::Record(Samples samples, double delta, const py::dict& header, QString path) : path_(std::move(path)) {
  if (samples.ndim() != 1)
    throw py::value_error("samples: found " + std::to_string(samples.ndim()) + " dimensions, expected 1");
  if (samples.size() > std::numeric_limits<int>::max())
    throw py::value_error("samples: found " + std::to_string(samples.size()) + ", expected at most 2147483647");
  if (!(delta > 0) || !std::isfinite(float(delta)) || !(float(delta) > 0))
    throw py::value_error("delta: found " + std::to_string(delta) + ", expected seconds above 0");
  data_ = samples.data();
  count_ = std::size_t(samples.size());
  array_ = heldObject(std::move(samples));
  header_.delta = float(delta);
  precise_.delta = delta;
  header_.leven = 1;
  header_.iftype = kSacTimeSeries;
  for (const auto& [key, value] : header) {
    const auto name = key.cast<std::string>();
    if (name == "start")
      setStart(value.cast<std::int64_t>(), header_);
    else if (!setNumber(name, value, header_, precise_) && !setText(name, value, header_))
      throw py::value_error("there is no header value '" + name + "'");
  }
}

std::shared_ptr<SeismogramRecord> Record::make() const {
  return std::make_shared<SacSeismogram>(header_, std::span(data_, count_), array_, path_, precise_);
}

std::string Record::name() const { return SacSeismogram(header_, {}, path_).labelString().toStdString(); }

void defineRecord(py::module_& module) {
  py::class_<Record, std::shared_ptr<Record>>(module, "Record")
      .def(
          py::init([](const Record::Samples& samples, double delta, const py::dict& header, const std::string& path) {
            return std::make_shared<Record>(samples, delta, header, QString::fromStdString(path));
          }),
          py::arg("samples").noconvert(), py::arg("delta"), py::arg("header"), py::arg("path") = "")
      .def_property_readonly("samples", &Record::samples)
      .def_property_readonly("delta", &Record::delta)
      .def_property_readonly("name", &Record::name)
      .def("__len__", [](const Record& record) { return record.samples().attr("size").cast<std::size_t>(); });
}

} // namespace xov::python
