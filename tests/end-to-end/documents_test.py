import re
import unittest
from pathlib import Path

from application import NOT_INSTALLED, RESTARTED
from case import CAMERA, MacTest
from desktop import BUILD

ROOT = Path(__file__).resolve().parents[2]


def verbs(path):
    """The verbs of the simulator's command line that a document names."""
    return set(re.findall(r"\bsysextctl ([a-z]+)", (ROOT / path).read_text()))


class TheDocuments(MacTest):
    def test_name_existing_verbs_of_the_command_line(self):
        named = set().union(*(verbs(path) for path in ROOT.glob("docs/*.md"))) | verbs("README.md")
        self.assertIn("list", named)
        for verb in named:
            program = self.desktop.run(BUILD / "bin/sysextctl", verb, "--help")
            self.assertEqual(0, program.status, program.said())

    def test_contain_valid_commands(self):
        blocks = re.findall(r"^```\n(.*?)^```", (ROOT / "docs/simulator.md").read_text(), re.MULTILINE | re.DOTALL)
        lines = [re.sub(r"\s+#.*", "", line) for block in blocks for line in block.splitlines()]
        self.assertGreater(len(lines), 5)
        for line in lines:
            program = self.desktop.run("sh", "-c", line.replace("sysextctl", f'"{BUILD}/bin/sysextctl"', 1))
            self.assertLess(program.status, 2, f"{line}\n{program.said()}")

    def test_list_each_switch_with_its_default_and_its_other_value(self):
        text = (ROOT / "docs/simulator.md").read_text()
        section = re.search(r"^## Undocumented behavior\n(.*?)^## ", text, re.MULTILINE | re.DOTALL)[1]
        told = re.findall(r"^\| `([^`]+)` \| `([^`]+)` \| `([^`]+)` \| .+ \|$", section, re.MULTILINE)
        there = [re.fullmatch(r"(\S+)\t(\S+)\t\((\S+) \| (\S+)\)\t.+", line) for line in self.mac.says("switch")]
        self.assertEqual([(name, value, other) for name, value, _, other in map(re.Match.groups, there)], told)
        self.assertEqual([match[2] for match in there], [match[3] for match in there])


class TheTourOfTheSimulator(MacTest):
    """The commands of the tour in docs/simulator.md, with the presses between them."""

    def setUp(self):
        super().setUp()
        text = (ROOT / "docs/simulator.md").read_text()
        tour = re.search(r"^## Five-minute tour\n(.*?)^## ", text, re.MULTILINE | re.DOTALL)[1]
        self.blocks = re.findall(r"^```\n(.*?)^```", tour, re.MULTILINE | re.DOTALL)

    def type_block(self):
        """Types the next block. Each line must succeed. Returns what they print."""
        output = []
        for line in self.blocks.pop(0).splitlines():
            command = re.sub(r"\s+#.*", "", line).replace("sysextctl", f'"{BUILD}/bin/sysextctl"', 1)
            program = self.desktop.run("sh", "-c", command)
            self.assertEqual(0, program.status, f"{line}\n{program.said()}")
            output.append(program.output)
        return output

    def test_works_as_described(self):
        application = self.open_application()
        application.wait_for_state("Camera Driver", NOT_INSTALLED)
        self.assertEqual([["0 extension(s)"], []], self.type_block())
        application.choose("Refresh", "Camera Driver")
        application.press("Upgrade", "Camera Driver")
        application.wait_for_line(f"{CAMERA} 2.1/2105")
        upgraded, _, restarted = self.type_block()
        self.assertEqual(["2 extension(s)", "1 extension(s)"], [upgraded[0], restarted[0]])
        self.assertEqual(RESTARTED, application.wait_for_end())

        application = self.open_application()
        application.wait_for_state("Camera Driver", "Enabled")
        application.press("Activate", "Network Driver")
        application.wait_for_state("Network Driver", "Await approval")
        self.assertEqual("1 request(s)", self.type_block()[0][0])
        application.wait_for_line("(Request was canceled.)", application.errors)
        settings = self.open_settings(application)
        application.choose("Remove", "Camera Driver")
        settings.wait_for_node("Authorize Camera")
        self.assertTrue(self.type_block()[0][-1].endswith("[authorization]"))
        application.wait_for_line("(Authorization required.)", application.errors)
        settings.wait_for(lambda: not settings.find("Authorize Camera"), "the question is gone")
        application.choose("Remove", "Camera Driver")
        settings.press("Authorize Camera")
        application.wait_for_line("Sysex request finished: 0", application.errors)
        self.type_block()
        self.type_block()
        self.assertEqual([], self.blocks)


if __name__ == "__main__":
    unittest.main()
