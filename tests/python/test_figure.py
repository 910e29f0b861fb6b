"""What a figure gives: files, bytes, arrays, pages, what notebooks ask for."""

import multiprocessing
import os
import re
import shutil
import subprocess
import sys
import threading

import numpy
import pytest

import xov
from conftest import tone

SIGNATURES = {"pdf": b"%PDF-", "svg": b"<?xml", "png": b"\x89PNG", "tif": b"II*\0", "jpg": b"\xff\xd8"}


@pytest.mark.parametrize("kind", SIGNATURES)
def test_files_and_bytes_are_the_same(record, tmp_path, kind):
    figure = xov.section(record)
    path = tmp_path / ("x." + kind)
    assert figure.save(path) is figure
    content = path.read_bytes()
    assert content.startswith(SIGNATURES[kind])
    assert figure.bytes(kind) == content


def test_pixels_are_those_of_the_png(record, tmp_path):
    figure = xov.section(record, size=(300, 200))
    pixels = figure.to_numpy(scale=2)
    assert pixels.shape == (400, 600, 4)
    assert figure.size() == (300, 200)
    figure.save(tmp_path / "x.png", scale=2)
    image = pytest.importorskip("matplotlib.image", reason="python3-matplotlib reads the PNG")
    read = image.imread(tmp_path / "x.png")
    colours = read[:, :, :3] if read.ndim == 3 else read[:, :, None]  # a grey picture has one
    assert (numpy.round(colours * 255).astype(numpy.uint8) == pixels[:, :, :3]).all()


@pytest.mark.parametrize("name", ["x.gif", "x", ""])
def test_an_unknown_format_is_refused(record, name):
    with pytest.raises(ValueError, match="expected pdf, svg, png, tif or jpg"):
        xov.section(record).save(name)


@pytest.mark.parametrize("scale", [0, -1, 33, float("nan")])
def test_a_scale_beyond_its_range_is_refused(record, scale):
    with pytest.raises(ValueError, match="scale"):
        xov.section(record).to_numpy(scale)


def test_a_file_that_cannot_be_written_is_an_oserror_that_names_it(record, tmp_path):
    path = tmp_path / "no" / "x.pdf"
    with pytest.raises(OSError, match="x.pdf"):
        xov.section(record).save(path)


def test_a_page_that_is_not_there_is_an_index_error(record):
    with pytest.raises(IndexError, match="found page 1"):
        xov.section(record).to_numpy(page=1)


def test_several_pages_go_into_one_pdf_and_one_into_a_picture(tmp_path):
    records = [xov.Record(tone(), 0.01, 0, station=name) for name in ("A", "B", "C")]
    figure = xov.section(records, page=1)
    assert figure.pages == 3
    figure.save(tmp_path / "all.pdf")
    assert re.search(rb"/Count 3\b", (tmp_path / "all.pdf").read_bytes())
    with pytest.raises(ValueError, match="expected one of 3"):
        figure.save(tmp_path / "x.png")
    figure.save(tmp_path / "x.png", page=1)
    assert (figure.to_numpy(page=0) != figure.to_numpy(page=2)).any()


def test_figures_become_pages_of_one_file(record, tmp_path):
    path = tmp_path / "two.pdf"
    xov.save_pages(path, [xov.section(record), xov.hist([1, 2, 3])])
    assert path.read_bytes().startswith(b"%PDF-")
    with pytest.raises(ValueError, match="ends in .pdf"):
        xov.save_pages(tmp_path / "two.png", [])
    with pytest.raises(OSError, match="none.pdf"):
        xov.save_pages(tmp_path / "none.pdf", [])


def test_a_notebook_gets_twice_the_pixels_and_the_size_in_points(record):
    figure = xov.section(record, size=(300, 200))
    png, size = figure._repr_png_()
    assert size == {"width": 300, "height": 200}
    assert png == figure.bytes("png", scale=2)
    data, metadata = figure._repr_mimebundle_()
    assert set(data) == {"image/png"} and metadata["image/png"] == size
    data, _ = figure._repr_mimebundle_(include={"image/svg+xml", "application/pdf"})
    assert data["image/svg+xml"].startswith("<?xml") and data["application/pdf"].startswith(b"%PDF-")


def test_windows_without_a_display_are_refused(record):
    with pytest.raises(RuntimeError, match="no display"):
        xov.section(record).show()


@pytest.mark.skipif(not shutil.which("xvfb-run"), reason="xvfb-run is not installed")
def test_a_window_is_shown_until_it_is_closed_or_ctrl_c(tmp_path):
    program = tmp_path / "show.py"
    program.write_text(
        "import os, signal, sys, threading\n"
        "import xov\n"
        "figure = xov.section(xov.Record([1.0, 2, 1, 3], 1, 0))\n"
        "threading.Timer(0.5, os.kill, (os.getpid(), signal.SIGINT)).start()\n"
        "try:\n"
        "    figure.show()\n"
        "except KeyboardInterrupt:\n"
        "    print('interrupted', figure.pages)\n"
    )
    environment = {name: value for name, value in os.environ.items() if name != "QT_QPA_PLATFORM"}
    done = subprocess.run(
        ["xvfb-run", "-a", sys.executable, program], env=environment, capture_output=True, text=True, timeout=60
    )
    assert done.stdout == "interrupted 1\n", done.stderr


def test_another_thread_gets_a_clear_error(record):
    caught = []
    figure = xov.section(record)

    def draw():
        for act in (lambda: xov.section(record), figure.to_numpy):
            try:
                act()
            except RuntimeError as error:
                caught.append(str(error))

    thread = threading.Thread(target=draw)
    thread.start()
    thread.join()
    assert len(caught) == 2 and all("several processes" in text for text in caught)


def _picture(_):
    return xov.section(xov.Record(tone(), 0.01, 0)).bytes("png")


@pytest.mark.parametrize("method", ["fork", "spawn"])
def test_processes_draw_the_same(method):
    expected = _picture(0)
    with multiprocessing.get_context(method).Pool(2) as pool:
        assert pool.map(_picture, range(4)) == [expected] * 4


def test_a_thousand_figures_leave_memory_as_it_was(record):
    def resident():
        with open("/proc/self/statm") as file:
            return int(file.read().split()[1]) * os.sysconf("SC_PAGE_SIZE")

    def draw(count):
        for _ in range(count):
            xov.section(record, size=(200, 120)).to_numpy()

    draw(200)
    before = resident()
    draw(1000)
    assert resident() - before < 8_000_000  # one record and picture take 100 kB: a hundredth of what a leak would


def test_a_click_reaches_python_and_an_error_in_it_goes_no_further(record):
    figure = xov.section(record)
    with pytest.raises(ValueError, match="expected 'clicked' or 'tracked'"):
        figure.on("pressed", print)
    with pytest.raises(TypeError, match="expected a function"):
        figure.on("clicked", 3)


def test_python_m_xov_is_the_command():
    done = subprocess.run([sys.executable, "-m", "xov", "--version"], capture_output=True, text=True, check=True)
    assert done.stdout == f"xov {xov.__version__}\n"
    done = subprocess.run([sys.executable, "-m", "xov", "sektion"], capture_output=True, text=True)
    assert done.returncode == 2 and "did you mean 'section'" in done.stderr


def test_beside_the_qt_of_pyside_in_one_process_the_import_is_refused():
    pytest.importorskip("PySide6", reason="PySide6 of pip is not installed")
    code = "import PySide6.QtCore\ntry:\n    import xov\nexcept ImportError as error:\n    print(error)"
    done = subprocess.run([sys.executable, "-c", code], capture_output=True, text=True, check=True)
    assert re.match("xov works with the system's Qt, but .*/PySide6/.* is loaded, another one", done.stdout)


def test_another_qt_in_the_process_is_refused(tmp_path):
    from xov._qt import refuse_another_qt

    maps = tmp_path / "maps"
    maps.write_text("7f00-7f01 r-xp 0 08:01 1 /home/me/venv/lib/python3/site-packages/PySide6/Qt/lib/libQt6Core.so.6\n")
    with pytest.raises(ImportError, match="PySide6/Qt/lib/libQt6Core.so.6 is loaded, another one"):
        refuse_another_qt(maps)
    maps.write_text("7f00-7f01 r-xp 0 08:01 1 /usr/lib/x86_64-linux-gnu/libQt6Core.so.6.4.2\n")
    refuse_another_qt(maps)
    refuse_another_qt(tmp_path / "none")
