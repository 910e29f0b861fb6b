"""The examples of README.md, docs/python.md, the guide and of docstrings run."""

import os
import pathlib
import re
import types

import numpy
import pytest

import xov
from conftest import tone

ROOT = pathlib.Path(__file__).parents[2]
DATA = pathlib.Path(os.environ["XOV_EXAMPLE_DATA"])

PAGES = ["README.md", "docs/python.md", *sorted(f"docs/guide/{page.name}" for page in ROOT.glob("docs/guide/*.md"))]


def blocks(name):
    text = (ROOT / name).read_text()
    return [pytest.param(code, id=f"{name}-{i}") for i, code in enumerate(re.findall(r"```python\n(.*?)```", text, re.S))]


@pytest.fixture
def names(tmp_path, monkeypatch):
    """What examples speak of without making it."""
    monkeypatch.chdir(tmp_path)
    for folder in ("day", "section"):
        (tmp_path / folder).symlink_to(DATA / folder)
    random = numpy.random.default_rng(1)
    return {
        "xov": xov,
        "numpy": numpy,
        "periods": numpy.arange(1.0, 50),
        "velocities": numpy.arange(1.0, 50) ** 0.1,
        "residuals": random.normal(size=300),
        "power": random.normal(size=(20, 30)),
        "catalogue": DATA / "map" / "world_catalogue.csv",
        "inventory": numpy.array([[140, 36], [141, 38]]),
    }


@pytest.mark.filterwarnings("ignore")
@pytest.mark.parametrize("code", [block for page in PAGES for block in blocks(page)])
def test_an_example_of_the_documents_runs(code, names, tmp_path):
    if "/data/sds" in code:
        for name in ("Archive", "drums", "archive"):  # what it calls is there; test_archive.py runs it on an archive
            assert name == "Archive" or callable(getattr(xov, name))
        code = "\n".join(line for line in code.splitlines() if "days" not in line)
    if "obspy" in code or "stream" in code:
        names["obspy"] = pytest.importorskip("obspy", reason="ObsPy is not installed")
        names["stream"] = names["obspy"].read()
    exec(compile(code, "example", "exec"), names)
    for path in tmp_path.glob("*.*"):
        assert path.stat().st_size > 1000


def test_the_function_of_each_plot_has_an_example_in_its_help():
    functions = [getattr(xov, name) for name in xov.__all__]
    plots = [f for f in functions if isinstance(f, types.FunctionType) and "Keywords:" in (f.__doc__ or "")]
    assert len(plots) == 17
    for function in plots:
        assert f"    xov.{function.__name__}(" in function.__doc__


def test_the_record_of_the_page_is_drawn_as_it_says(names):
    record = xov.Record(tone(), 0.01, "2011-03-11T05:46:00", picks={"P": 5})
    assert not (xov.section(record).to_numpy() == xov.section(record, no_picks=True).to_numpy()).all()


@pytest.mark.filterwarnings("ignore")
@pytest.mark.parametrize("name", ["day", "section", "array"])
def test_a_notebook_runs_and_each_figure_is_shown(name, tmp_path, monkeypatch, capsys):
    import ast
    import json

    monkeypatch.chdir(tmp_path)
    cells = json.loads((ROOT / "examples" / "notebooks" / f"{name}.ipynb").read_text())["cells"]
    names, shown = {}, 0
    for cell in cells:
        if cell["cell_type"] != "code":
            continue
        assert cell["outputs"] == [], "notebooks are kept without outputs"
        body = ast.parse("".join(cell["source"])).body
        last = body.pop() if isinstance(body[-1], ast.Expr) else None
        exec(compile(ast.Module(body, []), name, "exec"), names)
        value = eval(compile(ast.Expression(last.value), name, "eval"), names) if last else None
        if isinstance(value, xov.Figure):
            picture, size = value._repr_png_()
            assert picture.startswith(b"\x89PNG") and size["width"] > 100
            shown += 1
            (tmp_path / f"{shown}.png").write_bytes(picture)
    assert shown >= 2
    for line in capsys.readouterr().out.splitlines():
        assert line.strip(), "what is read out is there"


def test_the_stubs_name_what_the_package_has():
    import ast

    import xov._core as core

    folder = ROOT / "python" / "xov"
    for module, stub in ((xov, "__init__.pyi"), (core, "_core.pyi")):
        for item in ast.parse((folder / stub).read_text()).body:
            if isinstance(item, (ast.FunctionDef, ast.ClassDef)):
                thing = getattr(module, item.name) if item.name != "Archive" else xov.archive(ROOT, "*").__class__
                for method in getattr(item, "body", []) if isinstance(item, ast.ClassDef) else []:
                    if isinstance(method, ast.FunctionDef):
                        assert hasattr(thing, method.name), f"{item.name}.{method.name}"
    named = {item.name for item in ast.parse((folder / "__init__.pyi").read_text()).body if hasattr(item, "name")}
    assert set(xov.__all__) <= named
