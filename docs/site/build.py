#!/usr/bin/env python3
"""Builds the site: the reference of the public headers, the views with their pictures, and the Markdown pages.

    build.py --root TREE --made FOLDER --version 1.2.3 --headers LIST --pictures FOLDER --output FOLDER

LIST names the public headers, one a line; those made while configuring lie below `made`. Ends with 1 and the warnings where
Doxygen has any: a name without a comment is one.
"""

import argparse
import re
import shutil
import subprocess
import sys
from pathlib import Path, PurePosixPath

import headers
from pages import Site, page_id

_SITE = Path(__file__).resolve().parent


def _group(header):
    """The group of a header is its folder."""
    return "_".join(PurePosixPath(header).parent.parts[1:])


def _class_page(name):
    return "classxov_1_1" + name.replace("_", "__") + ".html"


def _arguments():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    for name in ("root", "made", "version", "headers", "pictures", "output"):
        parser.add_argument("--" + name, required=True)
    return parser.parse_args()


def _write(path, text):
    path.parent.mkdir(parents=True, exist_ok=True)
    path.write_text(text, encoding="utf-8")


def _stage_headers(root, made, listed, stage):
    """Copies the public headers. The page of each class and struct in them by its name, and what Doxygen does not warn of."""
    groups = (root / "docs/reference/groups.dox").read_text(encoding="utf-8")
    _write(stage / "docs/groups.dox", groups)
    described = set(re.findall(r"\\defgroup (\w+)", groups))
    classes, warnings = {}, []
    for header in listed:
        source = root / "src" / header if (root / "src" / header).exists() else made / header
        text = source.read_text(encoding="utf-8")
        if _group(header) not in described:
            sys.exit(f"{header}: docs/reference/groups.dox does not describe its folder as the group {_group(header)}")
        _write(stage / "src" / header, headers.read(text, _group(header)))
        for kind, name in re.findall(r"^(class|struct) (?:XOV_EXPORT )?(\w+)(?: final)?(?: : [^;{]*)? \{", text, re.MULTILINE):
            classes[name] = _class_page(name).replace("class", kind, 1)
        warnings += [f"src/{header}:{line}: warning: Value {value} is not documented."
                     for line, value in headers.silent_values(text)]
    return classes, warnings


def _stage_views(root, pictures, stage):
    """The picture and the program of each view on its page, and all of them on one page."""
    blocks, shown, files = [], [], {}
    for program in sorted((root / "examples/views").glob("*.cpp")):
        name = program.stem
        text = program.read_text(encoding="utf-8")
        caption = re.match(r"// (.*)", text).group(1)
        beside = "".join(f" * What it includes beside the library, {file}:\n * \\include views/{file}\n"
                         for file in re.findall(r'#include "examples/views/(\w+\.h)"', text))
        if not (pictures / f"{name}.png").exists():
            sys.exit(f"{program}: there is no picture {name}.png of it in {pictures}")
        files[f"view-{name}.png"] = pictures / f"{name}.png"
        blocks.append(f'/** \\class xov::{name}\n *\n * <img src="view-{name}.png" alt="{caption}"/>\n *\n'
                      f" * The program that drew it, with the example data:\n * \\include views/{name}.cpp\n{beside} */\n")
        shown.append(f'<figure><a href="{_class_page(name)}"><img src="view-{name}.png" alt="{caption}"/></a>'
                     f'<figcaption><a href="{_class_page(name)}">{name}</a>: {caption}</figcaption></figure>')
    page = ("/** \\page gallery Views in pictures\n * Each leads to the page of its view, with the program that drew it.\n"
            " * \\htmlonly\n<div class=\"gallery\">\n" + "\n".join(shown) + "\n</div>\n\\endhtmlonly\n */\n")
    _write(stage / "docs/views.dox", "\n".join(blocks) + page)
    return files


def _stage_pages(root, classes, stage):
    paths = [path.relative_to(root).as_posix() for path in [*root.glob("*.md"), *(root / "docs").rglob("*.md")]]
    site = Site(root, [*paths, "resources/README.md"], classes, {"examples/views": "gallery"})
    for path in sorted(site.paths, key=lambda path: (path != "docs/README.md", path)):
        _write(stage / ("docs/README.md" if path == "docs/README.md" else f"pages/{page_id(path)}.md"), site.page(path))
    return site.files


def _run_doxygen(root, stage, output, version):
    values = {"VERSION": version, "OUTPUT": output, "INPUT": stage, "EXAMPLES": root / "examples", "SITE": _SITE,
              "WARNINGS": output / "warnings"}
    settings = re.sub(r"@(\w+)@", lambda name: str(values[name.group(1)]), (_SITE / "Doxyfile.in").read_text())
    _write(output / "Doxyfile", settings)
    subprocess.run(["doxygen", str(output / "Doxyfile")], check=True)
    # What stands in a namespace and in a group is warned of twice.
    said = [line.replace(f"{stage}/", "") for line in (output / "warnings").read_text().splitlines() if line.strip()]
    return list(dict.fromkeys(said))


def main():
    arguments = _arguments()
    root, output = Path(arguments.root).resolve(), Path(arguments.output).resolve()
    stage, html = output / "input", output / "html"
    for folder in (stage, html):
        shutil.rmtree(folder, ignore_errors=True)
    listed = Path(arguments.headers).read_text().split()
    classes, warnings = _stage_headers(root, Path(arguments.made), listed, stage)
    files = _stage_views(root, Path(arguments.pictures), stage) | _stage_pages(root, classes, stage)
    warnings += _run_doxygen(root, stage, output, arguments.version)
    for name, source in files.items():
        shutil.copyfile(source, html / name)
    # Doxygen leads to nested classes also where all of them are private and not told.
    for page in html.glob("*.html"):
        text = page.read_text(encoding="utf-8")
        if '"#nested-classes"' in text and 'name="nested-classes"' not in text:
            page.write_text(text.replace('<a href="#nested-classes">Classes</a> &#124;\n', ""), encoding="utf-8")
    # The list of what a search has found is a document of its own.
    search = html / "search/search.css"
    search.write_text(search.read_text() + (_SITE / "search.css").read_text())
    undocumented = sum("is not documented" in warning for warning in warnings)
    print(f"{len(listed)} headers, {undocumented} public names without a comment, {len(warnings)} warnings: {html}/index.html")
    print("\n".join(warnings[:100]), end="\n" if warnings else "")
    return 1 if warnings else 0


if __name__ == "__main__":
    sys.exit(main())
