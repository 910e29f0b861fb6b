"""matplotlib with its Agg backend: a line for each row."""

import matplotlib
from matplotlib.backends.backend_agg import FigureCanvasAgg
from matplotlib.figure import Figure

import rival

matplotlib.rcParams["agg.path.chunksize"] = 20000  # else millions of points exceed its cell limit


class Matplotlib:
    def prepare(self, work):
        self.figure = Figure(figsize=(work.width / 72, work.height / 72), dpi=72 * work.ratio)
        self.canvas = FigureCanvasAgg(self.figure)
        axes = self.figure.add_axes([0, 0, 1, 1])
        axes.axis("off")
        x = work.x()
        for row in range(work.rows):
            axes.plot(x, work.y(row), color="black", linewidth=1, solid_joinstyle="round")
        axes.set_xlim(0, work.width)
        axes.set_ylim(0, work.height)

    def draw(self):
        self.canvas.draw()

    def save(self, path):
        self.figure.savefig(path)

    def pdf(self, path):
        self.figure.savefig(path, format="pdf")


rival.serve(Matplotlib())
