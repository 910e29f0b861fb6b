"""A section above bands of the same records in one PyQt6 window: wheel, drags and keys move both in time.

python linked.py FILES...
"""

import sys

from PyQt6.QtCore import Qt
from PyQt6.QtWidgets import QApplication, QLabel, QMainWindow, QSplitter

import xov


class Linked(QMainWindow):
    """The two plots, and a line that says where the last click was."""

    def __init__(self, files):
        super().__init__()
        self.figures = [xov.section(files), xov.stack(files, style="bands")]
        xov.link(*self.figures)
        splitter = QSplitter(Qt.Orientation.Vertical)
        for figure in self.figures:
            splitter.addWidget(figure.widget())
            figure.on("clicked", self.say)
        self.where = QLabel("The wheel zooms, Shift and the wheel pan, a double click goes back.")
        self.statusBar().addWidget(self.where)
        self.setCentralWidget(splitter)
        self.setWindowTitle("Linked plots")
        self.resize(1000, 800)

    def say(self, x, y):
        """Where the click was, in data coordinates."""
        self.where.setText(f"{x:.2f} s, {y:g}")


def main():
    application = QApplication(sys.argv[:1])
    window = Linked(sys.argv[1:])
    window.show()
    return application.exec()


if __name__ == "__main__":
    sys.exit(main())
