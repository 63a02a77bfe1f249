import unittest

from desktop import BUILD
from program import Program


class TheBuild(unittest.TestCase):
    """What is started a second time starts at once."""

    def test_has_nothing_to_do_where_nothing_changed(self):
        ninja = Program(["ninja", "-C", BUILD])
        self.addCleanup(ninja.end)
        self.assertEqual(0, ninja.wait_for_end())
        ninja.wait_for_last_line()
        self.assertEqual("ninja: no work to do.", ninja.output[-1], ninja.said())


if __name__ == "__main__":
    unittest.main()
