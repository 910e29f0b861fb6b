"""Figures that are moved over their data: by calls, and by what a notebook's page sends."""

import numpy
import pytest

import xov
from conftest import tone


@pytest.fixture
def figure():
    figure = xov.section(xov.Record(tone(), 0.01, "2011-03-11T05:46:00", station="BFO"))
    figure.to_numpy()
    return figure


def span(figure):
    xmin, xmax, _, _ = figure.limits()
    return xmax - xmin


def test_zooming_in_halves_what_is_shown_and_back_shows_it_again(figure):
    before, picture = span(figure), figure.to_numpy()
    assert figure.navigate("zoom", 0.5, 450, 240)
    assert span(figure) == pytest.approx(before / 2, rel=1e-3)
    assert (figure.to_numpy() != picture).any()
    assert figure.navigate("back")
    assert (figure.to_numpy() == picture).all()
    assert figure.navigate("forward")
    assert span(figure) == pytest.approx(before / 2, rel=1e-3)


def test_a_box_becomes_what_is_shown(figure):
    before = span(figure)
    width, height = figure.size()
    assert figure.navigate("box", 0.4 * width, 0.3 * height, 0.6 * width, 0.7 * height)
    assert 0.15 * before < span(figure) < 0.3 * before


@pytest.mark.parametrize("numbers", [(), (0, 0, 0), (float("nan"),) * 3, (1e300, 5, 5), (-1, 5, 5)])
def test_absurd_steps_leave_a_figure_that_can_be_drawn(figure, numbers):
    for action in ("zoom", "amplify", "pan", "box", "back", "forward", "all"):
        figure.navigate(action, *numbers)
        figure.to_numpy()
    assert span(figure) > 0


def test_an_unknown_step_is_refused(figure):
    with pytest.raises(ValueError, match="found the action 'jump'"):
        figure.navigate("jump")


def test_the_readout_tells_time_and_amplitude(figure):
    width, height = figure.size()
    text = figure.readout(width / 2, height / 2)
    assert "2011-03-11 05:46" in text and "amplitude" in text
    assert figure.readout(float("nan"), 0) == ""


def test_what_a_page_sends_is_drawn_and_answered(figure):
    pytest.importorskip("anywidget", reason="anywidget is not installed")
    widget = figure.interactive()
    assert (widget.width, widget.height) == figure.size()
    message, (picture,) = widget.act({"kind": "ratio", "numbers": [2]})
    assert message["kind"] == "picture" and picture == figure.bytes("png", 2)
    message, (zoomed,) = widget.act({"kind": "zoom", "numbers": [0.5, 450, 240]})
    assert zoomed != picture and message["milliseconds"] > 0
    message, (again,) = widget.act({"kind": "back"})
    assert again == picture
    message, buffers = widget.act({"kind": "point", "numbers": [450, 240]})
    assert message["kind"] == "readout" and "05:46" in message["text"] and buffers == []


def test_without_anywidget_the_error_says_what_is_needed(figure, monkeypatch):
    monkeypatch.setitem(__import__("sys").modules, "anywidget", None)
    with pytest.raises(ImportError, match="pip install anywidget"):
        figure.interactive()


def test_an_array_of_ten_million_is_drawn_from_all_samples_at_each_step():
    samples = tone(10_000_000)
    samples[5_000_000] = 50  # one sample of ten million
    figure = xov.section(xov.Record(samples, 0.01, 0), raw=True)
    row = figure.to_numpy()[:, :, :3].sum(axis=2) < 300
    figure.navigate("zoom", 0.9, 450, 240)
    zoomed = figure.to_numpy()[:, :, :3].sum(axis=2) < 300
    for picture in (row, zoomed):
        heights = numpy.where(picture.any(axis=1))[0]
        assert heights.min() < picture.shape[0] * 0.3, "the peak is there"


def test_a_message_in_another_thread_is_answered_in_the_one_that_draws(figure):
    pytest.importorskip("anywidget", reason="anywidget is not installed")
    import asyncio
    import threading

    async def talk():
        widget = figure.interactive()
        answers = []
        widget.send = lambda content, buffers=None: answers.append((threading.get_ident(), content["kind"]))
        for message in ({"kind": "zoom", "numbers": [0.5, 450, 240]}, {"kind": "nonsense"}):
            thread = threading.Thread(target=widget._heard, args=(widget, message, []))
            thread.start()
            thread.join()
        await asyncio.sleep(0.01)
        return answers

    assert asyncio.run(talk()) == [(threading.get_ident(), "picture"), (threading.get_ident(), "error")]
