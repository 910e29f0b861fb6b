"""Keeps two copies of Qt out of one process, where they would crash each other."""

import os


def _qt_libraries(maps="/proc/self/maps"):
    """The Qt core libraries that this process has loaded."""
    try:
        with open(maps, encoding="utf-8", errors="replace") as lines:
            paths = {line.split(maxsplit=5)[-1].strip() for line in lines}
    except OSError:  # no such list on this system
        return []
    return sorted(path for path in paths if os.path.basename(path).startswith("libQt6Core"))


def refuse_another_qt(maps="/proc/self/maps"):
    """Raises ImportError where a Qt is loaded that came inside a Python package: PySide6 and PyQt6 of pip bring one."""
    for path in _qt_libraries(maps):
        if "-packages" in path and "PyQt6/Qt6" in path or "PySide6" in path:
            raise ImportError(
                f"xov works with the system's Qt, but {path} is loaded, another one: import xov in another process, or "
                "use the PyQt6 of the system (Debian: python3-pyqt6)"
            )
