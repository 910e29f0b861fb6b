"""Keywords as the words of a command line, and objects as the files that its options name."""

import collections.abc
import datetime
import difflib
import os
import tempfile

import numpy

from . import _core

# What a figure does by itself.
_NOT_KEYWORDS = {"--help", "--output", "--quiet", "--dump", "--xyz", "--archive", "--between", "--kiosk", "--daily"}
_OWN_NAMES = {"inventory": "stations"}


class Files:
    """Files of what a command takes from files and a program has as objects; gone when it is closed."""

    def __init__(self):
        self._folder = None
        self._count = 0

    def __enter__(self):
        return self

    def __exit__(self, *_):
        if self._folder:
            self._folder.cleanup()

    def new(self, suffix=""):
        """A name for the next one."""
        if self._folder is None:
            self._folder = tempfile.TemporaryDirectory(prefix="xov-")
        self._count += 1
        return os.path.join(self._folder.name, f"input{self._count}{suffix}")

    def keep(self, content, suffix=""):
        """The name of a file with that content."""
        name = self.new(suffix)
        with open(name, "wb") as file:
            file.write(content)
        return name


def options_of(command):
    """The options of a command by their names, with those that are no keywords left out."""
    return {row["name"]: row for row in _core.options(command) if row["name"] not in _NOT_KEYWORDS}


def _known(command, keyword, rows):
    name = "--" + _OWN_NAMES.get(keyword, keyword).replace("_", "-")
    if name in rows:
        return name
    known = [row[2:].replace("-", "_") for row in rows if row.startswith("--")]
    near = difflib.get_close_matches(keyword, known, 1)
    hint = f"; did you mean '{near[0]}'?" if near else ""
    raise TypeError(f"xov.{command}() has no keyword '{keyword}'{hint}")


def _text(value):
    if isinstance(value, datetime.datetime):
        moment = value.astimezone(datetime.timezone.utc) if value.tzinfo else value
        return moment.replace(tzinfo=None).isoformat()
    if isinstance(value, (bool, numpy.bool_)):
        raise TypeError(f"found {value}, expected a value")
    if isinstance(value, (float, numpy.floating)):
        return repr(float(value))
    if isinstance(value, os.PathLike):
        return os.fspath(value)
    return str(value)


def _is_sequence(value):
    return isinstance(value, (collections.abc.Sequence, numpy.ndarray)) and not isinstance(value, (str, bytes))


def file_of(value, files):
    """Objects of ObsPy write themselves in the formats that the library reads; arrays become columns of text."""
    if isinstance(value, (str, os.PathLike)) or not hasattr(value, "__class__"):
        return value
    if isinstance(value, (bytes, bytearray)):
        return files.keep(bytes(value))
    kind = type(value).__name__
    if kind in ("Catalog", "Event") and not hasattr(value, "write"):
        raise TypeError(f"found {kind} without write(), expected an event, a catalogue or the name of a file")
    if hasattr(value, "write") and hasattr(value, "networks"):
        name = files.new(".xml")
        value.write(name, format="STATIONXML")
        return name
    if hasattr(value, "write") and (hasattr(value, "origins") or hasattr(value, "events")):
        name = files.new(".xml")
        value.write(name, format="QUAKEML")
        return name
    if isinstance(value, numpy.ndarray) or _is_sequence(value):
        return files.keep(_columns(value), ".txt")
    if hasattr(value, "to_csv"):
        return files.keep(value.to_csv(index=False).encode(), ".csv")
    raise TypeError(f"found {kind}, expected the name of a file or an object that can be written to one")


def _columns(value):
    rows = numpy.atleast_2d(numpy.asarray(value, dtype=object))
    return "".join(" ".join(_text(cell) for cell in row) + "\n" for row in rows).encode()


def _line_file(line, files):
    """A line of points, longitude and latitude, as a file of their number and them."""
    if isinstance(line, (str, os.PathLike)):
        return line
    points = numpy.asarray(line, dtype=float)
    if points.ndim != 2 or points.shape[1] != 2:
        raise TypeError(f"found an array of shape {points.shape}, expected points of longitude and latitude")
    return files.keep((f"{len(points)}\n" + "".join(f"{x!r} {y!r}\n" for x, y in points.tolist())).encode(), ".nxy")


def words_of(command, keywords, files):
    """The options of a command line, in the order of the keywords; None and False stand for an option that is not given.

    A flag takes True; several values a tuple. A step that is done more than once takes a list of tuples.
    """
    rows = options_of(command)
    words = []
    for keyword, value in keywords.items():
        name = _known(command, keyword, rows)
        if value is None or value is False:
            continue
        row = rows[name]
        try:
            words += _option(name, row, value, files)
        except TypeError as error:
            raise TypeError(f"{keyword}: {error}") from None
    return words


def _option(name, row, value, files):
    if not row["values"]:
        if not isinstance(value, (bool, numpy.bool_)):
            raise TypeError(f"found {value!r}, expected True or False")
        return [name]
    if row["may_lack"]:
        return [name if value is True else f"{name}={_text(value)}"]
    if row["values"] == ["FILE"]:
        if name == "--polygons":
            lines = [value] if isinstance(value, (str, os.PathLike, numpy.ndarray)) else list(value)
            return [name, *(_text(_line_file(line, files)) for line in lines)]
        return [name, _text(file_of(value, files))]
    if row["list"] and _is_sequence(value):
        return [name, ",".join(_text(item) for item in value)]
    if isinstance(value, list) and value and all(_is_sequence(item) for item in value):
        return [word for item in value for word in _option(name, row, item, files)]
    if _is_sequence(value):
        return [name, *(_text(item) for item in value)]
    return [name, _text(value)]
