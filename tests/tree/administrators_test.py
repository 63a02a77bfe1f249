"""The page for administrators: it must have a row for each message that the application logs."""

import re
import unittest

import tree

PLACEHOLDER = re.compile(r"%@|%(?:\{public\})?[a-z]")


def text_of(path):
    return (tree.ROOT / path).read_text()


def lines_of_the_log():
    sources = [path for path in tree.files(".cpp", ".mm") if path.parts[0] in ("model", "platform")]
    found = re.findall(r'(?:platform::log\(|os_log\(\w+, )"([^"]+)"', "".join(map(text_of, sources)))
    return [line for line in found if PLACEHOLDER.sub("", line)]


def has_row(line, page):
    """Whether a row begins with the line. Words in capitals are placeholders."""
    pattern = "[A-Z]+".join(map(re.escape, PLACEHOLDER.split(line)))
    return re.search(rf"^\| (?:`[^`]+` or )?`{pattern}`", page, re.MULTILINE) is not None


class ThePageForAdministrators(unittest.TestCase):
    page = text_of("docs/administrators.md")

    def test_explains_each_line_of_the_log(self):
        lines = lines_of_the_log()
        self.assertIn("Sysex request failed: %@ (%@)", lines)
        self.assertEqual([], [line for line in lines if not has_row(line, self.page)])

    def test_gives_the_code_of_each_failure_message(self):
        codes = dict(re.findall(r"(\w+) = (\d+)", text_of("platform/SystemExtensions.h")))
        messages = text_of("model/FailureMessages.h")
        expected = [(text, codes[name]) for name, text in re.findall(r'Code::(\w+), "([^"]+)"', messages)]
        expected.append((re.search(r'return "(.+)";', messages)[1], "any other"))
        self.assertEqual(expected, re.findall(r"^\| ([A-Z][^|`]+\.) \| (\d+|any other) \|", self.page, re.MULTILINE))

    def test_explains_each_bundle_fault_that_ends_the_application(self):
        faults = re.findall(r'stopForBuild\(bundle, "([^"]+)"\)', text_of("model/BuildNumber.cpp"))
        self.assertIn("is missing", faults)
        self.assertEqual([], [fault for fault in faults if not has_row(f"%@: CFBundleVersion {fault}", self.page)])

    def test_is_checked_for_missing_rows(self):
        self.assertFalse(has_row("Sysex %@", "| `Sysex identifier IDENTIFIER` | a |\n`Sysex IDENTIFIER`\n"))
