"""What the tests of the packaging share."""

import importlib.machinery
import importlib.util
import pathlib
import sys

ROOT = pathlib.Path(__file__).resolve().parents[2]
PACKAGING = ROOT / "packaging" / "macos"

sys.path.insert(0, str(PACKAGING))  # where the scripts find what they share


def load(script):
    """A script of the packaging as a module, without running it."""
    name = script.replace("-", "_")
    loader = importlib.machinery.SourceFileLoader(name, str(PACKAGING / script))
    module = importlib.util.module_from_spec(importlib.util.spec_from_loader(name, loader))
    loader.exec_module(module)
    return module
