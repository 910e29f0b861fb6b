"""Streams, catalogues and inventories of the real ObsPy, and the pictures that the command draws of the same as files."""

import warnings

import numpy
import pytest

import xov

obspy = pytest.importorskip("obspy", reason="ObsPy is not installed")
pytestmark = pytest.mark.filterwarnings("ignore")


@pytest.fixture(scope="module")
def stream():
    return obspy.read()


def written(stream, tmp_path, kind):
    paths = []
    for i, trace in enumerate(stream):
        paths.append(str(tmp_path / f"{i}.{kind.lower()}"))
        trace.write(paths[-1], format=kind)
    return paths


@pytest.mark.parametrize("kind", ["SAC", "MSEED"])
@pytest.mark.parametrize("name", ["section", "stack", "three"])
def test_a_stream_is_drawn_as_the_command_draws_its_files(stream, tmp_path, command, name, kind):
    assert getattr(xov, name)(stream).bytes("png") == command(name, *written(stream, tmp_path, kind))


def test_a_stream_with_a_step_is_drawn_so_too(stream, tmp_path, command):
    wanted = command("section", *written(stream, tmp_path, "SAC"), "--filter", "bandpass", 1, 5)
    assert xov.section(stream, filter=("bandpass", 1, 5)).bytes("png") == wanted


@pytest.mark.parametrize("kind", ["float32", "float64", "int32"])
def test_samples_of_any_kind_are_drawn_as_from_a_file(stream, tmp_path, command, kind):
    trace = stream[0].copy()
    trace.data = (trace.data * (100 if kind == "int32" else 1)).astype(kind)
    assert xov.section(trace).bytes("png") == command("section", *written([trace], tmp_path, "SAC"))


def test_starts_between_milliseconds_are_kept(stream, tmp_path, command):
    shifted = stream.copy()
    for i, trace in enumerate(shifted):
        trace.stats.starttime += 0.0004 + 0.0123 * i
    assert xov.section(shifted).bytes("png") == command("section", *written(shifted, tmp_path, "SAC"))


def test_pieces_of_a_channel_are_pieces(stream, tmp_path, command):
    trace = stream[0]
    start = trace.stats.starttime
    pieces = obspy.Stream([trace.slice(start, start + 8), trace.slice(start + 15, start + 25)])
    path = tmp_path / "pieces.mseed"
    pieces.write(str(path), format="MSEED")
    assert xov.drum(pieces, row_duration=30).bytes("png") == command("drum", path, "--row-duration", 30)


def test_masked_samples_of_a_merged_stream_are_a_gap(stream):
    trace = stream[0]
    start = trace.stats.starttime
    merged = obspy.Stream([trace.slice(start, start + 8), trace.slice(start + 15, start + 25)]).merge()
    assert numpy.ma.is_masked(merged[0].data)
    samples = trace.slice(start, start + 25).data.astype(numpy.float32)
    samples[801:1500] = numpy.nan  # the samples after 8 s and before 15 s, at 100 Hz
    stats = trace.stats
    codes = {"network": stats.network, "station": stats.station, "channel": stats.channel}
    wanted = xov.section(xov.Record(samples, 0.01, stats.starttime, **codes))
    assert (xov.section(merged).to_numpy() == wanted.to_numpy()).all()


def test_a_trace_read_from_sac_keeps_its_header(stream, tmp_path, command):
    path = tmp_path / "x.sac"
    trace = stream[0].copy()
    trace.stats.sac = {"stla": 48.0, "stlo": 8.0, "evla": 38.0, "evlo": 142.0, "evdp": 29.0, "t0": 12.5, "kt0": "P"}
    trace.write(str(path), format="SAC")
    again = obspy.read(str(path))
    assert xov.section(again).bytes("png") == command("section", path)


def test_an_inventory_and_an_event_are_drawn_as_their_files(stream, tmp_path, command):
    inventory, event = obspy.read_inventory(), obspy.read_events()[:1]
    stations, events = tmp_path / "stations.xml", tmp_path / "event.xml"
    inventory.write(str(stations), format="STATIONXML")
    event.write(str(events), format="QUAKEML")
    files = written(stream, tmp_path, "MSEED")
    wanted = command("section", *files, "--stations", stations, "--event", events)
    assert xov.section(stream, inventory=inventory, event=event).bytes("png") == wanted
    wanted = command("map", "--events", events, "--stations", stations, "--plates", "bird", "--title", "")
    assert xov.map(events=event, stations=inventory, plates="bird").bytes("png") == wanted


def test_a_response_is_taken_away_as_the_command_does(stream, tmp_path, command):
    inventory = obspy.read_inventory()
    stations = tmp_path / "stations.xml"
    inventory.write(str(stations), format="STATIONXML")
    options = ["--stations", stations, "--pre-filter", 0.1, 0.2, 30, 45, "--remove-response", "vel"]
    wanted = command("section", *written(stream, tmp_path, "MSEED"), *options)
    figure = xov.section(stream, inventory=inventory, pre_filter=(0.1, 0.2, 30, 45), remove_response="vel")
    assert figure.bytes("png") == wanted


def test_a_gathered_stream_is_warned_of_in_no_other_way(stream):
    with warnings.catch_warnings():
        warnings.simplefilter("error", UserWarning)
        xov.section(stream)
