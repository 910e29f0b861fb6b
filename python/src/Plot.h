#pragma once

#include "apps/xov/inputs/GivenInputs.h"
#include "apps/xov/output/PlotReceiver.h"

#include <QPointer>
#include <QStringList>

#include <XOV_Graphics/views/base/XOVView.h>
#include <memory>
#include <optional>
#include <pybind11/numpy.h>
#include <pybind11/pybind11.h>
#include <string>
#include <utility>
#include <vector>

namespace xov::python {

/// The views that a command made, with all that they show. Its functions are for the thread of the QApplication.
class Plot : public cli::PlotReceiver {
public:
  ~Plot() override;

  void take(const cli::OfferedPlots& plots) override;
  void keep(std::shared_ptr<const void> shown) override;

  std::size_t pageCount() const { return pages_.size(); }
  /// Throws IndexError without such a page, and RuntimeError when its widget has been destroyed.
  XOVView& page(std::size_t index) const;

  /// Writes a page, or leaves an existing file as it was and throws OSError.
  void write(std::size_t index, const std::string& format, const std::string& path, double scale) const;
  /// Height, width and four bytes a pixel: red, green, blue, opacity, not multiplied.
  pybind11::array_t<std::uint8_t> pixels(std::size_t index, double scale) const;
  /// The address of the QWidget, which a host may give a parent. It then lives as long as that, with all it shows.
  std::uintptr_t widget(std::size_t index) const;
  void show(const std::string& title) const;
  /// Calls `call(x, y)` in data coordinates at each signal of that name: "clicked" or "tracked".
  void connect(std::size_t index, const std::string& signal, pybind11::function call) const;

  /// Moves a page over its data, as the mouse does in a window: "zoom" by a factor about a point, "amplify" so too,
  /// "pan" by shares of what is shown, "box" to the corners of one, "back", "forward" and "all" without numbers.
  /// Points count from the upper left corner. False where that changed nothing.
  bool navigate(std::size_t index, const std::string& action, const std::vector<double>& numbers) const;
  /// What is told of a point, counted from the upper left corner, in one line.
  std::string readout(std::size_t index, double x, double y) const;

private:
  std::vector<QPointer<XOVView>> pages_;
  std::vector<std::shared_ptr<const void>> kept_;
};

/// What a run of a command left.
struct Outcome {
  std::shared_ptr<Plot> plot;
  int code = 0;           ///< 0, 1 or 2, as of the command
  QStringList complaints; ///< one line each
};

/// Runs a command on the words of a command line and what is given in place of files.
Outcome runCommand(const std::vector<std::string>& words, cli::GivenInputs inputs);

/// Links pages in time: mouse and keys move all of them over their data.
void linkPlots(const std::vector<std::pair<std::shared_ptr<Plot>, std::size_t>>& pages);

/// The pages of several plots in one PDF file; throws OSError.
void writePages(const std::vector<std::shared_ptr<Plot>>& plots, const std::string& path);

void definePlot(pybind11::module_& module);

} // namespace xov::python
