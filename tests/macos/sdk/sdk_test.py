import re
import unittest
from pathlib import Path

SDK = Path(__file__).resolve().parent
SOURCES = SDK.parents[2] / "platform/macos"

# Used by literals, fast enumeration and macros.
USED_UNSEEN = {
    "arrayWithObjects",
    "countByEnumeratingWithState",
    "dictionaryWithObjects",
    "numberWithInteger",
    "_os_log_default",
    "tests_os_log",
}


def without_comments(text):
    return re.sub(r"//[^\n]*", "", text)


def declared(text):
    """The names that a header of this folder declares: methods by their first part, properties, functions, values."""
    text = without_comments(text)
    text = re.sub(r"[^;]*__attribute__\(\(unavailable[^;]*;", ";", text)
    methods = re.findall(r"^[-+] ?\([^;]*?\)(\w+)[;:]", text, re.MULTILINE)
    properties = re.findall(r"^@property[^;]*?(\w+);", text, re.MULTILINE)
    functions = re.findall(r"^(?:void|BOOL|SEL|_Nullable id|NS\w+\*?|dispatch_queue_t) (\w+)\(", text, re.MULTILINE)
    constants = re.findall(r"^extern [^;(]*?(\w+);", text, re.MULTILINE)
    enumerators = re.findall(r"\b(\w+) = ", text)
    return {*methods, *properties, *functions, *constants, *enumerators}


def used(name, words):
    return name in words or "set" + name[:1].upper() + name[1:] in words or "is" + name[:1].upper() + name[1:] in words


class TheDeclarations(unittest.TestCase):
    words = set(re.findall(r"\w+", "".join(without_comments(path.read_text()) for path in SOURCES.iterdir())))

    def test_are_of_nothing_that_is_not_used(self):
        names = set().union(*(declared(path.read_text()) for path in SDK.glob("*/*.h")))
        self.assertGreater(len(names), 100)
        self.assertEqual(set(), {name for name in names - USED_UNSEEN if not used(name, self.words)})


if __name__ == "__main__":
    unittest.main()
