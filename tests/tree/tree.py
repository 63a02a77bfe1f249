"""The files of this tree that are under version control, or new and not ignored."""

from pathlib import Path

ROOT = Path(__file__).resolve().parents[2]


def files(*suffixes):
    """The files with one of these suffixes, as sorted paths from the root."""
    return sorted(
        path.relative_to(ROOT)
        for path in ROOT.rglob("*")
        if path.is_file() and path.suffix in suffixes and not left_out(path.relative_to(ROOT))
    )


def left_out(path):
    return path.parts[0] in (".git", "build") or "__pycache__" in path.parts


def scripts():
    """The shell scripts, recognized by their first line."""
    return [path for path in files("", ".sh") if first_line(ROOT / path).startswith("#!/bin/bash")]


def first_line(path):
    with path.open(errors="replace") as text:
        return text.readline()


def python():
    """The Python scripts and modules."""
    named = [path for path in files("") if first_line(ROOT / path).startswith("#!/usr/bin/python3")]
    return files(".py") + named


def every(check, paths):
    """What a check finds in these files. It is called with the path and the text of each."""
    return [line for path in paths for line in check(path, (ROOT / path).read_text())]
