"""Public headers as Doxygen wants them.

The headers follow habits that save words, and a reader of a header sees at once what is meant; Doxygen does not.
read() writes out what a habit means, on the line where it applies, so that warnings keep their line numbers:

- a comment on what() holds for setWhat() directly below it, the other way round, for overloads, and for the same of other
  axes, other ends of them and other kinds of files;
- a property is what its getter tells, and writing it draws anew;
- a field what_ of a class is what its getter what() tells;
- a field with a number, such as t1, is what the first one of its series is;
- constructors from a parent or a frame, destructors, copies, and == of all members mean what they do anywhere.

Everything else needs a comment of its own. So do the values of an enumeration but for those that stand in one line, which its
comment is about: silent_values() tells, as Doxygen does not count them.
"""

import re
from dataclasses import dataclass, field

_OPENING = re.compile(r"^( *)(?:template <.*> )?(class|struct)(?: XOV_EXPORT)? (\w+)[^;]*\{(.*)$")
_FUNCTION = re.compile(r"(operator *(?:\(\)|[^\s(]+)|~?[A-Za-z_]\w*) *\(")
_FIELD = re.compile(r"(\w+)(?:\[\w*\])?(?: *=[^=].*|\{.*\}|)(?:;|$)")
_ACCESS = re.compile(r"^(public|protected|private|Q_SIGNALS|public Q_SLOTS)\b.*:$")


@dataclass
class _Member:
    line: int
    kind: str  # "function", "field" or "property"
    name: str
    text: str  # the declaration up to its body
    comment: str
    documented: bool
    follows: "_Member | None"  # the member directly above it, without a line between


@dataclass
class _Class:
    name: str
    indent: int
    access: str
    members: list = field(default_factory=list)


def _declaration(lines, start):
    """The text from a line on until its parentheses are closed and it ends or its body begins, and its last line."""
    text, depth = "", 0
    for number in range(start, min(start + 12, len(lines))):
        code = lines[number].split("//")[0].strip()
        text = (text + " " + code).strip()
        depth += code.count("(") - code.count(")")
        ends = text.startswith("Q_PROPERTY(") or code.endswith((";", "{", "}", ",")) or "///<" in lines[number]
        if depth <= 0 and ends:
            return text, number
    return text, start


def _member(lines, start, comment, follows):
    text, end = _declaration(lines, start)
    documented = bool(comment) or any("///<" in line for line in lines[start : end + 1])
    if text.startswith("Q_PROPERTY("):
        name = re.match(r"Q_PROPERTY\( ?\S.*? (\w+) (?:READ|MEMBER)\b", text)
        return _Member(start, "property", name.group(1), text, comment, documented, follows), end
    plain = re.sub(r"\b(XOV_EXPORT|explicit|Q_INVOKABLE|\[\[\w+\]\]) ?", "", text)
    plain = re.sub(r"<[^()]*?>(?=[&* ])", "", plain)
    function = _FUNCTION.search(plain)
    if function and not re.match(r"[^(]*\w+ = ", plain):
        return _Member(start, "function", function.group(1), text, comment, documented, follows), end
    variable = _FIELD.search(plain)
    return _Member(start, "field", variable.group(1) if variable else "", text, comment, documented, follows), end


def _classes(lines):
    """Every class with its members, in the order in which they end."""
    stack, done = [], []
    comment, above, number = [], None, 0
    while number < len(lines):
        line = lines[number]
        code = line.strip()
        inner = stack[-1].indent + 2 if stack else None
        if code.startswith("///"):
            comment.append(re.sub(r"^///<? ?", "", code))
            number += 1
            continue
        if code.startswith("template <"):
            number += 1
            continue
        opening = _OPENING.match(line)
        if opening and not opening.group(4).rstrip().endswith("};"):
            stack.append(_Class(opening.group(3), len(opening.group(1)),
                                "public" if opening.group(2) == "struct" else "private"))
            above = None
        elif stack and re.match(rf"^ {{{stack[-1].indent}}}\}}", line):
            done.append(stack.pop())
            above = None
        elif not code or code.startswith("//") or not stack:
            above = None
        elif _ACCESS.match(code):
            stack[-1].access = code.split()[0].rstrip(":").replace("Q_SIGNALS", "public")
            above = None
        elif line.startswith(" " * inner) and line[inner] not in " })" and not re.match(
            r"(Q_OBJECT|Q_CLASSINFO|friend|using|static_assert|enum|class|struct)\b", code):
            member, number = _member(lines, number, " ".join(comment).strip(), above)
            stack[-1].members.append((stack[-1].access, member))
            # What a deleted overload says holds for nothing else.
            above = above if "= delete" in member.text else member
        comment = []
        number += 1
    return done


def silent_values(text):
    """The values of enumerations in several lines that have no comment, with the numbers of their lines."""
    inside, comment = False, False
    for number, line in enumerate(text.split("\n"), 1):
        value = re.match(r"\s+(\w+)( = [^,]+)?,?\s*(///<.*)?$", line) if inside else None
        if value and not value.group(3) and not comment:
            yield number, value.group(1)
        inside = not re.match(r"\s*\}", line) if inside else re.match(r"\s*enum\b.*\{$", line) is not None
        comment = line.strip().startswith("///")


def _bare(name):
    """What a getter and a setter have in common: title of _title, title and setTitle; showTitle of set_showTitle."""
    setter = re.match(r"set_?([A-Za-z]\w*)$", name)
    name = setter.group(1) if setter else name.lstrip("_").rstrip("_")
    return name[:1].lower() + name[1:]


def _is_setter(name):
    return re.match(r"set(_|[A-Z]|[a-z]+[A-Z])", name) is not None


def _kin(name):
    """A name without what tells axes, their ends and kinds of files apart: the same for setXmin and setYmax."""
    name = re.sub(r"(?<![A-Za-z])[xyz](?=[A-Zm])|[XYZ](?=[A-Zm]|$)", "*", _bare(name))
    return re.sub(r"(?<=\*)m(in|ax)|PDF|SVG|TIF|PNG|JPG", "*", name)


def _pair(member, other):
    return _kin(member.name) == _kin(other.name)


def _plain_special(owner, member):
    """What constructors, destructors and comparisons mean that need no words in a header."""
    text, name = member.text, member.name
    if name == "~" + owner.name:
        return "Destroys it."
    if name.startswith("operator==") and "= default" in text:
        return "Whether all members are equal."
    if name != owner.name and not name.startswith("operator="):
        return ""
    if re.search(rf"\((const )?{owner.name}(&|&&)( \w+)?\)", text):
        return "Not to be copied or moved." if "= delete" in text else "Copies or moves it."
    if re.search(r"\(QWidget\* parent = nullptr\)", text):
        return "A view as a layout or a form makes it, without a frame."
    if re.search(r"\(const QRectF& frame, QWidget\* parent = nullptr\)", text):
        return "A view with a frame in view points: its place in its parent, or its size as a window."
    if re.search(rf"\b{owner.name}\(\)", text):
        return "Makes it with the values that its members have at first."
    return ""


def _words(owner, member):
    """The comment that a habit gives a member; none where no habit applies."""
    members = [other for _, other in owner.members]
    if member.kind == "property":
        getter = re.search(r"READ (\w+)", member.text).group(1)
        told = next((m.comment for m in members if m.name == getter and m.comment), "")
        return f"{getter}() as a property; writing it draws anew. {told}".strip()
    if member.kind == "field":
        stem = re.match(r"(.*[a-z])\d+$", member.name)
        first = stem and next((m for m in members if m.documented and re.fullmatch(stem.group(1) + r"\d+", m.name)), None)
        if first:
            return f"As {first.name}."
        getter = next((m.name for m in members if m.kind == "function" and _bare(m.name) == _bare(member.name)
                       and not _is_setter(m.name)), "")
        return f"What {getter}() tells." if getter and member.name.endswith("_") else ""
    above = member.follows
    while above and not above.documented and _pair(member, above):
        above = above.follows
    if above and above.comment and _pair(member, above):
        if _bare(member.name) == _bare(above.name) and _is_setter(member.name) and not _is_setter(above.name):
            return f"Sets {above.name}(). {above.comment}"
        return above.comment
    return _plain_special(owner, member)


def read(text, group):
    """A header's text with what its habits mean written out, its contents in a group of Doxygen's."""
    lines = text.split("\n")
    for owner in _classes(lines):
        for access, member in owner.members:
            if access == "private" and member.kind != "property" or member.documented:
                continue
            words = _words(owner, member).replace("*/", "* /")
            if words:
                line = lines[member.line]
                indent = len(line) - len(line.lstrip())
                lines[member.line] = f"{line[:indent]}/** {words} */ {line[indent:]}"
    result, opened = [], False
    for line in lines:
        if opened and not line:
            line = "\\{ */"
        opened = re.match(r"namespace xov(::\w+)* \{$", line) is not None
        if opened:
            line += f" /** \\addtogroup {group}"
        elif re.match(r"\} // namespace xov(::\w+)*$", line):
            line = "/** \\} */ " + line
        result.append(line)
    return "\n".join(result)
