import os
import re
import subprocess
import unittest

import tree

LINE = re.compile(r"^([a-z0-9][a-z0-9.+-]*) +# (\S.*)$")


def wrong_lines(text):
    """The lines that repeat a package, or are not a package and its reason."""
    wrong, seen = [], set()
    for line in text.splitlines():
        if line.startswith("#"):
            continue
        found = LINE.match(line)
        if not found or found[1] in seen:
            wrong.append(line)
        seen.add(found and found[1])
    return wrong


def packages(text):
    return [found[1] for line in text.splitlines() if (found := LINE.match(line))]


class TheShellScripts(unittest.TestCase):
    def test_are_found(self):
        names = {str(path) for path in tree.scripts()}
        self.assertLessEqual(
            {"run", "test", ".ci/run", "tools/build", "tools/session", "tools/install-packages"}, names
        )

    def test_are_executable(self):
        started = tree.scripts() + [path for path in tree.python() if path.suffix == ""]
        self.assertEqual([], [str(path) for path in started if not os.access(tree.ROOT / path, os.X_OK)])


class TheListOfPackages(unittest.TestCase):
    text = (tree.ROOT / "tools/packages.txt").read_text()

    def test_gives_a_reason_for_each(self):
        self.assertEqual([], wrong_lines(self.text))

    def test_names_installed_packages(self):
        answer = subprocess.run(
            ["dpkg-query", "--show", "--showformat", "${db:Status-Status} ${Package}\n", *packages(self.text)],
            capture_output=True,
            text=True,
        )
        installed = {line.split()[1] for line in answer.stdout.splitlines() if line.startswith("installed ")}
        self.assertEqual(set(packages(self.text)), installed)

    def test_is_checked_for_missing_reasons_and_duplicates(self):
        self.assertEqual(["cmake #", "ctest  # again"], wrong_lines("cmake #\nctest # why\nctest  # again\n"))
