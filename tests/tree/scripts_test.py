import os
import subprocess
import tempfile
import unittest

import tree


def complaints(paths):
    """What shellcheck says about the scripts, a line each."""
    answer = subprocess.run(
        ["shellcheck", "--external-sources", "--format=gcc", *paths], cwd=tree.ROOT, capture_output=True, text=True
    )
    return (answer.stdout + answer.stderr).splitlines()


class TheShellScripts(unittest.TestCase):
    def test_are_found(self):
        names = {str(path) for path in tree.scripts()}
        self.assertLessEqual({"run", "test", ".ci/run", "tools/build", "tools/session", "tools/install-packages"}, names)

    def test_pass_shellcheck(self):
        self.assertEqual([], complaints(tree.scripts()))

    def test_can_be_started(self):
        started = tree.scripts() + [path for path in tree.python() if path.suffix == ""]
        self.assertEqual([], [str(path) for path in started if not os.access(tree.ROOT / path, os.X_OK)])


class TheCheckOfShellScripts(unittest.TestCase):
    def test_finds_a_script_that_bash_cannot_read(self):
        self.assertTrue(self.complains("#!/bin/bash\nif true; then\n"))

    def test_finds_an_unquoted_name(self):
        self.assertTrue(self.complains("#!/bin/bash\nrm $1\n"))

    def complains(self, text):
        with tempfile.NamedTemporaryFile("w", suffix=".sh") as script:
            script.write(text)
            script.flush()
            return bool(complaints([script.name]))


if __name__ == "__main__":
    unittest.main()
