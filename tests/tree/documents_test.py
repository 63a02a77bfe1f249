"""The documents: their links, the commands and paths in them, their spelling, and the picture of the layers."""

import os
import re
import subprocess
import unittest
from pathlib import PurePath

import tree

LINK = re.compile(r"!?\[[^\]]*\]\(([^)#\s]*)(?:#([^)]*))?\)|<img [^>]*src=\"([^\"]+)\"")
FENCE = re.compile(r"^```\w*\n(.*?)^```", re.MULTILINE | re.DOTALL)
NAMED = re.compile(r"`([^`\n]+)`")

# Files that the build creates.
BUILT = re.compile(
    r"^build/(?:release|ship|dev|asan|core|libcxx)"
    r"(?:/bin(?:/(?:sysextd|sysextctl|SystemSettings|seal))?|/Driver Manager\.app(?:/.*)?|/share/.*"
    r"|/packaging/macos/.*|/tests/fuzz|/shipped)?/?$"
)


def broken_links(path, text):
    return [
        f"{path}: {link}" for link in LINK.findall(text) if "://" not in link[0] and not leads_somewhere(path, *link)
    ]


def leads_somewhere(path, file, heading, image):
    target = tree.ROOT / path.parent / (file or image) if file or image else tree.ROOT / path
    return target.exists() and (not heading or heading in headings(target.read_text()))


def headings(text):
    """The headings of a document as links name them."""
    found = re.findall(r"^#+ (.+)$", FENCE.sub("", text), re.MULTILINE)
    return [re.sub(r"[^\w -]", "", heading.lower()).replace(" ", "-") for heading in found]


def commands(text):
    """The commands in fenced blocks and in code spans that start a program of this tree, as lists of words."""
    lines = [line.strip() for block in FENCE.findall(text) for line in block.splitlines()]
    lines = [re.sub(r"^\$ |^xvfb-run -a |\s+#.*$", "", line) for line in lines] + NAMED.findall(FENCE.sub("", text))
    return [re.split(r"\s+", line) for line in lines if re.match(r"\./|(?:tools|build|packaging)/|cmake |ctest ", line)]


def unknown_commands(path, text):
    return [f"{path}: {' '.join(words)}" for words in commands(text) if not known(words)]


def known(words):
    if words[0] in ("cmake", "ctest"):
        return "--preset" not in words or words[words.index("--preset") + 1] in presets()
    return bool(BUILT.match(words[0])) or is_there(words[0])


def presets():
    return re.findall(r'"name": "(\w+)"', (tree.ROOT / "CMakePresets.json").read_text())


def is_there(path):
    return (tree.ROOT / path).exists()


def unknown_paths(path, text):
    """The paths of the tree in code spans that do not exist."""
    folders = {entry.name for entry in tree.ROOT.iterdir() if entry.is_dir()}
    spans = [span.removeprefix("./") for span in NAMED.findall(FENCE.sub("", text))]
    paths = [span for span in spans if "/" in span and not re.search(r"[\s*{<]", span)]
    paths = [path for path in paths if path.split("/")[0] in folders]
    return [f"{path}: {span}" for span in paths if not BUILT.match(span) and not is_there(span)]


BRITISH = re.compile(
    r"(?<![-\w])\w*(?:behaviour|cancell|centre|colour|dialogue|enrolment|favour|grey|honour|licence|neighbour"
    r"|(?:author|initial|minim|notar|optim|organ|recogn)is(?:e|ing|ation))\w*",
    re.IGNORECASE,
)


def british_words(path, text):
    return [f"{path}: {word}" for word in BRITISH.findall(text)]


class TheDocuments(unittest.TestCase):
    def test_use_american_spelling_like_the_tools(self):
        told = tree.files(".md", ".cmake", ".json") + tree.scripts() + tree.python()
        self.assertEqual([], tree.every(british_words, [path for path in told if path.parts[0] != "tests"]))

    def test_mention_only_existing_files_and_commands(self):
        for check in (broken_links, unknown_paths, unknown_commands):
            self.assertEqual([], tree.every(check, tree.files(".md")))

    def test_list_the_mac_headers_that_are_not_plain_cpp(self):
        headers = [path for path in tree.files(".h") if path.parts[:2] == ("platform", "macos")]
        native = {path.name for path in headers if "#import" in (tree.ROOT / path).read_text()}
        text = (tree.ROOT / "docs/architecture.md").read_text()
        exceptions = re.search(r"headers of `platform/macos` are plain C\+\+, except for ([^;]*);", text)
        self.assertEqual(native, set(re.findall(r"`(\w+\.h)`", exceptions[1] if exceptions else "")))

    def test_show_the_layers_as_the_build_links_them(self):
        command = [tree.ROOT / "tools/layers", "--check", os.environ["DRIVER_MANAGER_BUILD"]]
        tool = subprocess.run(command, stderr=subprocess.PIPE, text=True)
        self.assertEqual((0, ""), (tool.returncode, tool.stderr))

    def test_open_with_a_picture_and_two_commands(self):
        text = (tree.ROOT / "README.md").read_text()
        self.assertRegex(text, r'\A# .*\n\n(<!--.*-->\n)?<img src="docs/images/[\w-]+\.png" width="\d+" alt="[^"]+">\n')
        self.assertEqual([["./run"], ["./test"]], [words[:1] for words in commands(text)[:2]])

    def test_are_checked_for_what_does_not_exist(self):
        for check, text in (
            (broken_links, "see [this](docs/none.md)"),
            (broken_links, "see [that](#nowhere)"),
            (broken_links, '<img src="none.png">'),
            (unknown_commands, "```\n./walk\n```\n"),
            (unknown_commands, "```\ncmake --preset none\n```\n"),
            (unknown_commands, "with `tools/none --all`"),
            (unknown_paths, "in `docs/none.md`"),
            (british_words, "the Colour"),
        ):
            self.assertEqual(1, len(check(PurePath("README.md"), text)), text)
