#!/usr/bin/env python3
"""Finds links that lead nowhere.

    links.py --site FOLDER     in a built site: every page, every list that the search reads
    links.py --tree FOLDER     in the Markdown of a tree

Local links and their anchors must be there. Links to other machines must be addresses, and nothing but a link that a reader
follows may name one: no page fetches a style sheet, a script, a font or a picture from elsewhere. Ends with 1 and a line for
each fault.
"""

import argparse
import re
import sys
from html.parser import HTMLParser
from pathlib import Path
from urllib.parse import unquote, urlsplit

from pages import headings, links


class _Page(HTMLParser):
    """What a page links to and shows, and the anchors that it has."""

    def __init__(self, text):
        super().__init__()
        self.followed, self.loaded, self.anchors = [], [], {""}
        self.feed(text)

    def handle_starttag(self, tag, attributes):
        for name, value in attributes:
            if name == "id" or (tag == "a" and name == "name"):
                self.anchors.add(value)
            elif name == "href" and tag in ("a", "area"):
                self.followed.append(value or "")
            elif name in ("href", "src", "srcset", "data", "poster"):
                self.loaded.append(value or "")


def is_outside(target):
    return re.match(r"[a-zA-Z][a-zA-Z0-9+.\-]*:|//", target) is not None


def is_address(target):
    """Whether a link to another machine is well-formed: https with a host that has a dot, or a mail address."""
    parts = urlsplit(target)
    if parts.scheme == "mailto":
        return re.fullmatch(r"[^@\s]+@[\w\-]+(\.[\w\-]+)+", parts.path) is not None
    host = parts.hostname or ""
    return parts.scheme in ("http", "https") and re.fullmatch(r"[\w\-]+(\.[\w\-]+)+", host) is not None and " " not in target


def _faults_of_page(path, page, pages):
    for target in page.loaded:
        if is_outside(target) and not target.startswith(("data:", "javascript:")):
            yield f"{path}: fetches {target} from elsewhere"
    for target in page.followed + [t for t in page.loaded if not is_outside(t)]:
        if target.startswith("javascript:"):
            continue
        if is_outside(target):
            if not is_address(target):
                yield f"{path}: {target} is no address"
            continue
        place, _, anchor = target.partition("#")
        file = (path.parent / unquote(place.partition("?")[0])).resolve() if place else path
        if not file.exists():
            yield f"{path}: {target} is not there"
        elif anchor and file in pages and unquote(anchor) not in pages[file].anchors:
            yield f"{path}: {target} has no such anchor"


def faults_of_site(folder):
    folder = Path(folder).resolve()
    texts = {path: path.read_text(encoding="utf-8", errors="replace") for path in sorted(folder.rglob("*.html"))}
    pages = {path: _Page(text) for path, text in texts.items()}
    if not pages:
        yield f"{folder}: holds no page"
    for path, page in pages.items():
        yield from _faults_of_page(path, page, pages)
    for path in sorted(folder.rglob("*.css")):
        for target in re.findall(r"(?:url\(|@import )\s*[\"']?([^\"')\s]+)", path.read_text(encoding="utf-8")):
            if is_outside(target) and not target.startswith(("data:", "javascript:")):
                yield f"{path}: fetches {target} from elsewhere"
    for path in sorted((folder / "search").glob("*_*.js")):
        found = _Page(" ".join(f'<a href="{target}"></a>' for target in re.findall(r"'(\.\./[^']*)'", path.read_text())))
        yield from _faults_of_page(path, found, pages)


def faults_of_tree(folder):
    folder = Path(folder).resolve()
    files = [path for path in sorted(folder.rglob("*.md")) if not {"build", ".git"} & set(path.relative_to(folder).parts)]
    texts = {path: path.read_text(encoding="utf-8") for path in files}
    anchors = {path: {anchor for _, anchor in headings(text)} for path, text in texts.items()}
    if not files:
        yield f"{folder}: holds no Markdown"
    for path, text in texts.items():
        name = path.relative_to(folder)
        for target in links(text):
            place, _, anchor = target.partition("#")
            file = (path.parent / unquote(place)).resolve() if place else path
            if is_outside(target):
                if not is_address(target):
                    yield f"{name}: {target} is no address"
            elif not file.exists() or folder not in (file, *file.parents):
                yield f"{name}: {target} is not there"
            elif anchor and anchor not in anchors.get(file, set()):
                yield f"{name}: {target} has no such heading"


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--site")
    parser.add_argument("--tree")
    arguments = parser.parse_args()
    faults = [*(faults_of_site(arguments.site) if arguments.site else []),
              *(faults_of_tree(arguments.tree) if arguments.tree else [])]
    print("\n".join(faults[:200] + [f"{len(faults)} dead links"]))
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main())
