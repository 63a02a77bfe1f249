import re
import subprocess
import unittest

import tree

LINE = re.compile(r"^([a-z0-9][a-z0-9.+-]*) +# (\S.*)$")


def wrong_lines(text):
    """The lines that do not hold one package and its reason, or repeat a package."""
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


class TheListOfPackages(unittest.TestCase):
    text = (tree.ROOT / "tools/packages.txt").read_text()

    def test_gives_a_reason_for_each(self):
        self.assertEqual([], wrong_lines(self.text))

    def test_names_packages_that_are_installed(self):
        answer = subprocess.run(
            ["dpkg-query", "--show", "--showformat", "${db:Status-Status} ${Package}\n", *packages(self.text)],
            capture_output=True,
            text=True,
        )
        installed = {line.split()[1] for line in answer.stdout.splitlines() if line.startswith("installed ")}
        self.assertEqual(set(packages(self.text)), installed)


class TheCheckOfPackages(unittest.TestCase):
    def test_finds_a_line_without_a_reason(self):
        self.assertEqual(["cmake", "cmake #", "two words # why"], wrong_lines("cmake\ncmake #\ntwo words # why\n"))

    def test_finds_one_that_is_named_twice(self):
        self.assertEqual(["cmake  # again"], wrong_lines("cmake  # builds\ncmake  # again\n"))


if __name__ == "__main__":
    unittest.main()
