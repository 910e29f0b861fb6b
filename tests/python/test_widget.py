"""Views as widgets of a program with the system's PyQt6."""

import gc

import pytest

QtWidgets = pytest.importorskip("PyQt6.QtWidgets", reason="python3-pyqt6 is not installed")

from PyQt6 import QtCore, QtGui  # noqa: E402
from PyQt6.QtTest import QTest  # noqa: E402

import xov  # noqa: E402


def test_a_view_lies_in_a_layout_of_pyqt_and_tells_of_clicks(record):
    xov.section(record).to_numpy()  # makes the application
    assert QtWidgets.QApplication.instance() is not None
    splitter = QtWidgets.QSplitter()
    figure = xov.section(record)
    view = figure.widget()
    other = xov.hist([1, 2, 3]).widget()
    splitter.addWidget(view)
    splitter.addWidget(other)
    splitter.resize(1200, 500)
    splitter.show()
    QTest.qWaitForWindowExposed(splitter)
    clicks = []
    figure.on("clicked", lambda x, y: clicks.append((x, y)))
    figure.on("clicked", lambda x, y: 1 / 0)  # an error goes no further than standard error
    QTest.mouseClick(view, QtCore.Qt.MouseButton.LeftButton, pos=QtCore.QPoint(view.width() // 2, view.height() // 2))
    assert len(clicks) == 1
    assert view.property("xmax") >= clicks[0][0] >= view.property("xmin")
    assert isinstance(view.grab(), QtGui.QPixmap)
    splitter.close()


def test_a_widget_with_a_parent_outlives_its_figure(record):
    parent = QtWidgets.QWidget()
    view = xov.section(record).widget()
    view.setParent(parent)
    before = view.grab().toImage()
    del view.figure
    gc.collect()
    assert view.grab().toImage() == before


def test_a_widget_that_its_parent_destroyed_is_told(record):
    parent = QtWidgets.QWidget()
    figure = xov.section(record)
    figure.widget().setParent(parent)
    from PyQt6 import sip

    sip.delete(parent)
    with pytest.raises(RuntimeError, match="has been destroyed"):
        figure.to_numpy()


def test_the_example_program_links_two_plots(record):
    import os
    import pathlib
    import runpy

    xov.section(record)  # makes the application
    example = runpy.run_path(str(pathlib.Path(__file__).parents[2] / "examples" / "python" / "linked.py"))
    data = pathlib.Path(os.environ["XOV_EXAMPLE_DATA"]) / "section"
    window = example["Linked"]([str(path) for path in sorted(data.glob("*.BHZ.SAC"))])
    window.show()
    QTest.qWaitForWindowExposed(window)
    first, second = (figure.widget() for figure in window.figures)
    before = second.grab().toImage()
    spans = [figure.limits()[1] - figure.limits()[0] for figure in window.figures]
    QTest.keyClick(first, QtCore.Qt.Key.Key_Plus)
    assert second.grab().toImage() != before
    zoomed = [figure.limits()[1] - figure.limits()[0] for figure in window.figures]
    assert zoomed[0] < spans[0] and zoomed[1] < spans[1]
    QTest.mouseClick(first, QtCore.Qt.MouseButton.LeftButton, pos=QtCore.QPoint(first.width() // 2, first.height() // 2))
    assert " s, " in window.where.text()
    window.close()
