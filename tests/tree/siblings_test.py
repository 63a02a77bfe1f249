import tempfile
import unittest
from pathlib import Path

import cpp
import tree

SYSTEMS = ("linux", "macos")


def duties(root):
    """The types whose header lies in platform/ and whose implementation each system has to give."""
    return {
        path.stem
        for path in (root / "platform").glob("*.h")
        if any(stems(root, system) & {path.stem} for system in SYSTEMS)
    }


def stems(root, system):
    return {path.stem for path in (root / "platform" / system).glob("*") if path.suffix in cpp.SUFFIXES}


def missing_siblings(root):
    """The files that one system has for a duty and the other lacks; none while only one system is there."""
    if not all(stems(root, system) for system in SYSTEMS):
        return []
    shared = stems(root, "posix")
    return sorted(
        f"platform/{system}/{duty}"
        for system in SYSTEMS
        for duty in duties(root) - stems(root, system) - shared
    )


class TheSystems(unittest.TestCase):
    def test_carry_out_a_duty_in_files_of_the_same_name(self):
        self.assertEqual([], missing_siblings(tree.ROOT))

    def test_are_told_apart_when_one_lacks_a_file(self):
        with tempfile.TemporaryDirectory() as folder:
            root = Path(folder)
            for path in ("Log.h", "Text.h", "linux/Log.cpp", "linux/Text.cpp", "linux/Window.cpp", "macos/Log.mm"):
                (root / "platform" / path).parent.mkdir(parents=True, exist_ok=True)
                (root / "platform" / path).touch()
            self.assertEqual(["platform/macos/Text"], missing_siblings(root))


if __name__ == "__main__":
    unittest.main()
