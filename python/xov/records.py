"""Records out of arrays and of what offers the attributes of ObsPy's traces."""

import collections.abc
import datetime
import io
import os

import numpy

from . import _core

_NANOSECONDS = 1_000_000_000
_NANOSECONDS_PER_MILLISECOND = 1_000_000
_EPOCH = datetime.datetime(1970, 1, 1, tzinfo=datetime.timezone.utc)
_SAC_UNSET = -12345

# Names that people use, and the header's.
_NAMES = {
    "network": "knetwk",
    "station": "kstnm",
    "location": "khole",
    "channel": "kcmpnm",
    "latitude": "stla",
    "longitude": "stlo",
    "elevation": "stel",
    "event_latitude": "evla",
    "event_longitude": "evlo",
    "event_depth": "evdp",
    "magnitude": "mag",
    "distance": "gcarc",
    "azimuth": "az",
    "back_azimuth": "baz",
}


def nanoseconds(time):
    """A moment as nanoseconds since 1970 (UTC).

    It may be a text in ISO form, a datetime (UTC where it has no zone), a numpy.datetime64, seconds since 1970, or what has
    nanoseconds as the attribute `ns`, as ObsPy's UTCDateTime.
    """
    if hasattr(time, "ns"):
        return int(time.ns)
    if isinstance(time, numpy.datetime64):
        return int(time.astype("datetime64[ns]").astype("int64"))
    if isinstance(time, str):
        text = time.strip()
        try:
            return nanoseconds(numpy.datetime64(text[:-1] if text.endswith("Z") else text))
        except ValueError:
            raise ValueError(f"start: found '{time}', expected a time as 2011-03-11T05:46:23.5") from None
    if isinstance(time, datetime.datetime):
        moment = time if time.tzinfo else time.replace(tzinfo=datetime.timezone.utc)
        since = moment - _EPOCH
        return (since.days * 86400 + since.seconds) * _NANOSECONDS + since.microseconds * 1000
    if isinstance(time, (int, float)) and not isinstance(time, bool):
        if not numpy.isfinite(time):
            raise ValueError(f"start: found {time}, expected a finite number of seconds since 1970")
        return round(time * _NANOSECONDS)
    raise TypeError(f"start: found {type(time).__name__}, expected a time")


def samples_of(values):
    """The values as an array of float32 in one piece: the same memory where they are so already. Masked ones are gaps."""
    if isinstance(values, numpy.ma.MaskedArray):
        values = values.astype(numpy.float32).filled(numpy.nan)
    array = numpy.asarray(values)
    if array.dtype.kind not in "fiub":
        raise TypeError(f"samples: found an array of {array.dtype}, expected numbers")
    if array.ndim != 1:
        raise ValueError(f"samples: found {array.ndim} dimensions, expected 1")
    with numpy.errstate(over="ignore"):  # what is beyond single precision is infinite, and a gap
        return numpy.ascontiguousarray(array, dtype=numpy.float32)


def _start_header(start, begin=0.0):
    """Reference time in milliseconds, and what is left of the start as begin time."""
    whole, rest = divmod(nanoseconds(start), _NANOSECONDS_PER_MILLISECOND)
    return {"start": whole, "b": begin + rest / _NANOSECONDS}


def _put_picks(header, picks):
    """Puts (name, seconds) in the first free fields; the first one that is a P is the first arrival."""
    free = [f"t{i}" for i in range(10)]
    for name, seconds in picks:
        if name.upper().startswith("P") and "a" not in header:
            header.update(a=seconds, ka=name)
        elif free:
            field = free.pop(0)
            header.update({field: seconds, "k" + field: name})


class Record:
    """A trace: samples with an interval, a start, codes and places.

    samples: one dimension. float32 in one piece is drawn from where it is; other numbers are converted once, masked
        ones are gaps, and so is NaN.
    delta: seconds between samples, above 0.
    start: the first sample's time (UTC): a text, a datetime, numpy.datetime64, seconds since 1970, an ObsPy UTCDateTime.
    network, station, location, channel: codes.
    latitude, longitude: of the station in degrees; elevation in m.
    event_latitude, event_longitude: in degrees; event_depth in km; magnitude.
    distance: degrees; azimuth, back_azimuth: degrees clockwise from north. They follow from places unless given.
    origin: the origin time of the event, as start, or seconds after it.
    picks: pairs of a name and a time, as start, or seconds after it; or a dict of these.
    Other keywords are header values by their SAC names, as cmpaz.
    """

    def __init__(self, samples, delta, start=None, *, origin=None, picks=(), path="", **header):
        values = {_NAMES.get(name, name): value for name, value in header.items() if value is not None}
        if start is not None:
            values.update(_start_header(start, values.get("b", 0.0)))
        if origin is not None:
            values["o"] = self._after(start, origin, values)
        pairs = picks.items() if isinstance(picks, collections.abc.Mapping) else picks
        _put_picks(values, [(str(name), self._after(start, time, values)) for name, time in pairs])
        try:
            interval = float(delta)
        except (TypeError, ValueError):
            raise TypeError(f"delta: found {delta!r}, expected seconds above 0") from None
        self._record = _core.Record(samples_of(samples), interval, values, os.fspath(path))

    @staticmethod
    def _after(start, time, values):
        """Seconds from the reference time to a moment, or of seconds after the start."""
        begin = values.get("b", 0.0)
        if isinstance(time, (int, float)):
            return begin + float(time)
        if start is None:
            raise ValueError("a time without a start of the record: expected seconds")
        return (nanoseconds(time) - values["start"] * _NANOSECONDS_PER_MILLISECOND) / _NANOSECONDS

    @property
    def samples(self):
        """The array that is drawn."""
        return self._record.samples

    @property
    def delta(self):
        """Seconds between samples."""
        return self._record.delta

    def __len__(self):
        return len(self._record)

    def __repr__(self):
        return f"<xov.Record {self._record.name}, {len(self)} samples every {self.delta:g} s>"


def _sac_header(sac):
    """The header that a trace keeps of the SAC file that it came from."""
    known = {"o", "a", "f", "stla", "stlo", "stel", "stdp", "evla", "evlo", "evdp", "mag", "dist", "az", "baz", "gcarc"}
    known |= {"cmpaz", "cmpinc", "idep", "ko", "ka", "kf", "kuser0"}
    known |= {f"t{i}" for i in range(10)} | {f"kt{i}" for i in range(10)}
    places = ("stla", "stlo", "evla", "evlo")
    if sac.get("lcalda") == 1 and all(sac.get(name, _SAC_UNSET) != _SAC_UNSET for name in places):
        known -= {"dist", "az", "baz", "gcarc"}  # which follow from the places, and which ObsPy has put there itself
    header = {}
    for name, value in sac.items():
        if name not in known or value is None:
            continue
        if isinstance(value, str):
            if value.strip() not in ("", str(_SAC_UNSET)):
                header[name] = value
        elif value != _SAC_UNSET:
            header[name] = int(value) if name == "idep" else float(value)
    return header


def _sac_reference(sac):
    """The reference time of such a header in milliseconds; None where it has none."""
    fields = [sac.get(name) for name in ("nzyear", "nzjday", "nzhour", "nzmin", "nzsec", "nzmsec")]
    if any(value is None or value == _SAC_UNSET for value in fields):
        return None
    year, day, hour, minute, second, millisecond = (int(value) for value in fields)
    moment = datetime.datetime(year, 1, 1, tzinfo=datetime.timezone.utc) + datetime.timedelta(
        days=day - 1, hours=hour, minutes=minute, seconds=second, milliseconds=millisecond
    )
    return (moment - _EPOCH) // datetime.timedelta(milliseconds=1)


def _of_trace(trace):
    """A record of what has samples as `data` and a header as `stats`."""
    stats = trace.stats
    header = {}
    sac = stats.get("sac") if hasattr(stats, "get") else None
    start = nanoseconds(stats.starttime)
    reference = _sac_reference(sac) if sac else None
    if sac:
        header.update(_sac_header(sac))
    if reference is None:
        header.update(_start_header(stats.starttime))
    else:
        header["start"] = reference
        header["b"] = (start - reference * _NANOSECONDS_PER_MILLISECOND) / _NANOSECONDS
    for name in ("network", "station", "location", "channel"):
        if text := getattr(stats, name, ""):
            header[_NAMES[name]] = str(text)
    places = stats.get("coordinates") if hasattr(stats, "get") else None
    for name in ("latitude", "longitude", "elevation"):
        if places and places.get(name) is not None:
            header.setdefault(_NAMES[name], float(places[name]))
    return _core.Record(samples_of(trace.data), float(stats.delta), header, "")


def _is_trace(item):
    return hasattr(item, "stats") and hasattr(item, "data")


def _is_path(item):
    return isinstance(item, (str, os.PathLike))


def _is_bytes(item):
    return isinstance(item, (bytes, bytearray, memoryview, io.IOBase)) or hasattr(item, "read")


def seismograms(data, files):
    """What a command draws: its words of files, or the records that are given in their place.

    data: a Record, an ObsPy Trace or Stream, the name of a file, folder or pattern, bytes or an open file, or several of one
        of these kinds. `files` keeps bytes as files.
    """
    if hasattr(data, "words"):  # an archive
        return data.words(), None
    items = [data] if isinstance(data, Record) or _is_trace(data) or _is_path(data) or _is_bytes(data) else data
    try:
        items = list(items)
    except TypeError:
        raise TypeError(
            f"found {type(data).__name__}, expected records, ObsPy traces or a stream, or names of files"
        ) from None
    if items and all(_is_path(item) for item in items):
        return [os.fspath(item) for item in items], None
    if items and all(_is_bytes(item) for item in items):
        return [files.keep(item.read() if hasattr(item, "read") else bytes(item)) for item in items], None
    records = []
    for item in items:
        if isinstance(item, Record):
            records.append(item._record)
        elif _is_trace(item):
            records.append(_of_trace(item))
        else:
            raise TypeError(f"found {type(item).__name__}, expected all records, all traces or all names of files")
    if not records:
        raise ValueError("found no record, expected at least one")
    return [_core.GIVEN], records
