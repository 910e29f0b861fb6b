"""Records out of arrays: what is kept, converted and refused."""

import datetime
import gc
import sys

import numpy
import pytest

import xov
from conftest import tone
from xov.records import nanoseconds, samples_of

NOON = 1_299_844_800 * 10**9  # 2011-03-11T12:00:00


def test_float32_in_one_piece_is_kept_where_it_is():
    samples = tone()
    record = xov.Record(samples, 0.01)
    assert record.samples is samples


def test_float32_that_cannot_be_written_to_is_kept_where_it_is():
    samples = tone()
    samples.setflags(write=False)
    assert xov.Record(samples, 0.01).samples is samples


@pytest.mark.parametrize("kind", ["float64", "int32", "int16", "uint8", ">f4", "float16", "bool"])
def test_other_numbers_are_converted_once(kind):
    samples = numpy.array([0, 1, 1, 0, 1]).astype(kind)
    record = xov.Record(samples, 1)
    assert record.samples.dtype == numpy.float32
    assert record.samples.tolist() == [0, 1, 1, 0, 1]


def test_negative_strides_and_every_other_sample_are_in_their_order():
    samples = numpy.arange(10, dtype=numpy.float32)
    assert xov.Record(samples[::-1], 1).samples.tolist() == list(range(9, -1, -1))
    assert xov.Record(samples[::2], 1).samples.tolist() == [0, 2, 4, 6, 8]


def test_masked_samples_are_gaps():
    samples = samples_of(numpy.ma.masked_array([1, 2, 3, 4], mask=[0, 1, 0, 0], dtype=numpy.int32))
    assert numpy.isnan(samples).tolist() == [False, True, False, False]


def test_what_single_precision_cannot_hold_is_a_gap_without_a_warning(recwarn):
    assert numpy.isinf(samples_of(numpy.array([1e300, 1.0])))[0]
    assert len(recwarn) == 0


@pytest.mark.parametrize("values", [["a"], numpy.zeros(3, dtype=complex), [None], numpy.array([object()])])
def test_what_are_no_numbers_are_refused(values):
    with pytest.raises(TypeError, match="expected numbers"):
        xov.Record(values, 1)


def test_more_than_one_dimension_is_refused():
    with pytest.raises(ValueError, match="found 2 dimensions, expected 1"):
        xov.Record(numpy.zeros((2, 2)), 1)


@pytest.mark.parametrize("delta", [0, -1, float("nan"), float("inf"), 1e-60, 1e60])
def test_an_interval_that_is_none_is_refused(delta):
    with pytest.raises(ValueError, match="delta"):
        xov.Record(tone(), delta)


def test_a_header_value_that_nobody_knows_is_refused():
    with pytest.raises(ValueError, match="no header value 'colour'"):
        xov.Record(tone(), 1, colour="red")


@pytest.mark.parametrize("value", [float("nan"), float("inf"), 1e300])
def test_a_place_that_is_no_number_is_refused(value):
    with pytest.raises(ValueError, match="stla"):
        xov.Record(tone(), 1, latitude=value)


@pytest.mark.parametrize(
    "noon",
    [
        "2011-03-11T12:00:00",
        "2011-03-11T12:00:00Z",
        "2011-03-11T12:00",
        datetime.datetime(2011, 3, 11, 12),
        datetime.datetime(2011, 3, 11, 14, tzinfo=datetime.timezone(datetime.timedelta(hours=2))),
        numpy.datetime64("2011-03-11T12"),
        1_299_844_800,
        1_299_844_800.0,
    ],
)
def test_a_moment_may_be_said_in_many_ways(noon):
    assert nanoseconds(noon) == NOON


@pytest.mark.parametrize("time", ["noon", "2011-13-11", float("nan")])
def test_what_is_no_moment_is_refused(time):
    with pytest.raises(ValueError, match="start"):
        xov.Record(tone(), 1, time)


def test_years_that_no_calendar_of_the_header_has_are_refused():
    with pytest.raises(ValueError, match="years 1 to 9999"):
        xov.Record(tone(), 1, 1e12)


def test_a_time_without_a_start_is_refused():
    with pytest.raises(ValueError, match="expected seconds"):
        xov.Record(tone(), 1, picks={"P": "2011-03-11T05:46:30"})


def test_an_array_lives_as_long_as_a_figure_draws_from_it():
    samples = tone()
    before = sys.getrefcount(samples)
    figure = xov.section(xov.Record(samples, 0.01), raw=True)
    assert sys.getrefcount(samples) > before
    picture = figure.to_numpy()
    del figure
    gc.collect()
    assert sys.getrefcount(samples) == before
    figure = xov.section(xov.Record(tone(), 0.01), raw=True)
    gc.collect()
    assert (figure.to_numpy() == picture).all()


def test_drawing_ten_million_samples_takes_no_copy_of_them():
    import resource

    samples = tone(10_000_000)
    xov.section(xov.Record(tone(), 0.01), raw=True).to_numpy()  # what is made once
    before = resource.getrusage(resource.RUSAGE_SELF).ru_maxrss
    xov.section(xov.Record(samples, 0.01), raw=True).to_numpy()
    grown = (resource.getrusage(resource.RUSAGE_SELF).ru_maxrss - before) * 1024
    assert grown < samples.nbytes / 4


def test_objects_that_lie_or_fail_are_errors_of_python():
    class Lies(list):
        def __len__(self):
            return 10**9

    class Fails:
        def __array__(self, *_):
            raise OSError("the disk is gone")

    assert len(xov.Record(Lies([1.0, 2.0]), 1)) == 2
    with pytest.raises(OSError, match="the disk is gone"):
        xov.Record(Fails(), 1)
    with pytest.raises(TypeError, match="delta: found 'fast', expected seconds above 0"):
        xov.Record(numpy.zeros(3), "fast")
    with pytest.raises((TypeError, RuntimeError)):
        xov.Record(numpy.zeros(3), 1, station=object())


def test_no_samples_and_one_sample_are_drawn_as_far_as_there_is_something():
    for count in (0, 1, 2):
        record = xov.Record(numpy.ones(count, dtype=numpy.float32), 1, 0)
        try:
            xov.section(record).to_numpy()
        except xov.Error as error:
            assert str(error)
