"""Figures and their inputs while the disk fails: an error that names file and cause, and the old file stays."""

import os
import subprocess
import sys

import pytest

PRELOAD = os.environ.get("XOV_FAULT_PRELOAD", "")
pytestmark = pytest.mark.skipif(not os.path.exists(PRELOAD), reason="the object that makes faults is built on Linux only")

SCRIPT = """
import sys
import numpy
import xov

path = sys.argv[2]
record = xov.Record(numpy.sin(numpy.arange(500) / 9).astype("f4"), 0.01, "2011-03-11T05:46:00")
try:
    if sys.argv[1] == "save":
        xov.section(record).save(path)
    elif sys.argv[1] == "pages":
        xov.save_pages(path, [xov.section(record), xov.stack(record)])
    else:
        xov.section(path).to_numpy()
except (OSError, xov.Error) as error:
    print(type(error).__name__, error)
    sys.exit(1)
"""


def under(call, error, what, path, times="on"):
    faults = {
        "LD_PRELOAD": PRELOAD,
        "XOV_FAULT_CALL": call,
        "XOV_FAULT_ERROR": error,
        "XOV_FAULT_AT": "1",
        "XOV_FAULT_TIMES": times,
        "XOV_FAULT_PATH": str(path.parent),
    }
    words = [sys.executable, "-c", SCRIPT, what, str(path)]
    return subprocess.run(words, env=os.environ | faults, capture_output=True, text=True)


@pytest.mark.parametrize("what, name", [("save", "a.png"), ("save", "a.svg"), ("save", "a.pdf"), ("pages", "a.pdf")])
@pytest.mark.parametrize(
    "call, error, reason",
    [
        ("write", "ENOSPC", "No space left on device"),
        ("fsync", "EIO", "Input/output error"),
        ("rename", "EIO", "Input/output error"),
        ("open", "EMFILE", "Too many open files"),
    ],
)
def test_a_figure_that_cannot_be_saved_leaves_the_old_file(tmp_path, what, name, call, error, reason):
    path = tmp_path / "out" / name
    path.parent.mkdir()
    path.write_bytes(b"old")
    done = under(call, error, what, path)
    assert done.returncode == 1, done.stderr
    assert done.stdout.startswith("OSError"), done.stdout
    assert name in done.stdout and reason in done.stdout
    assert path.read_bytes() == b"old"
    assert os.listdir(path.parent) == [name]


def test_an_interrupted_write_is_made_again(tmp_path):
    path = tmp_path / "out" / "a.png"
    path.parent.mkdir()
    done = under("write", "EINTR", "save", path, times="once")
    assert done.returncode == 0, done.stdout
    assert path.read_bytes().startswith(b"\x89PNG") and os.listdir(path.parent) == ["a.png"]


@pytest.mark.parametrize("call, error, reason", [("read", "EIO", "Input/output error"), ("open", "EMFILE", "Too many")])
def test_an_input_that_cannot_be_read_is_named(tmp_path, call, error, reason):
    path = tmp_path / "in" / "pairs.SAC"
    path.parent.mkdir()
    path.write_bytes(bytes(1000))
    done = under(call, error, "read", path)
    assert done.returncode == 1
    assert "pairs.SAC" in done.stdout and reason in done.stdout
