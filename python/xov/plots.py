"""One function a plot. Their keywords are the options of the command of the same name."""

import os
import re
import warnings

import numpy

from . import _core
from .figure import Error, Figure
from .keywords import Files, file_of, options_of, words_of
from .records import seismograms

_FAILED = 1
_USAGE = 2


def _draw(command, words, **given):
    plot, code, complaints = _core.run([command, *words], **given)
    lines = [line.replace(_core.GIVEN, "the data: ").replace("the data: :", "the data:") for line in complaints]
    if code == _USAGE:
        raise ValueError(re.sub(r" \(see '.*'\)$", f" (see help(xov.{command}))", lines[-1]))
    if plot.pages == 0:
        raise Error("; ".join(lines) if lines else "there is nothing to draw")
    if code == _FAILED:
        warnings.warn("; ".join(lines), stacklevel=3)
    return Figure(plot, lines)


def _of_records(command, data, keywords):
    with Files() as files:
        names, records = seismograms(data, files)
        return _draw(command, names + words_of(command, keywords, files), records=records)


def _column(values, name):
    array = numpy.ma.filled(numpy.ma.asarray(values).astype(numpy.float64), numpy.nan)
    if array.ndim != 1:
        raise ValueError(f"{name}: found {array.ndim} dimensions, expected 1")
    with numpy.errstate(over="ignore"):
        return numpy.ascontiguousarray(array, dtype=numpy.float32)


def _name(values):
    name = getattr(values, "name", None)
    return name if isinstance(name, str) else ""


def _of_columns(command, columns, keywords):
    with Files() as files:
        words = words_of(command, keywords, files)
        if len(columns) == 1 or columns[1] is None:
            if isinstance(columns[0], (str, os.PathLike)):
                return _draw(command, [os.fspath(columns[0]), *words])
        if any(column is None for column in columns):
            raise TypeError("found one argument, expected the name of a file or both x and y")
        arrays = [_column(column, name) for column, name in zip(columns, "xy")]
        if len({array.size for array in arrays}) > 1:
            raise ValueError(f"found {arrays[0].size} and {arrays[1].size} values, expected as many of both")
        return _draw(command, [_core.GIVEN, *words], columns=arrays, names=[_name(column) for column in columns])


def section(data, **keywords):
    """A record section: one trace above the other.

    xov.section(stream, inventory=inventory, event=event, distance_axis="km").save("section.pdf")
    """
    return _of_records("section", data, keywords)


def stack(data, **keywords):
    """Traces over each other, or in bands with style="bands".

    xov.stack(stream, style="bands").save("bands.png", scale=2)
    """
    return _of_records("stack", data, keywords)


def panels(data, **keywords):
    """Pairs of traces in small panels.

    xov.panels([observed, computed]).save("pairs.pdf")
    """
    return _of_records("panels", data, keywords)


def three(data, **keywords):
    """The three components of a station.

    xov.three(stream.select(station="BFO")).save("bfo.pdf")
    """
    return _of_records("three", data, keywords)


def motion(data, **keywords):
    """The path of the ground at a station.

    xov.motion(stream, around=("P", -1, 3)).save("motion.pdf")
    """
    return _of_records("motion", data, keywords)


def drum(data, **keywords):
    """A continuous recording in rows.

    xov.drum(day, row_duration=3600, filter=("highpass", 1)).save("drum.pdf")
    """
    return _of_records("drum", data, keywords)


def monitor(data, **keywords):
    """Recordings on a real-time display, as it stands when they have been played.

    xov.monitor(stream).save("monitor.png")
    """
    return _of_records("monitor", data, keywords)


def spectrogram(data, **keywords):
    """The power of a recording over time and frequency.

    xov.spectrogram(trace, log_frequency=True).save("spectrogram.png", scale=2)
    """
    return _of_records("spectrogram", data, keywords)


def spectrum(data, **keywords):
    """Power spectra of recordings over frequency.

    xov.spectrum(stream, noise_models=True).save("spectra.pdf")
    """
    return _of_records("spectrum", data, keywords)


def ppsd(data, **keywords):
    """How often the noise of a recording has which power.

    xov.ppsd(days, stations=inventory).save("noise.pdf")
    """
    return _of_records("ppsd", data, keywords)


def fk(data, **keywords):
    """The beam power of an array over slowness: of records, or as an array of two dimensions, whose first row is the
    northernmost, from -limit to limit in s/km either way.

    xov.fk(stream, inventory=inventory, band=(0.5, 2)).save("fk.pdf")
    """
    if not (isinstance(data, numpy.ndarray) and data.ndim == 2):
        return _of_records("fk", data, keywords)
    limit = keywords.pop("limit", None)
    if isinstance(limit, bool) or not isinstance(limit, (int, float)) or not 0 < limit < 1e6:
        raise ValueError(f"limit: found {limit!r}, expected the slowness at the array's edges in s/km")
    if min(data.shape) < 2:
        raise ValueError(f"data: found an array of shape {data.shape}, expected at least 2 rows and columns")
    x, y = numpy.meshgrid(numpy.linspace(-limit, limit, data.shape[1]), numpy.linspace(limit, -limit, data.shape[0]))
    rows = numpy.column_stack([x.ravel(), y.ravel(), numpy.asarray(data, dtype=float).ravel()])
    with Files() as files:
        text = "".join(f"{a!r} {b!r} {c!r}\n" for a, b, c in rows.tolist())
        name = files.keep(text.encode(), ".xyz")
        return _draw("fk", [name, *words_of("fk", {"title": "", **keywords}, files)])


def xy(x, y=None, **keywords):
    """A line through points: arrays, lists or columns of a frame; or the name of a file of columns.

    xov.xy(periods, velocities, xlabel="Period (s)", log_x=True).save("dispersion.pdf")
    """
    return _of_columns("xy", (x, y), keywords)


def scatter(x, y=None, **keywords):
    """Points as circles: arrays, lists or columns of a frame; or the name of a file of columns.

    xov.scatter(frame["depth"], frame["residual"]).save("residuals.pdf")
    """
    return _of_columns("scatter", (x, y), keywords)


def hist(values, **keywords):
    """A histogram of values: an array, a list or a column of a frame; or the name of a file of columns.

    xov.hist(residuals, bins=50).save("histogram.pdf")
    """
    return _of_columns("hist", (values,), keywords)


def grid(values, **keywords):
    """A grid of values as a coloured picture: an array of two dimensions, whose first row is on top; or the name of a
    file. extent=(left, right, bottom, top) labels its edges.

    xov.grid(power, extent=(0, 10, 0, 5), color_bar="dB").save("grid.png")
    """
    with Files() as files:
        if isinstance(values, (str, os.PathLike)):
            return _draw("grid", [os.fspath(values), *words_of("grid", keywords, files)])
        array = numpy.ma.filled(numpy.ma.asarray(values).astype(numpy.float32), numpy.nan)
        if array.ndim != 2 or 0 in array.shape:
            raise ValueError(f"values: found an array of shape {array.shape}, expected rows and columns")
        keywords = {"title": "", **keywords, "rows": array.shape[0], "columns": array.shape[1], "type": "float32"}
        keywords["byte_order"] = "little"
        name = files.keep(array.astype("<f4").tobytes())
        return _draw("grid", [name, *words_of("grid", keywords, files)])


def map(**keywords):
    """A map of events, stations, vectors and plate boundaries: catalogues, inventories, arrays or names of files.

    xov.map(events=catalogue, stations=inventory, plates="bird", region=(120, 150, 20, 50)).save("map.png", scale=2)
    """
    named = [keywords.get(name) for name in ("events", "stations", "vectors", "polygons")]
    if not any(isinstance(value, (str, os.PathLike)) for value in named):
        keywords = {"title": "", **keywords}  # else it is named after a file
    with Files() as files:
        return _draw("map", words_of("map", keywords, files))


def mechanism(events=None, **keywords):
    """Focal mechanisms as beach balls: a catalogue or the name of a file, or tensor=(...), or strike=, dip= and rake=.

    xov.mechanism(strike=203, dip=10, rake=88).save("tohoku.pdf")
    """
    with Files() as files:
        words = [] if events is None else [os.fspath(file_of(events, files))]
        return _draw("mechanism", words + words_of("mechanism", keywords, files))


def _document(function):
    """Adds to the docstring what the keywords are."""
    lines = [function.__doc__.rstrip(), "", "    Keywords:"]
    for name, row in options_of(function.__name__).items():
        if not name.startswith("--"):
            continue
        values = f" ({', '.join(row['values'])})" if row["values"] else " (True)"
        choices = f": {', '.join(row['choices'])}" if row["choices"] else ""
        lines.append(f"        {name[2:].replace('-', '_')}{values}: {row['description']}{choices}")
    function.__doc__ = "\n".join(lines)


for _plot in (section, stack, panels, three, motion, drum, monitor, spectrogram, spectrum, ppsd, fk, xy, scatter, hist,
              grid, map, mechanism):
    _document(_plot)
