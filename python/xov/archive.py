"""Archives of days of seismograms, and walls of drums drawn from them in several processes."""

import concurrent.futures
import datetime
import os
import re
import sys

import numpy

from . import _core
from .figure import Error
from .records import nanoseconds

_DAY = datetime.timedelta(days=1)
_FORMATS = ("pdf", "svg", "png", "tif", "jpg")


def _day_of(value):
    if isinstance(value, datetime.date) and not isinstance(value, datetime.datetime):
        return value
    seconds = nanoseconds(value) // 1_000_000_000
    return (datetime.datetime(1970, 1, 1) + datetime.timedelta(seconds=seconds)).date()


class Archive:
    """Channels of an archive in folders of days (SDS: year/network/station/channel.D/network.station.location.channel.D.year.day).

    Plot functions take it in place of data; nothing is read before. Of long spans samples are read as they are drawn.
    """

    def __init__(self, root, channels, start=None, end=None):
        self.root = os.fspath(root)
        self.channels = [channels] if isinstance(channels, str) else list(channels)
        if not self.channels or not all(isinstance(text, str) and text for text in self.channels):
            raise ValueError("channels: expected patterns as 'II.TLY.*.BHZ'")
        if not os.path.isdir(self.root):
            raise FileNotFoundError(f"{self.root}: found no folder, expected an archive of days")
        self.start, self.end = start, end

    def __repr__(self):
        span = "" if self.start is None else f", {self.start} to {self.end}"
        return f"<xov.archive {self.root}, {' '.join(self.channels)}{span}>"

    def between(self, start, end):
        """The part from one moment to another (UTC)."""
        return Archive(self.root, self.channels, _text_of(start), _text_of(end))

    def day(self, day):
        """A day (UTC): a date, or a moment in it."""
        first = _day_of(day).isoformat()
        return self.between(first, first + "T23:59:59.999")  # a sample at midnight is of the next one

    def words(self):
        """The words of a command line that stand for it."""
        span = [] if self.start is None else ["--between", self.start, self.end]
        return [*self.channels, "--archive", self.root, *span]


def _text_of(moment):
    return str(numpy.datetime64(nanoseconds(moment), "ns"))


def archive(root, channels):
    """Channels of an SDS archive by patterns NETWORK.STATION.LOCATION.CHANNEL with * and ?.

    days = xov.archive("/data/sds", "GR.BFO.*.BHZ")
    xov.drum(days.day("2011-03-11")).save("drum.pdf")
    """
    return Archive(root, channels)


def _draw_drum(days, day, path, scale, keywords):
    """Draws one drum, in a process of its own; returns what is wrong, or None."""
    from .plots import drum

    try:
        drum(days.day(day), **keywords).save(path, scale=scale)
    except (Error, OSError) as error:
        return str(error)
    return None


def _name_of(pattern):
    return re.sub(r"[^A-Za-z0-9._-]", "_", pattern)


def _all_days(days):
    if isinstance(days, tuple) and len(days) == 2:
        first, last = (_day_of(day) for day in days)
        if last < first:
            raise ValueError(f"days: found {first} to {last}, expected the first day before the last")
        return [first + i * _DAY for i in range((last - first).days + 1)]
    return [_day_of(day) for day in days]


class _Bar:
    """How many are done, on one line of a terminal; nothing elsewhere."""

    def __init__(self, total):
        self._total, self._done = total, 0
        self._shown = sys.stderr.isatty()

    def advance(self):
        self._done += 1
        if self._shown:
            end = "\n" if self._done == self._total else ""
            print(f"\rdrums {self._done}/{self._total}", end=end, file=sys.stderr, flush=True)


def drums(archive, days, out, format="png", scale=1, processes=None, client=None, **keywords):
    """Draws a drum of each day of each pattern of an archive into a folder, in several processes.

    archive: as archive() gives it.
    days: dates, or a tuple of the first and the last one.
    out: the folder, which is made. A file is named after channel and day, and appears whole or not at all; those that are
        there are left as they are, so that a call that was interrupted goes on where it stopped.
    format, scale: as Figure.save() takes them. Other keywords are those of drum().
    processes: how many (default: as many as processors); 1 draws in this process.
    client: a Dask client, whose workers draw instead. They need xov, the archive and the folder.

    Returns a dict of the days that could not be drawn, {path: reason}; empty when all is well. A worker that is killed
    ends the call with an Error; what it drew is there, and no file is half written.
    """
    if format not in _FORMATS:
        raise ValueError(f"format: found '{format}', expected one of {', '.join(_FORMATS)}")
    os.makedirs(out, exist_ok=True)
    work = []
    for pattern in archive.channels:
        of_pattern = Archive(archive.root, pattern)
        for day in _all_days(days):
            path = os.path.join(os.fspath(out), f"{_name_of(pattern)}.{day.isoformat()}.{format}")
            if not os.path.exists(path):
                work.append((of_pattern, day, path, scale, keywords))
    bar, wrong = _Bar(len(work)), {}

    def finished(path, reason):
        bar.advance()
        if reason is not None:
            wrong[path] = reason

    if client is not None:
        _on_client(client, work, finished)
    elif processes == 1:
        for item in work:
            finished(item[2], _draw_drum(*item))
    elif work:
        _in_processes(processes, work, finished)
    return wrong


def _in_processes(processes, work, finished):
    import multiprocessing

    # Fresh ones: a fork of a process with windows shares their connection to the display.
    context = multiprocessing.get_context("spawn")
    pool = concurrent.futures.ProcessPoolExecutor(processes, mp_context=context, initializer=_one_thread)
    try:
        futures = {pool.submit(_draw_drum, *item): item[2] for item in work}
        for future in concurrent.futures.as_completed(futures):
            finished(futures[future], future.result())
    except concurrent.futures.process.BrokenProcessPool:
        raise Error("a process that drew was killed; the same call draws what is missing") from None
    finally:
        pool.shutdown(cancel_futures=True)


def _one_thread():
    """Processes share the processors already."""
    _core.set_threads(1)


def _on_client(client, work, finished):
    from distributed import as_completed

    futures = {client.submit(_draw_drum, *item, pure=False): item[2] for item in work}
    for future in as_completed(list(futures)):
        finished(futures[future], future.result())
