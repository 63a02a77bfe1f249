import re
import subprocess
import tempfile
import unittest

import cpp
import tree


def badly_laid_out(paths):
    """The places that clang-format would lay out otherwise, a line each."""
    answer = subprocess.run(
        ["clang-format", f"--style=file:{tree.ROOT / '.clang-format'}", "--dry-run", *paths],
        cwd=tree.ROOT,
        capture_output=True,
        text=True,
    )
    return re.findall(r"^(.+:\d+):\d+: warning: code should be clang-formatted", answer.stderr, re.MULTILINE)


class TheSources(unittest.TestCase):
    def test_are_laid_out_as_the_formatter_does(self):
        self.assertEqual([], badly_laid_out(tree.files(*cpp.SUFFIXES)))


class TheCheckOfTheLayout(unittest.TestCase):
    def test_finds_a_line_that_is_indented_otherwise(self):
        self.assertTrue(self.complains("int main() {\n  return 0;\n}\n"))

    def test_passes_what_is_laid_out_as_it_should_be(self):
        self.assertFalse(self.complains("int main() {\n    return 0;\n}\n"))

    def complains(self, text):
        with tempfile.NamedTemporaryFile("w", suffix=".cpp") as source:
            source.write(text)
            source.flush()
            return badly_laid_out([source.name])


if __name__ == "__main__":
    unittest.main()
