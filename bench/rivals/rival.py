"""The program around a rival in Python: the same arguments and answers as Rival.h has them."""

import sys
import time

import numpy


class Work:
    """Rows of samples and how they are to be drawn."""

    def __init__(self, arguments):
        path, rows, per_row, width, height, ratio, deviation = arguments
        self.rows, self.per_row = int(rows), int(per_row)
        self.width, self.height = float(width), float(height)
        self.ratio, self.deviation = float(ratio), float(deviation)
        self.samples = numpy.fromfile(path, dtype=numpy.float32).reshape(self.rows, self.per_row)

    def x(self):
        """Points from the left of each sample of a row."""
        return numpy.arange(self.per_row) * (self.width / self.per_row)

    def y(self, row):
        """Points from below of the samples of a row."""
        return self.height * (row + 0.5) / self.rows + self.deviation * self.samples[row]


def serve(rival, words=("draw", "redraw", "save", "pdf")):
    """Answers the lines of the input. `rival` has prepare(work) and, as far as it can, what the words stand for: of
    those that draw, draw() and save(path), and maybe redraw() and pdf(path)."""
    work = Work(sys.argv[1:])

    def milliseconds(step, *arguments):
        start = time.perf_counter()
        step(*arguments)
        return 1000 * (time.perf_counter() - start)

    print("ready", milliseconds(rival.prepare, work), flush=True)
    for line in sys.stdin:
        word, _, path = line.strip().partition(" ")
        step = getattr(rival, word, None) if word in words else None
        print(milliseconds(step, *([path] if path else [])) if step else "no", flush=True)
