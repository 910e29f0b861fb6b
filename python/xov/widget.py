"""A figure in a notebook that mouse and wheel move over its data, drawn in the kernel from all samples."""

import asyncio
import pathlib
import threading
import time

_LARGEST_RATIO = 4


def widget_of(figure, page):
    """The widget of a page of a figure."""
    try:
        import anywidget
        import traitlets
    except ImportError:
        raise ImportError("interactive figures need anywidget: pip install anywidget") from None

    class FigureWidget(anywidget.AnyWidget):
        _esm = pathlib.Path(__file__).with_name("widget.js")
        width = traitlets.Float().tag(sync=True)
        height = traitlets.Float().tag(sync=True)

        def __init__(self):
            self.figure, self.page, self.ratio = figure, page, 1
            self._thread = threading.get_ident()
            try:
                self._loop = asyncio.get_running_loop()
            except RuntimeError:
                self._loop = None
            width, height = figure.size(page)
            super().__init__(width=width, height=height)
            self.on_msg(self._heard)

        def _heard(self, _, message, buffers):
            # Newer kernels bring messages in threads of their own; plots are drawn in one.
            if threading.get_ident() == self._thread or self._loop is None:
                self._answer(message)
            else:
                self._loop.call_soon_threadsafe(self._answer, message)

        def _answer(self, message):
            try:
                answer = self.act(message)
            except Exception as error:  # the page must not wait for ever
                answer = {"kind": "error", "text": str(error)}, []
            self.send(*answer)

        def act(self, message):
            """Does what the page asks for, and returns the message and buffers of the answer."""
            started = time.perf_counter()
            kind = message.get("kind")
            numbers = [float(number) for number in message.get("numbers", ())]
            if kind == "point":
                return {"kind": "readout", "text": figure.readout(*numbers[:2], page=page)}, []
            if kind == "ratio":
                self.ratio = min(max(numbers[0], 1), _LARGEST_RATIO)
            else:
                figure.navigate(kind, *numbers, page=page)
            picture = figure.bytes("png", self.ratio, page)
            took = (time.perf_counter() - started) * 1000
            return {"kind": "picture", "milliseconds": took}, [picture]

    return FigureWidget()
