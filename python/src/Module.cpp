// The compiled half of the Python module xov: records over NumPy arrays, plots of the command's making, and what the
// command takes.
#include "apps/xov/commands/CommandLine.h"
#include "apps/xov/documents/OptionTable.h"
#include "apps/xov/inputs/GivenInputs.h"
#include "python/src/Plot.h"
#include "python/src/Record.h"

#include <XOV_Graphics/base/Threads.h>
#include <XOV_Graphics/base/Version.h>
#include <XOV_Graphics/seismic/SeismogramFile.h>
#include <pybind11/numpy.h>
#include <pybind11/stl.h>

namespace py = pybind11;

namespace xov::python {

namespace {

using Column = py::array_t<float, py::array::c_style>;

cli::ColumnData columnData(const std::vector<Column>& columns, const std::vector<std::string>& names) {
  cli::ColumnData data;
  for (const Column& column : columns) {
    if (column.ndim() != 1 || column.size() != columns.front().size())
      throw py::value_error("columns: expected arrays of one dimension and the same length");
    data.columns.emplace_back(column.data(), column.data() + column.size());
  }
  for (const std::string& name : names)
    data.names.append(QString::fromStdString(name));
  return data;
}

py::tuple run(const std::vector<std::string>& words, const std::optional<std::vector<std::shared_ptr<Record>>>& given,
              const std::optional<std::vector<Column>>& columns, const std::vector<std::string>& names) {
  cli::GivenInputs inputs;
  if (given) {
    inputs.records = [&given] {
      SeismogramArray made;
      for (const auto& record : *given)
        made.push_back(record->make());
      return made;
    };
  }
  if (columns) inputs.columns = [data = columnData(*columns, names)] { return data; };
  Outcome outcome = runCommand(words, std::move(inputs));
  std::vector<std::string> complaints;
  for (const QString& line : outcome.complaints)
    complaints.push_back(line.toStdString());
  return py::make_tuple(outcome.plot, outcome.code, complaints);
}

py::list options(const std::string& command) {
  py::list rows;
  for (const cli::CommandOptions& one : cli::optionTable()) {
    if (one.name != command) continue;
    for (const cli::OptionRow& row : one.options)
      rows.append(py::dict(py::arg("name") = row.longName, py::arg("values") = row.values,
                           py::arg("choices") = row.choices, py::arg("many") = row.takesMany,
                           py::arg("list") = row.isList, py::arg("may_lack") = row.valueMayLack,
                           py::arg("repeats") = row.mayRepeat, py::arg("argument") = row.isArgument,
                           py::arg("description") = row.description));
  }
  return rows;
}

int runMain(const std::vector<std::string>& words) {
  std::vector<std::string> texts = {"xov"};
  texts.insert(texts.end(), words.begin(), words.end());
  std::vector<char*> argv;
  for (std::string& text : texts)
    argv.push_back(text.data());
  argv.push_back(nullptr);
  const py::gil_scoped_release unlocked;
  return cli::runCommandLine(int(texts.size()), argv.data());
}

} // namespace

} // namespace xov::python

PYBIND11_MODULE(_core, module) {
  using namespace xov;
  module.attr("version") = version().toString().toStdString();
  module.attr("GIVEN") = cli::kGivenInput;
  python::defineRecord(module);
  python::definePlot(module);
  module.def("run", &python::run, py::arg("words"), py::arg("records") = py::none(), py::arg("columns") = py::none(),
             py::arg("names") = std::vector<std::string>());
  module.def("main", &python::runMain, py::arg("words"));
  module.def("options", &python::options, py::arg("command"));
  module.def(
      "set_threads", [](int count) { setThreadCount(count); }, py::arg("count"));
}
