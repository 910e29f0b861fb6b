"""Markdown of the tree as Doxygen wants it.

A page and each of its headings get names that follow from the file's place and the heading's words, as GitHub makes them, so
that links between files work here and there. Pictures are shown from beside the page, and a link to a file that is no page
leads to a copy of it.
"""

import html
import re
from pathlib import Path, PurePosixPath
from urllib.parse import unquote

_LINK = re.compile(r"(!?)\[((?:[^\[\]]|\[[^\]]*\]|!\[[^\]]*\]\([^)]*\))*)\]\(([^)\s]+)\)")
_HEADING = re.compile(r"^(#{1,6}) +(.*?) *#*$")
_FENCE = re.compile(r"^ *(```|~~~)")
_CODE = re.compile(r"(`+)(.+?)\1")
_COMMAND = re.compile(r"([@\\%<]|#(?=\w))")
_TAG = re.compile(r"</?(a|b|br|code|em|i|img|kbd|p|strong|sub|sup|table|td|th|tr)\b[^<>]*>")


def page_id(path):
    """docs/guide/maps.md is guide_maps, README.md of a folder the folder's own name."""
    parts = list(PurePosixPath(path).with_suffix("").parts)
    if parts[-1] == "README" and len(parts) > 1:
        parts.pop()
    if parts[0] == "docs" and len(parts) > 1:
        parts = parts[1:]
    return "page_" + re.sub(r"\W", "_", "_".join(parts))


def slug(heading):
    """The anchor that GitHub gives a heading."""
    text = re.sub(r"\[([^\]]*)\]\([^)]*\)", r"\1", heading).replace("`", "").strip().lower()
    return re.sub(r"[^\w\- ]", "", text).replace(" ", "-")


def lines_outside_code(text):
    """Each line, and whether it is prose rather than code; a link that is broken across lines stands in one."""
    fence = None
    for line in re.sub(r"(\[[^\[\]\n]+)\n([^\[\]\n]+\]\()", r"\1 \2", text).split("\n"):
        mark = _FENCE.match(line)
        if mark and fence in (None, mark.group(1)):
            fence = None if fence else mark.group(1)
            yield line, False
        else:
            yield line, fence is None and not line.startswith("    ")


def headings(text):
    """The headings of a page with their anchors; those of the same words are numbered."""
    seen = {}
    for line, prose in lines_outside_code(text):
        heading = _HEADING.match(line) if prose else None
        if heading:
            anchor = slug(heading.group(2))
            count = seen[anchor] = seen.get(anchor, -1) + 1
            yield heading, f"{anchor}-{count}" if count else anchor


def links(text):
    """The targets of all links and pictures of a page."""
    for line, prose in lines_outside_code(text):
        if prose:
            for _, shown, target in _LINK.findall(_CODE.sub(lambda code: " " * len(code.group(0)), line)):
                yield target
                yield from (inner for _, _, inner in _LINK.findall(shown))


class Site:
    """The pages of a tree, and the files beside them that the site needs: `files` by their names there."""

    def __init__(self, root, paths, classes, places):
        """`classes` are the pages of classes by name, `places` other pages by the folders that links to them name."""
        self.root, self.paths, self.classes, self.places = Path(root), set(paths), classes, places
        self.files, self.placed = {}, set()

    def page(self, path):
        """A page as Doxygen reads it."""
        text = (self.root / path).read_text(encoding="utf-8")
        if path == "README.md":
            # The page that all others are below has the project's name already.
            text = re.sub(r"\A# (.*)", r"# What \1 is", text)
        anchors = iter([anchor for _, anchor in headings(text)])
        index = PurePosixPath(path).name == "README.md"
        linked, result, first = set(), [], True
        for line, prose in lines_outside_code(text):
            heading = _HEADING.match(line) if prose else None
            if heading:
                anchor, marks = next(anchors), heading.group(1)
                name = page_id(path) if first else f"{page_id(path)}-{anchor}"
                first = False
                line = f"{marks} {self._prose(heading.group(2), path, linked, index, False)} {{#{name}}}"
            elif prose:
                line = self._prose(line, path, linked, index)
            elif _FENCE.match(line):
                line = re.sub(r"(```|~~~)(sh|bash|text|console|cmake|json|ini|csv)$", r"\1", line)
            result.append(line)
        if index:
            result += self._others(path, linked)
        return "\n".join(result) + "\n"

    def _others(self, path, linked):
        """A list of the pages beside an index page that it does not mention."""
        folder = PurePosixPath(path).parent
        beside = [p for p in sorted(self.paths) if PurePosixPath(p).parent == folder and p != path and p not in linked]
        return [""] + [f"- @subpage {page_id(p)}" for p in beside]

    def _prose(self, line, path, linked, index, leads=True):
        pieces, place = [], 0
        for link in _LINK.finditer(_CODE.sub(lambda code: code.group(0).replace("[", "\0").replace("]", "\1"), line)):
            pieces.append(self._plain(line[place : link.start()], leads))
            shown = link.group(2).replace("\0", "[").replace("\1", "]")
            pieces.append(self._link(bool(link.group(1)), shown, link.group(3), path, linked, index))
            place = link.end()
        return "".join(pieces) + self._plain(line[place:], leads)

    def _plain(self, text, leads=False):
        """Prose whose signs are not to be taken for commands; code stays as it is, and a class leads to its page."""
        result, place = [], 0
        for code in _CODE.finditer(text):
            result += [self._escaped(text[place : code.start()]), self._code(code.group(2), leads)]
            place = code.end()
        return "".join(result) + self._escaped(text[place:])

    @staticmethod
    def _escaped(text):
        result, place = [], 0
        for tag in _TAG.finditer(text):
            result += [_COMMAND.sub(r"\\\1", text[place : tag.start()]), tag.group(0)]
            place = tag.end()
        return "".join(result) + _COMMAND.sub(r"\\\1", text[place:])

    def _code(self, code, leads):
        name = re.match(r"(?:xov::)?(\w+)$", code)
        if leads and name and name.group(1) in self.classes:
            return f'<a href="{self.classes[name.group(1)]}"><code>{code}</code></a>'
        return f"`{code}`"

    def _link(self, is_picture, shown, target, path, linked, index):
        if re.match(r"[a-z]+:", target):
            return f'<a href="{html.escape(target)}">{self._plain(shown)}</a>'
        place, _, anchor = target.partition("#")
        file = self._inside(path, place) if place else path
        if is_picture:
            return f'<img src="{self._copy(file)}" alt="{html.escape(shown)}"/>'
        words = re.sub(r"[`\"]", "", shown)
        if file in self.places:
            return f'@subpage {self.places[file]} "{words}"'
        if file in self.paths:
            linked.add(file)
            # A page stands below the first index that leads to it.
            if index and not anchor and file not in self.placed and file != path:
                self.placed.add(file)
                return f'@subpage {page_id(file)} "{words}"'
            return f'@ref {page_id(file)}{"-" + anchor if anchor else ""} "{words}"'
        name = PurePosixPath(file).stem
        if file.endswith(".h") and name in self.classes:
            return f'<a href="{self.classes[name]}">{self._plain(shown)}</a>'
        if (self.root / file).is_file():
            return f'<a href="{self._copy(file)}">{self._prose(shown, path, linked, False, False)}</a>'
        return self._plain(shown)

    @staticmethod
    def _inside(path, target):
        parts = []
        for part in (PurePosixPath(path).parent / unquote(target)).parts:
            if part == "..":
                if not parts:
                    raise ValueError(f"{path}: {target} lies outside of the tree")
                parts.pop()
            else:
                parts.append(part)
        return "/".join(parts)

    def _copy(self, file):
        name = re.sub(r"[^\w.\-]", "_", file)
        self.files[name] = self.root / file
        return name
