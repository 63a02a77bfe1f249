"""What the documents promise: links to files of the tree, and commands that a reader can type."""

import re

import tree

LINK = re.compile(r"!?\[[^\]]*\]\(([^)#\s]+)(?:#[^)]*)?\)")
FENCE = re.compile(r"^```\w*\n(.*?)^```", re.MULTILINE | re.DOTALL)
NAMED = re.compile(r"`([^`\n]+)`")

# What the build makes, and a document may name.
BUILT = re.compile(
    r"^build/(?:release|ship|dev|asan|core|clang|tidy)"
    r"(?:/bin(?:/(?:sysextd|sysextctl|SystemSettings|seal))?|/Driver Manager\.app(?:/.*)?|/share/.*|/packaging/macos/.*|/shipped)?/?$"
)


def broken_links(path, text, root=tree.ROOT):
    return [
        f"{path}: {link}"
        for link in LINK.findall(text)
        if "://" not in link and not (root / path.parent / link).exists()
    ]


def commands(text):
    """The lines of the fenced blocks that start a program of this tree, as lists of words."""
    lines = [line.strip() for block in FENCE.findall(text) for line in block.splitlines()]
    lines = [re.sub(r"^\$ |^xvfb-run -a |\s+#.*$", "", line) for line in lines]
    return [re.split(r"\s+", line) for line in lines if re.match(r"\./|tools/|build/|cmake |ctest ", line)]


def unknown_commands(path, text, root=tree.ROOT):
    return [f"{path}: {' '.join(words)}" for words in commands(text) if not known(words, root)]


def known(words, root):
    if words[0] in ("cmake", "ctest"):
        return words[-1] in presets(root) or "--preset" not in words
    return bool(BUILT.match(words[0])) or (root / words[0]).is_file()


def presets(root):
    return re.findall(r'"name": "(\w+)"', (root / "CMakePresets.json").read_text())


def unknown_paths(path, text, root=tree.ROOT):
    """What is named in code spans as a path of the tree, and is not there."""
    folders = {entry.name for entry in root.iterdir() if entry.is_dir()}
    spans = [span.removeprefix("./") for span in NAMED.findall(FENCE.sub("", text))]
    paths = [span for span in spans if "/" in span and span.split("/")[0] in folders and not re.search(r"[\s*{<]", span)]
    return [f"{path}: {span}" for span in paths if not BUILT.match(span) and not (root / span).exists()]
