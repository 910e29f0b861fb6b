"""Plots of seismograms and other data, drawn from NumPy arrays and ObsPy objects by the XOV Graphics library.

One function a plot, with the options of the command `xov` as keywords, each returns a Figure:

    import xov, numpy
    record = xov.Record(numpy.random.randn(100000), delta=0.01, start="2011-03-11T05:46:00", station="BFO")
    figure = xov.section(record, filter=("bandpass", 1, 5))
    figure.save("section.pdf")

Errors are exceptions with one line of text: TypeError and ValueError for what was asked wrongly, xov.Error for data that
cannot be read or drawn, OSError for files that cannot be written. Plots are drawn in the thread that draws the first one;
several processes may draw at the same time.
"""

from ._qt import refuse_another_qt

refuse_another_qt()

from . import _core  # noqa: E402
from .archive import archive, drums  # noqa: E402
from .figure import Error, Figure, link, save_pages  # noqa: E402
from .plots import (  # noqa: E402
    drum,
    fk,
    grid,
    hist,
    map,
    mechanism,
    monitor,
    motion,
    panels,
    ppsd,
    scatter,
    section,
    spectrogram,
    spectrum,
    stack,
    three,
    xy,
)
from .records import Record  # noqa: E402

__version__ = _core.version
set_threads = _core.set_threads

__all__ = [
    "Error",
    "Figure",
    "Record",
    "archive",
    "drum",
    "drums",
    "fk",
    "grid",
    "hist",
    "link",
    "map",
    "mechanism",
    "monitor",
    "motion",
    "panels",
    "ppsd",
    "save_pages",
    "scatter",
    "section",
    "set_threads",
    "spectrogram",
    "spectrum",
    "stack",
    "three",
    "xy",
]
