"""The layers: which other layers and which system headers each may include."""

import unittest
from pathlib import PurePath
from typing import NamedTuple

import cpp
import tree

STANDARD = frozenset(
    """algorithm any array atomic bit bitset cassert cctype cerrno cfenv cfloat charconv
    chrono cinttypes climits clocale cmath codecvt compare complex concepts
    condition_variable coroutine csetjmp csignal cstdarg cstddef cstdint cstdio cstdlib
    cstring ctime cuchar cwchar cwctype deque exception execution filesystem forward_list
    fstream functional future initializer_list iomanip ios iosfwd iostream istream
    iterator limits list locale map memory memory_resource mutex new numbers numeric
    optional ostream queue random ratio regex scoped_allocator set shared_mutex
    source_location span sstream stack stdexcept stop_token streambuf string string_view
    syncstream system_error thread tuple type_traits typeindex typeinfo unordered_map
    unordered_set utility valarray variant vector version""".split()
)

POSIX = ("fcntl.h", "poll.h", "signal.h", "unistd.h", "sys/")
QT = ("Q", "Qt")
EVERYTHING = ("",)


class Layer(NamedTuple):
    sees: tuple = ()
    system: tuple = ()


# The layer of a path is the longest of these names that it begins with.
LAYERS = {
    "app": Layer(sees=("views", "model", "platform/ui", "platform")),
    "views": Layer(sees=("model", "platform/ui", "platform")),
    "model": Layer(sees=("platform",)),
    "platform": Layer(),
    "platform/ui": Layer(),
    "platform/posix": Layer(sees=("platform",), system=POSIX),
    "platform/linux": Layer(
        sees=("platform", "platform/ui", "platform/posix"), system=(*QT, "plist/", "unicode/", *POSIX)
    ),
    "platform/macos": Layer(sees=("platform", "platform/ui", "platform/posix"), system=EVERYTHING),
    "simulator": Layer(sees=("simulator/core",), system=EVERYTHING),
    "simulator/core": Layer(),
    "examples": Layer(system=EVERYTHING),
    "tests": Layer(sees=EVERYTHING, system=EVERYTHING),
    "benchmarks": Layer(sees=EVERYTHING, system=EVERYTHING),
}


def layer_of(path):
    """The name of the layer that a file is in, or None."""
    folder = PurePath(path).parent
    for name in (folder, *folder.parents):
        if str(name) in LAYERS:
            return str(name)
    return None


def violations(path, text):
    """The includes that a file's layer does not allow, one sentence for each."""
    name = layer_of(path)
    if name is None:
        return [f"{path}: no layer has this folder"]
    return [
        f"{path}:{include.line}: {name} may not include {include.path}"
        for include in cpp.includes(text)
        if not allowed(name, include)
    ]


def allowed(name, include):
    layer = LAYERS[name]
    if include.system:
        return include.path in STANDARD or include.path.startswith(layer.system)
    if "/" not in include.path:
        return name == "tests" or generated(name, include.path)
    target = layer_of(include.path)
    return target is not None and (target == name or target in layer.sees or "" in layer.sees)


def generated(name, path):
    """Whether the build generates it: D-Bus adaptors, proxies, and interfaces, and Qt's ".moc" files."""
    if path.endswith(".moc"):
        return name in ("platform/linux", "simulator", "examples")
    return name == "simulator" and path.lower().endswith(("proxy.h", "adaptor.h", "interface.h"))


class EveryInclude(unittest.TestCase):
    def test_follows_the_layers(self):
        self.assertEqual([], tree.every(violations, tree.files(*cpp.SUFFIXES)))

    def test_is_reported_if_it_does_not(self):
        wrong = (
            ("model/SysExtInfo.h", '"views/CardView.h"'),
            ("model/SysExtInfo.h", '"platform/ui/Color.h"'),
            ("model/SysExtInfo.h", '"InstallStatus.h"'),
            ("views/CardView.cpp", "<QWidget>"),
            ("platform/ui/Layout.cpp", '"platform/Log.h"'),
            ("simulator/core/Machine.h", "<QString>"),
            ("simulator/sysextd/main.cpp", '"model/SysExtInfo.h"'),
            ("helpers/Other.h", "<vector>"),
        )
        for path, include in wrong:
            self.assertEqual(1, len(violations(path, f"  #  include   {include}\n")), (path, include))
        self.assertEqual([], violations("app/main.cpp", '#include "views/CardView.h"\n// #include <QWidget>\n'))
