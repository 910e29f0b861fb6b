"""What the plot functions return."""

import os
import tempfile

from . import _core

_FORMATS = {"pdf": "pdf", "svg": "svg", "png": "png", "tif": "tif", "tiff": "tif", "jpg": "jpg", "jpeg": "jpg"}
_NOTEBOOK_SCALE = 2


class Error(Exception):
    """Data that cannot be read or drawn, in one line."""


def _format_of(name, what):
    try:
        return _FORMATS[name.lower()]
    except KeyError:
        raise ValueError(f"{what}: found '{name}', expected pdf, svg, png, tif or jpg") from None


class Figure:
    """A plot of one page or several, as it was when it was made.

    Figures draw from the arrays that they were made of. Who changes an array makes a new figure.
    """

    def __init__(self, plot, notes=()):
        self._plot = plot
        #: What was left out or taken, one line each.
        self.notes = list(notes)

    def __repr__(self):
        width, height = self.size()
        pages = "" if self.pages == 1 else f", {self.pages} pages"
        return f"<xov.Figure of {width:g} by {height:g} points{pages}>"

    @property
    def pages(self):
        """Number of pages."""
        return self._plot.pages

    def size(self, page=0):
        """Width and height of a page in points, counted from page 0."""
        return self._plot.size(page)

    def limits(self, page=0):
        """The axes of a page as (xmin, xmax, ymin, ymax)."""
        return self._plot.limits(page)

    def save(self, path, scale=1, page=None):
        """Writes the figure: .pdf, .svg, .png, .tif or .jpg, with `scale` pixels a point where it is a picture.

        Of a figure of several pages a PDF file has all, and other files the page that is named (from 0). The file
        appears whole or not at all; OSError says why it does not. Returns the figure.
        """
        path = os.fspath(path)
        kind = _format_of(os.path.splitext(path)[1][1:], "the file name's extension")
        _check_scale(scale)
        if page is None and self.pages > 1:
            if kind != "pdf":
                raise ValueError(f"page: found none, expected one of {self.pages} for a file of one page")
            _core.write_pages([self._plot], path)
        else:
            self._plot.write(page or 0, kind, path, scale)
        return self

    def bytes(self, format="pdf", scale=1, page=None):
        """The file that save() would write, as bytes."""
        kind = _format_of(format, "format")
        with tempfile.TemporaryDirectory(prefix="xov-") as folder:
            path = os.path.join(folder, "figure." + kind)
            self.save(path, scale, page)
            with open(path, "rb") as file:
                return file.read()

    def to_numpy(self, scale=1, page=0):
        """A picture of a page as an array of uint8: height × width × 4 (red, green, blue, opacity)."""
        _check_scale(scale)
        return self._plot.pixels(page, scale)

    def show(self, title="xov"):
        """Shows the pages in windows and returns when they are closed. RuntimeError where there is no display."""
        self._plot.show(title)

    def widget(self, page=0):
        """The view of a page as a PyQt6 QWidget, for layouts and splitters of a program with the system's PyQt6."""
        from PyQt6 import sip
        from PyQt6.QtWidgets import QWidget

        widget = sip.wrapinstance(self._plot.widget(page), QWidget)
        widget.figure = self  # which keeps what it shows
        return widget

    def interactive(self, page=0):
        """A widget for notebooks: the wheel zooms, with Ctrl the gain, with Shift it pans; dragging zooms to a box, with the
        middle button it pans; a double click goes back. Each step is drawn anew from all samples. Needs anywidget.
        """
        from .widget import widget_of

        return widget_of(self, page)

    def navigate(self, action, *numbers, page=0):
        """Shows another part of the data: "zoom", factor, x, y (0.5 zooms in about a point); "amplify", factor, x, y; "pan",
        shares of the width and height that is shown; "box", x0, y0, x1, y1; "back", "forward", "all". Points count from
        the upper left corner. True when that changed what is shown.
        """
        return self._plot.navigate(page, action, [float(number) for number in numbers])

    def readout(self, x, y, page=0):
        """What is at a point, in one line: position, time in UTC, amplitude; empty where nothing is shown."""
        return self._plot.readout(page, x, y)

    def on(self, signal, call, page=0):
        """Calls `call(x, y)`, in data coordinates, when the page is "clicked", or for the pointer while it is "tracked"."""
        if not callable(call):
            raise TypeError(f"call: found {type(call).__name__}, expected a function of x and y")
        self._plot.connect(page, signal, call)

    def _repr_png_(self):
        width, height = self.size()
        return self.bytes("png", _NOTEBOOK_SCALE, 0), {"width": round(width), "height": round(height)}

    def _repr_mimebundle_(self, include=None, exclude=None):
        makers = {
            "image/png": self._repr_png_,
            "image/svg+xml": lambda: self.bytes("svg", page=0).decode(),
            "application/pdf": lambda: self.bytes("pdf", page=0),
        }
        wanted = set(include) if include else {"image/png"}
        data, metadata = {}, {}
        for kind in wanted - set(exclude or ()):
            if kind == "image/png":
                data[kind], metadata[kind] = self._repr_png_()
            elif kind in makers:
                data[kind] = makers[kind]()
        return data, metadata


def _check_scale(scale):
    if not 0.1 <= scale <= 32:
        raise ValueError(f"scale: found {scale}, expected a number from 0.1 to 32")


def save_pages(path, figures):
    """Writes the pages of several figures to one PDF file, whole or not at all."""
    if _format_of(os.path.splitext(os.fspath(path))[1][1:], "the file name's extension") != "pdf":
        raise ValueError(f"found '{path}', expected a name that ends in .pdf")
    _core.write_pages([figure._plot for figure in figures], os.fspath(path))


def link(*figures):
    """Links the first pages of figures in time: mouse wheel, drags and keys move all of them over their data, in windows and
    as widgets, and where the pointer is in one the others have a line.
    """
    _core.link([(figure._plot, 0) for figure in figures])
