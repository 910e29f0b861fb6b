"""What the tests of the Python module share."""

import os
import subprocess

import numpy
import pytest

import xov


@pytest.fixture
def command(tmp_path):
    """Runs the command xov and returns the bytes of the file that it writes."""

    def run(*words, output="out.png"):
        path = tmp_path / output
        subprocess.run([os.environ["XOV_COMMAND"], *map(str, words), "-o", path], check=True)
        return path.read_bytes()

    return run


def tone(count=2000, hertz=1.0, delta=0.01):
    """A sine with a mean of its own, in single precision."""
    return (3 + numpy.sin(2 * numpy.pi * hertz * delta * numpy.arange(count))).astype(numpy.float32)


@pytest.fixture
def record():
    return xov.Record(tone(), 0.01, "2011-03-11T05:46:00", network="GR", station="BFO", location="00", channel="BHZ")
