"""A minimal parser of C++ and Objective-C++: code without comments and string literals, includes, and functions."""

import re
from typing import NamedTuple

SUFFIXES = (".h", ".cpp", ".mm", ".m")

TOKEN = re.compile(
    r"""
      //(?:\\\n|[^\n])*                                  # a comment to the end of the line
    | /\*.*?\*/                                          # a comment
    | R"(?P<mark>[^()\s\\]{0,16})\(.*?\)(?P=mark)"       # a raw string literal
    | "(?:\\.|[^"\\\n])*"                                # a string literal
    | (?<![0-9A-Za-z_])'(?:\\.|[^'\\\n])+'               # a character, not a digit separator
    """,
    re.DOTALL | re.VERBOSE,
)

INCLUDE = re.compile(r"^[ \t]*#[ \t]*(?:include|import)[ \t]*([<\"])([^>\"]+)[>\"]", re.MULTILINE)


FUNCTION, VALUE, OTHER = range(3)


class Include(NamedTuple):
    line: int
    system: bool
    path: str


class Function(NamedTuple):
    line: int
    length: int
    head: str


def code(text):
    """The code without comments and without the contents of string literals, with the same line numbers."""
    return TOKEN.sub(lambda token: blank(token.group()), text)


def blank(token):
    lines = "\n" * token.count("\n")
    return lines if token.startswith("/") else '""' + lines


def without_comments(text):
    return TOKEN.sub(lambda token: blank(token.group()) if token.group().startswith("/") else token.group(), text)


def includes(text):
    text = without_comments(text)
    return [Include(line_at(text, found.start()), found[1] == "<", found[2]) for found in INCLUDE.finditer(text)]


def line_at(text, position):
    return text.count("\n", 0, position) + 1


def functions(text):
    """The outermost functions that the text defines."""
    text = re.sub(r"^[ \t]*#(?:\\\n|[^\n])*", lambda line: "\n" * line[0].count("\n"), code(text), flags=re.MULTILINE)
    found, open_braces, start = [], [], 0
    for brace in re.finditer(r"[{};]", text):
        position = brace.start()
        if brace[0] == "{":
            open_braces.append(kind_of_brace(text, start, position, open_braces))
        elif brace[0] == "}" and open_braces:
            kind, first, head = open_braces.pop()
            if kind == FUNCTION:
                found.append(measured(text, first, position, head))
            if kind == VALUE:
                continue
        if not open_braces or open_braces[-1][0] != VALUE:
            start = brace.end()
    return found


def kind_of_brace(text, start, position, open_braces):
    """What a brace opens, its position, and the code before it."""
    head = text[start:position]
    if re.search(r"[\w>]$", head):
        return VALUE, position, ""
    inside = any(kind == FUNCTION for kind, _, _ in open_braces)
    return (OTHER if inside or not opens_function(head) else FUNCTION), position, " ".join(head.split())


def opens_function(head):
    """Whether a brace after this code opens the body of a function."""
    head = re.sub(r"^\s*(?:(?:public|protected|private)\s*:\s*)*", "", head)
    if re.match(r"\s*[-+]\s*\(", head):
        return True
    if re.match(r"\s*(?:namespace|enum|extern\s*\"\")\b", head) or "(" not in head:
        return False
    plain = re.sub(r"<[^<>()]*>", "", head)
    if re.match(r"\s*(?:class|struct|union)\b[^(]*$", plain) or re.search(r"[^=!<>]=\s*[^=()]*$", plain):
        return False
    return re.search(r"\)\s*(?:const|noexcept|override|final|mutable|&{1,2}|->[^;]*|:[^;]*|\s)*$", plain) is not None


def measured(text, first, last, head):
    line = line_at(text, first)
    return Function(line, line_at(text, last) - line + 1, head)
