"""Every plot function, its keywords, and that it draws what the command draws."""

import os
import pathlib
import warnings

import numpy
import pytest

import xov
from conftest import tone

DATA = pathlib.Path(os.environ["XOV_EXAMPLE_DATA"])


def pages_of(figure):
    assert figure.pages >= 1
    picture = figure.to_numpy()
    assert picture.dtype == numpy.uint8 and picture.shape[2] == 4
    assert len(numpy.unique(picture.reshape(-1, 4), axis=0)) > 1, "something is drawn"
    return figure.pages


SECTION = str(DATA / "section")
DAY = str(DATA / "day" / "*.SAC")


@pytest.mark.parametrize(
    "name, words, keywords",
    [
        ("section", [SECTION], {}),
        ("section", [SECTION], {"distance_axis": "km", "filter": ("bandpass", 0.01, 0.1), "zero_lines": True}),
        ("stack", [SECTION], {"style": "bands", "colors": ["red", "blue"]}),
        ("panels", [SECTION], {}),
        ("drum", [DAY], {"rows": 12, "row_duration": 7200, "title": "a day"}),
        ("spectrogram", [DAY], {"log_frequency": True}),
        ("spectrum", [DAY], {"noise_models": True}),
    ],
)
def test_files_are_drawn_as_the_command_draws_them(command, name, words, keywords):
    options = []
    for keyword, value in keywords.items():
        options.append("--" + keyword.replace("_", "-"))
        if isinstance(value, list):
            options.append(",".join(value))
        elif isinstance(value, tuple):
            options += value
        elif value is not True:
            options.append(value)
    figure = getattr(xov, name)(*words, **keywords)
    assert figure.bytes("png") == command(name, *words, *options)
    pages_of(figure)


def test_keywords_in_their_order_are_the_steps_in_theirs(record):
    first = xov.section(record, integrate=True, filter=("highpass", 0.5), taper=0.3)
    second = xov.section(record, taper=0.3, integrate=True, filter=("highpass", 0.5))
    assert not (first.to_numpy() == second.to_numpy()).all()


def test_a_step_may_be_done_twice(record):
    once = xov.section(record, filter=("lowpass", 5))
    twice = xov.section(record, filter=[("lowpass", 5), ("highpass", 2)])
    assert not (once.to_numpy() == twice.to_numpy()).all()


def test_an_unknown_keyword_is_refused_with_the_near_one(record):
    with pytest.raises(TypeError, match=r"xov.section\(\) has no keyword 'gian'; did you mean 'gain'\?"):
        xov.section(record, gian=2)


@pytest.mark.parametrize("keyword", ["output", "help", "quiet"])
def test_what_a_figure_does_by_itself_is_no_keyword(record, keyword):
    with pytest.raises(TypeError, match="has no keyword"):
        xov.section(record, **{keyword: "x.pdf"})


def test_a_wrong_value_is_refused_in_one_line(record):
    with pytest.raises(ValueError, match=r"^section: --gain: .*help\(xov.section\)\)$"):
        xov.section(record, gain=-1)


def test_a_flag_takes_true_only(record):
    with pytest.raises(TypeError, match="zero_lines: found 'yes', expected True or False"):
        xov.section(record, zero_lines="yes")


def test_none_and_false_are_options_that_are_not_given(record):
    plain = xov.section(record).to_numpy()
    assert (xov.section(record, zero_lines=False, gain=None).to_numpy() == plain).all()


def test_files_that_cannot_be_read_are_an_error_in_one_line():
    with pytest.raises(xov.Error, match="^/nonexistent: .*") as caught:
        xov.section("/nonexistent")
    assert "\n" not in str(caught.value)


def test_a_file_beside_others_that_cannot_be_read_is_warned_of(tmp_path):
    bad = tmp_path / "bad"
    bad.write_bytes(b"no seismogram")
    with pytest.warns(UserWarning, match="bad"):
        xov.section([str(DATA / "section"), bad])


@pytest.mark.parametrize("data", [3, None, object(), [3], [], ["a", 3]])
def test_what_is_no_data_is_refused(data):
    with pytest.raises((TypeError, ValueError), match="expected"):
        xov.section(data)


def test_records_and_names_are_not_mixed(record):
    with pytest.raises(TypeError, match="expected all records"):
        xov.section([record, SECTION])


def test_bytes_and_open_files_are_read_by_the_librarys_readers(command):
    path = next(iter(sorted((DATA / "day").glob("*.SAC"))))
    wanted = xov.drum(path).bytes("png")
    assert xov.drum(path.read_bytes()).bytes("png") == wanted
    with open(path, "rb") as file:
        assert xov.drum(file).bytes("png") == wanted


def test_channels_select_among_records():
    records = [xov.Record(tone(), 0.01, 0, station="A", channel=channel) for channel in ("BHZ", "BHN")]
    only = xov.section(records, channels=["BHZ"]).to_numpy()
    assert (only == xov.section(records[0]).to_numpy()).all()


def test_three_components_and_their_motion_are_drawn():
    records = [
        xov.Record(tone(hertz=hertz), 0.01, 0, station="A", channel=channel)
        for hertz, channel in ((1, "BHZ"), (2, "BHN"), (3, "BHE"))
    ]
    assert pages_of(xov.three(records)) == 1
    assert pages_of(xov.motion(records)) == 1


def test_a_noise_plot_is_drawn():
    record = xov.Record(numpy.random.default_rng(1).normal(size=400_000), 0.05, 0, station="A", channel="BHZ")
    assert pages_of(xov.ppsd(record)) == 1


def test_an_array_of_stations_gives_its_slowness_map():
    assert pages_of(xov.fk(sorted((DATA / "array").glob("*.SAC")))) == 1


def test_a_slowness_map_of_an_array_is_that_of_the_grid_that_the_command_writes(tmp_path):
    import subprocess

    files = sorted(str(path) for path in (DATA / "array").glob("*.SAC"))
    text = tmp_path / "power.xyz"
    options = ["--limit", "0.4", "--steps", "41", "--band", "1", "3", "--xyz", text, "-o", tmp_path / "x.png"]
    subprocess.run([os.environ["XOV_COMMAND"], "fk", *files, *options], check=True, capture_output=True)
    x, y, power = numpy.loadtxt(text).T
    values = numpy.full((41, 41), numpy.nan)
    values[numpy.rint((0.4 - y) * 50).astype(int), numpy.rint((x + 0.4) * 50).astype(int)] = power
    assert not numpy.isnan(values).any()
    assert xov.fk(values, limit=0.4).bytes("png") == xov.fk(text, title="").bytes("png")
    with pytest.raises(ValueError, match="expected the slowness at the array's edges"):
        xov.fk(values)


def test_a_monitor_shows_what_has_been_played():
    assert pages_of(xov.monitor(sorted((DATA / "section").iterdir()))) == 1


def test_columns_are_drawn_as_the_command_draws_a_file_of_them(command, tmp_path):
    x, y = [1, 2, 3, 4.5], [2, 1, 8, 3.25]
    path = tmp_path / "columns.txt"
    path.write_text("".join(f"{a} {b}\n" for a, b in zip(x, y)))
    for name in ("xy", "scatter"):
        wanted = command(name, path, "--title", "", "--xlabel", "a", "--ylabel", "b")
        draw = getattr(xov, name)
        assert draw(x, y, xlabel="a", ylabel="b").bytes("png") == wanted
        assert draw(numpy.array(x), tuple(y), xlabel="a", ylabel="b").bytes("png") == wanted
        assert draw(path, xlabel="a", ylabel="b", title="").bytes("png") == wanted


def test_a_line_keeps_its_columns_when_the_arrays_are_gone():
    figure = xov.xy(numpy.arange(1000.0), numpy.arange(1000.0))
    before = figure.to_numpy()
    for _ in range(50):
        numpy.ones(1000)
    assert (figure.to_numpy() == before).all()


def test_columns_of_different_lengths_are_refused():
    with pytest.raises(ValueError, match="found 2 and 3 values"):
        xov.xy([1, 2], [1, 2, 3])


def test_a_lonely_column_is_refused():
    with pytest.raises(TypeError, match="both x and y"):
        xov.xy([1, 2])


def test_a_histogram_counts_values():
    assert pages_of(xov.hist(numpy.random.default_rng(1).normal(size=1000), bins=20)) == 1


def test_a_column_of_a_frame_names_its_axis():
    class Series(numpy.ndarray):
        name = "depth"

    named = numpy.array([1.0, 2, 3]).view(Series)
    plain = xov.scatter([1, 2, 3], [1, 2, 3], ylabel="depth", xlabel="depth").to_numpy()
    assert (xov.scatter(named, named).to_numpy() == plain).all()


def test_a_grid_is_drawn_with_its_first_row_on_top():
    values = numpy.zeros((2, 2))
    values[0] = 1
    picture = xov.grid(values, size=(300, 300)).to_numpy()[:, :, :3].astype(int).sum(axis=2)
    top, bottom = picture[110, 150], picture[190, 150]
    assert top != bottom
    assert (xov.grid(values[::-1].copy(), size=(300, 300)).to_numpy()[110, 150, :3].sum()) == bottom


@pytest.mark.parametrize("shape", [(3,), (0, 4), (2, 2, 2)])
def test_what_is_no_grid_is_refused(shape):
    with pytest.raises(ValueError, match="expected rows and columns"):
        xov.grid(numpy.zeros(shape))


def test_a_map_shows_stations_and_vectors_of_arrays():
    region = (0, 30, 35, 55)
    empty = xov.map(region=region).to_numpy()
    stations = xov.map(region=region, stations=numpy.array([[10, 45], [20, 50]])).to_numpy()
    vectors = xov.map(region=region, vectors=[(10, 45, 1, 1)], vector_scale=20).to_numpy()
    assert not (stations == empty).all()
    assert not (vectors == empty).all()


def test_a_map_shows_lines_of_arrays_as_of_files(tmp_path, command):
    square = [(5, 40), (25, 40), (25, 50), (5, 50), (5, 40)]
    path = tmp_path / "square.nxy"
    path.write_text("5\n" + "".join(f"{x} {y}\n" for x, y in square))
    region = (0, 30, 35, 55)
    wanted = command("map", "--region", *region, "--polygons", path, "--title", "")
    assert xov.map(region=region, polygons=numpy.array(square)).bytes("png") == wanted
    assert xov.map(region=region, polygons=[square], title="").bytes("png") == wanted
    assert xov.map(region=region, polygons=path, title="").bytes("png") == wanted
    with pytest.raises(TypeError, match="expected points of longitude and latitude"):
        xov.map(polygons=[[1, 2, 3]])


def test_a_frame_of_pandas_gives_its_columns():
    pandas = pytest.importorskip("pandas", reason="pandas is not installed")
    frame = pandas.DataFrame({"depth": [1.0, 2, 3], "residual": [3, None, 1]})
    wanted = xov.scatter([1, 2, 3], [3, numpy.nan, 1], xlabel="depth", ylabel="residual").to_numpy()
    assert (xov.scatter(frame["depth"], frame["residual"]).to_numpy() == wanted).all()


def test_a_mechanism_is_drawn():
    assert pages_of(xov.mechanism(strike=203, dip=10, rake=88)) == 1


def test_each_function_documents_its_keywords_and_shows_an_example():
    for name in ("section", "drum", "xy", "grid", "map", "mechanism", "fk"):
        text = getattr(xov, name).__doc__
        assert f"xov.{name}(" in text
        assert "Keywords:" in text and "title (T): Title of the plot" in text


def test_notes_are_kept_and_nothing_is_said(capfd):
    with warnings.catch_warnings():
        warnings.simplefilter("error")
        figure = xov.section(xov.Record(tone(), 0.01, 0))
    assert capfd.readouterr() == ("", "")
    assert figure.notes == []
