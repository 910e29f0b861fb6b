#include "python/src/Plot.h"

#include "apps/xov/commands/CommandLine.h"
#include "apps/xov/terminal/Listener.h"
#include "python/src/Application.h"
#include "python/src/HeldObject.h"

#include <QImage>

#include <XOV_Graphics/base/FileName.h>
#include <XOV_Graphics/platform/PdfDocument.h>
#include <XOV_Graphics/views/navigation/LinkedPlots.h>
#include <XOV_Graphics/views/navigation/PlotNavigator.h>
#include <algorithm>
#include <cmath>
#include <cstring>
#include <pybind11/stl.h>
#include <utility>

namespace py = pybind11;

namespace xov::python {

namespace {

[[noreturn]] void failToWrite(const QString& error) {
  PyErr_SetString(PyExc_OSError, error.toUtf8().constData());
  throw py::error_already_set();
}

struct Writer {
  const char* format;
  bool (XOVView::*write)(const QString& path, QString* error);
};

constexpr Writer kWriters[] = {
    {"pdf", &XOVView::writePDFToFile}, {"svg", &XOVView::writeSVGToFile}, {"png", &XOVView::writePNGToFile},
    {"tif", &XOVView::writeTIFToFile}, {"jpg", &XOVView::writeJPGToFile},
};

PlotNavigator* navigatorOf(XOVView& view) {
  auto* navigator = view.findChild<PlotNavigator*>(QString(), Qt::FindDirectChildrenOnly);
  return navigator != nullptr ? navigator : new PlotNavigator(&view);
}

/// A view that is exported with so many pixels a point while this lives.
class AtScale {
public:
  AtScale(XOVView& view, double scale) : view_(view), before_(view.exportPixelRatio()) {
    view_.setExportPixelRatio(scale);
  }
  ~AtScale() { view_.setExportPixelRatio(before_); }
  AtScale(const AtScale&) = delete;
  AtScale& operator=(const AtScale&) = delete;

private:
  XOVView& view_;
  double before_;
};

// Keeps what a view shows for as long as the view lives.
class Keeper : public QObject {
public:
  Keeper(QObject* view, std::vector<std::shared_ptr<const void>> kept) : QObject(view), kept_(std::move(kept)) {}

private:
  std::vector<std::shared_ptr<const void>> kept_;
};

/// Hears a command, and ends it where the user presses Ctrl-C.
class Hearing : public cli::Listener {
public:
  explicit Hearing(QStringList& complaints) : complaints_(complaints) {}

  void said(const QString& text) override { complaints_.append(text); }
  void advanced(const QString& /*what*/, std::int64_t /*done*/, std::int64_t /*total*/) override {
    const py::gil_scoped_acquire lock;
    if (PyErr_CheckSignals() != 0) throw py::error_already_set();
  }

private:
  QStringList& complaints_;
};

} // namespace

Plot::~Plot() {
  for (const auto& page : pages_) {
    if (page && page->parent() == nullptr) delete page;
  }
}

void Plot::take(const cli::OfferedPlots& plots) {
  for (std::size_t i = 0; i < plots.pages; ++i) {
    std::unique_ptr<XOVView> page = plots.make(i, {});
    new Keeper(page.get(), std::exchange(kept_, {}));
    pages_.emplace_back(page.release());
  }
}

void Plot::keep(std::shared_ptr<const void> shown) { kept_.push_back(std::move(shown)); }

XOVView& Plot::page(std::size_t index) const {
  needApplication();
  if (index >= pages_.size())
    throw py::index_error("found page " + std::to_string(index) + ", expected one below " +
                          std::to_string(pages_.size()));
  if (!pages_[index]) throw std::runtime_error("the widget of this figure has been destroyed");
  return *pages_[index];
}

void Plot::write(std::size_t index, const std::string& format, const std::string& path, double scale) const {
  XOVView& view = page(index);
  const auto* writer = std::ranges::find(kWriters, format, &Writer::format);
  if (writer == std::end(kWriters)) throw py::value_error("format: found '" + format + "'");
  QString error;
  bool written = false;
  {
    const py::gil_scoped_release unlocked;
    const AtScale drawn(view, scale);
    written = (view.*writer->write)(fileNameFromBytes(path), &error);
  }
  if (!written) failToWrite(error);
}

py::array_t<std::uint8_t> Plot::pixels(std::size_t index, double scale) const {
  XOVView& view = page(index);
  QImage image;
  {
    const py::gil_scoped_release unlocked;
    const AtScale drawn(view, scale);
    image = view.snapshot().convertToFormat(QImage::Format_RGBA8888);
  }
  if (image.isNull()) throw std::bad_alloc();
  constexpr py::ssize_t kChannels = 4;
  py::array_t<std::uint8_t> pixels({py::ssize_t(image.height()), py::ssize_t(image.width()), kChannels});
  for (int y = 0; y < image.height(); ++y)
    std::memcpy(pixels.mutable_data(y, 0, 0), image.constScanLine(y), std::size_t(image.width() * kChannels));
  return pixels;
}

std::uintptr_t Plot::widget(std::size_t index) const {
  return reinterpret_cast<std::uintptr_t>(static_cast<QWidget*>(&page(index)));
}

void Plot::show(const std::string& title) const {
  needApplication();
  if (!hasWindows()) throw std::runtime_error("there is no display to show a window on");
  for (std::size_t i = 0; i < pages_.size(); ++i) {
    XOVView& view = page(i);
    view.setWindowTitle(QString::fromStdString(title));
    view.show();
  }
  runUntilWindowsAreClosed();
}

void Plot::connect(std::size_t index, const std::string& signal, py::function call) const {
  XOVView& view = page(index);
  const auto told = signal == "clicked" ? &XOVView::clicked : signal == "tracked" ? &XOVView::tracked : nullptr;
  if (told == nullptr) throw py::value_error("found the signal '" + signal + "', expected 'clicked' or 'tracked'");
  const std::shared_ptr<py::object> callback = heldObject(std::move(call)); // whoever destroys the view
  QObject::connect(&view, told, &view, [callback](QPointF position) {
    const py::gil_scoped_acquire lock;
    try {
      (*callback)(position.x(), position.y());
    } catch (py::error_already_set& error) {
      error.discard_as_unraisable("a callback of a figure");
    }
  });
}

bool Plot::navigate(std::size_t index, const std::string& action, const std::vector<double>& numbers) const {
  XOVView& view = page(index);
  PlotNavigator* const navigator = navigatorOf(view);
  const auto number = [&](std::size_t i) { return i < numbers.size() ? numbers[i] : std::nan(""); };
  const auto point = [&](std::size_t i) { return QPointF(number(i), view.bounds().height() - number(i + 1)); };
  const PlotLimits before = view.limits();
  const bool could = navigator->canGoBack();
  if (action == "zoom")
    navigator->zoom(number(0), point(1));
  else if (action == "amplify")
    navigator->amplify(number(0), point(1));
  else if (action == "pan")
    navigator->pan(number(0), number(1));
  else if (action == "box")
    navigator->zoomTo(QRectF(point(0), point(2)).normalized());
  else if (action == "back")
    navigator->goBack();
  else if (action == "forward")
    navigator->goForward();
  else if (action == "all")
    navigator->showAll();
  else
    throw py::value_error("found the action '" + action + "'");
  return !(view.limits() == before) || navigator->canGoBack() != could;
}

std::string Plot::readout(std::size_t index, double x, double y) const {
  const XOVView& view = page(index);
  return view.readout(QPointF(x, view.bounds().height() - y)).text().toStdString();
}

Outcome runCommand(const std::vector<std::string>& words, cli::GivenInputs inputs) {
  needApplication();
  Outcome outcome{std::make_shared<Plot>(), 0, {}};
  const py::gil_scoped_release unlocked;
  Hearing hearing(outcome.complaints);
  const cli::ListenerScope listening(&hearing);
  const cli::PlotReceiverScope receiving(outcome.plot.get());
  const cli::GivenInputsScope giving(std::move(inputs));
  outcome.code = int(cli::CommandLine().run(words));
  return outcome;
}

void writePages(const std::vector<std::shared_ptr<Plot>>& plots, const std::string& path) {
  std::vector<View*> views;
  for (const auto& plot : plots) {
    for (std::size_t i = 0; i < plot->pageCount(); ++i)
      views.push_back(&plot->page(i));
  }
  QString error;
  bool written = false;
  {
    const py::gil_scoped_release unlocked;
    written = writePDFPages(fileNameFromBytes(path), views, &error);
  }
  if (!written) failToWrite(error);
}

void linkPlots(const std::vector<std::pair<std::shared_ptr<Plot>, std::size_t>>& pages) {
  LinkedPlots* linked = nullptr;
  for (const auto& [plot, index] : pages) {
    PlotNavigator* const navigator = navigatorOf(plot->page(index));
    navigator->setCrossHair(PlotNavigator::CrossHair::Vertical);
    if (linked == nullptr) linked = new LinkedPlots(navigator); // which goes with the first of them
    linked->add(*navigator);
  }
}

void definePlot(py::module_& module) {
  py::class_<Plot, std::shared_ptr<Plot>>(module, "Plot")
      .def_property_readonly("pages", &Plot::pageCount)
      .def("size",
           [](const Plot& plot, std::size_t page) {
             const QSizeF size = plot.page(page).bounds().size();
             return std::pair(size.width(), size.height());
           })
      .def("limits",
           [](const Plot& plot, std::size_t page) {
             const PlotLimits limits = plot.page(page).limits();
             return std::tuple(limits.xmin, limits.xmax, limits.ymin, limits.ymax);
           })
      .def("title", [](const Plot& plot, std::size_t page) { return plot.page(page).plotTitle().toStdString(); })
      .def("write", &Plot::write, py::arg("page"), py::arg("format"), py::arg("path"), py::arg("scale"))
      .def("pixels", &Plot::pixels, py::arg("page"), py::arg("scale"))
      .def("widget", &Plot::widget, py::arg("page"))
      .def("show", &Plot::show, py::arg("title"))
      .def("navigate", &Plot::navigate, py::arg("page"), py::arg("action"), py::arg("numbers"))
      .def("readout", &Plot::readout, py::arg("page"), py::arg("x"), py::arg("y"))
      .def("connect", &Plot::connect, py::arg("page"), py::arg("signal"), py::arg("call"));
  module.def("link", &linkPlots, py::arg("pages"));
  module.def("write_pages", &writePages, py::arg("plots"), py::arg("path"));
}

} // namespace xov::python
