import re
import tempfile
import unittest
from pathlib import Path, PurePath

import documents
import tree


def every(check):
    return [line for path in tree.files(".md") for line in check(path, (tree.ROOT / path).read_text())]


class TheDocuments(unittest.TestCase):
    def test_link_to_files_that_are_there(self):
        self.assertEqual([], every(documents.broken_links))

    def test_name_commands_that_are_there(self):
        self.assertEqual([], every(documents.unknown_commands))

    def test_name_paths_that_are_there(self):
        self.assertEqual([], every(documents.unknown_paths))

    def test_name_the_headers_of_the_mac_that_are_not_plain_cpp(self):
        headers = [path for path in tree.files(".h") if path.parts[:2] == ("platform", "macos")]
        native = {path.name for path in headers if "#import" in (tree.ROOT / path).read_text()}
        text = (tree.ROOT / "docs/architecture.md").read_text()
        exceptions = re.search(r"headers of `platform/macos` are plain C\+\+, but for ([^;]*);", text)
        self.assertEqual(native, set(re.findall(r"`(\w+\.h)`", exceptions[1] if exceptions else "")))

    def test_open_with_a_picture_and_two_commands(self):
        text = (tree.ROOT / "README.md").read_text()
        self.assertRegex(text, r"\A# .*\n\n(<!--.*-->\n)?!\[[^\]]+\]\(docs/images/[\w-]+\.png\)\n")
        self.assertEqual([["./run"], ["./test"]], [words[:1] for words in documents.commands(text)[:2]])


class TheCheckOfDocuments(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.root = Path(folder.name)
        (self.root / "docs").mkdir()
        (self.root / "run").touch()
        (self.root / "CMakePresets.json").write_text('{"configurePresets": [{"name": "dev"}]}')

    def found(self, check, text):
        return bool(check(PurePath("README.md"), text, self.root))

    def test_finds_a_broken_link(self):
        self.assertTrue(self.found(documents.broken_links, "see [this](docs/none.md)"))
        self.assertFalse(self.found(documents.broken_links, "see [this](docs) and [that](run#x)"))

    def test_finds_a_command_that_is_not_there(self):
        self.assertTrue(self.found(documents.unknown_commands, "```\n./walk\n```\n"))
        self.assertTrue(self.found(documents.unknown_commands, "```\ncmake --preset none\n```\n"))
        self.assertFalse(self.found(documents.unknown_commands, "```sh\n./run --fresh\ncmake --preset dev\n```\n"))

    def test_finds_a_path_that_is_not_there(self):
        self.assertTrue(self.found(documents.unknown_paths, "in `docs/none.md`"))
        self.assertFalse(self.found(documents.unknown_paths, "in `docs/` and `std/none`"))


if __name__ == "__main__":
    unittest.main()
