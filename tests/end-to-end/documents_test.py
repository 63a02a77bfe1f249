import re
import unittest
from pathlib import Path

from case import MacTest
from desktop import BUILD

ROOT = Path(__file__).resolve().parents[2]


def verbs(path):
    """The verbs of the simulator's command line that a document names."""
    return set(re.findall(r"\bsysextctl ([a-z]+)", (ROOT / path).read_text()))


class TheDocuments(MacTest):
    def test_name_verbs_of_the_command_line_that_are_there(self):
        named = verbs("README.md") | verbs("docs/simulator.md")
        self.assertIn("list", named)
        for verb in named:
            program = self.desktop.run(BUILD / "bin/sysextctl", verb, "--help")
            self.assertEqual(0, program.status, program.said())

    def test_give_commands_of_the_command_line_that_work_on_a_fresh_mac_or_say_why_not(self):
        blocks = re.findall(r"^```\n(.*?)^```", (ROOT / "docs/simulator.md").read_text(), re.MULTILINE | re.DOTALL)
        lines = [re.sub(r"\s+#.*", "", line) for block in blocks for line in block.splitlines()]
        self.assertGreater(len(lines), 5)
        for line in lines:
            program = self.desktop.run("sh", "-c", line.replace("sysextctl", f'"{BUILD}/bin/sysextctl"', 1))
            self.assertLess(program.status, 2, f"{line}\n{program.said()}")


if __name__ == "__main__":
    unittest.main()
