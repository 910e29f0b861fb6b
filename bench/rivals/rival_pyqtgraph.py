"""pyqtgraph with peak downsampling and clipping: a curve for each row."""

import os

os.environ.setdefault("QT_QPA_PLATFORM", "offscreen")

import pyqtgraph

import rival


class PyQtGraph:
    def prepare(self, work):
        os.environ["QT_SCALE_FACTOR"] = str(work.ratio)
        self.application = pyqtgraph.mkQApp()
        pyqtgraph.setConfigOptions(antialias=True, background="w", foreground="k")
        self.widget = pyqtgraph.PlotWidget()
        self.widget.resize(int(work.width), int(work.height))
        plot = self.widget.getPlotItem()
        plot.hideAxis("left")
        plot.hideAxis("bottom")
        plot.setDownsampling(auto=True, mode="peak")
        plot.setClipToView(True)
        x = work.x()
        self.curves = [plot.plot(x, work.y(row), pen=pyqtgraph.mkPen("k", width=1)) for row in range(work.rows)]
        plot.setRange(xRange=(0, work.width), yRange=(0, work.height), padding=0)
        self.picture = self.widget.grab()

    def draw(self):
        for curve in self.curves:  # as after a change of the range, which alone makes it reduce the samples anew
            curve.viewRangeChanged()
        self.picture = self.widget.grab()

    def redraw(self):
        """With what it keeps from the drawing before."""
        self.picture = self.widget.grab()

    def save(self, path):
        self.picture.save(path)


rival.serve(PyQtGraph())
