import ast
import re
import subprocess
import tempfile
import unittest
from pathlib import PurePath

import cpp
import tree

MOST_LINES_OF_A_FILE = 500
MOST_LINES_OF_A_FUNCTION = 30

SYSTEM = re.compile(
    r"^[ \t]*#[ \t]*(?:el)?if(?:n?def)?\b.*(?:__APPLE__|__linux__|__linux|__unix__|_WIN32|_WIN64|__MACH__|TARGET_OS_|Q_OS_)",
    re.MULTILINE,
)


def asks_for_the_system(path, text):
    if path.parts[0] == "platform":
        return []
    return [f"{path}:{cpp.line_at(text, found.start())}" for found in SYSTEM.finditer(cpp.without_comments(text))]


def long_files(path, text):
    return [f"{path}: {text.count(chr(10))} lines"] if text.count("\n") > MOST_LINES_OF_A_FILE else []


def functions(path, text):
    """The line, the length, and the name of each function."""
    if path.suffix in cpp.SUFFIXES:
        return cpp.functions(text)
    if path.suffix == ".py" or text.startswith("#!/usr/bin/python3"):
        found = (node for node in ast.walk(ast.parse(text)) if isinstance(node, ast.FunctionDef))
        return [(node.lineno, node.end_lineno - node.lineno + 1, node.name) for node in found]
    found = re.finditer(r"^(\w+)\(\) \{$.*?^\}", text, re.MULTILINE | re.DOTALL)
    return [(cpp.line_at(text, script.start()), script[0].count("\n") + 1, script[1]) for script in found]


def long_functions(path, text):
    return [
        f"{path}:{line}: {length} lines: {name}"
        for line, length, name in functions(path, text)
        if length > MOST_LINES_OF_A_FUNCTION
    ]


CMAKE_FORMAT = ".cmake-format.yaml"

# What checks each kind of file, and something that it must complain about.
CHECKERS = (
    (".cpp", ("clang-format", "--style=file:.clang-format", "--dry-run"), "int main() {\n  return 0;\n}\n"),
    (".py", ("black", "--quiet", "--diff", "--line-length=120"), "a = 'b'\n"),
    (".py", ("pyflakes3",), "import re\n"),
    (".cmake", ("cmake-format", "--check", "--config-files", CMAKE_FORMAT, "--"), "set(a  b)\n"),
    (".cmake", ("cmake-lint", "--suppress-decorations", "--config-files", CMAKE_FORMAT, "--"), "set(a b) \n"),
    (".sh", ("shellcheck", "--external-sources", "--format=gcc"), "#!/bin/bash\nrm $1\n"),
)


def files_of(kind):
    if kind == ".cpp":
        return tree.files(*cpp.SUFFIXES)
    if kind == ".py":
        return tree.python()
    if kind == ".sh":
        return [*tree.scripts(), "simulator/completion/sysextctl"]
    return tree.files(".cmake") + [path for path in tree.files(".txt") if path.stem == "CMakeLists"]


def complaints(program, paths):
    """What a checker says about files."""
    answer = subprocess.run([*program, *paths], cwd=tree.ROOT, capture_output=True, text=True)
    return [line for line in (answer.stdout + answer.stderr).splitlines() if line]


class TheCode(unittest.TestCase):
    def test_has_no_if_for_the_system_outside_platform(self):
        self.assertEqual([], tree.every(asks_for_the_system, tree.files(*cpp.SUFFIXES)))

    def test_satisfies_its_formatters_and_linters(self):
        for kind, program, _ in CHECKERS:
            self.assertEqual([], complaints(program, files_of(kind)))

    def test_has_no_long_file(self):
        kept = tree.files(*cpp.SUFFIXES, ".py", ".cmake", ".txt", ".xml") + tree.scripts()
        self.assertEqual([], tree.every(long_files, kept))

    def test_has_no_long_function(self):
        kept = tree.files(*cpp.SUFFIXES) + tree.python() + tree.scripts()
        self.assertEqual([], tree.every(long_functions, kept))


class TheChecks(unittest.TestCase):
    """Each check gets code with a problem that it must find."""

    def test_find_an_if_for_the_system(self):
        for line in ("#ifdef __APPLE__", "#if defined(__linux__)", "# if !TARGET_OS_MAC", "#elif defined(_WIN32)"):
            self.assertTrue(asks_for_the_system(PurePath("app/main.cpp"), f"int x;\n{line}\n#endif\n"), line)

    def test_find_a_long_function_of_each_form(self):
        heads = (
            "void f()",
            "int Thing::f(int x) const noexcept",
            "Thing::Thing(int x) : x_(x), y_{x}",
            "TEST(AThing, Does)",
            "- (void)applicationDidFinishLaunching:(NSNotification*)notification",
            "namespace a {\nclass B : public C<int> {\npublic:\nbool operator==(const B& other) const",
        )
        for head in heads:
            body = '    g("}", \'}\', R"(})"); // }\n' * MOST_LINES_OF_A_FUNCTION
            self.assertEqual(1, len(long_functions(PurePath("app/main.cpp"), head + " {\n" + body + "}\n")), head)

    def test_find_a_long_function_in_a_script(self):
        body = "    pass\n" * MOST_LINES_OF_A_FUNCTION
        self.assertTrue(long_functions(PurePath("a.py"), "def f():\n" + body))
        self.assertTrue(long_functions(PurePath("a"), "f() {\n" + body + "}\n"))

    def test_find_what_formatters_and_linters_complain_about(self):
        for suffix, program, fault in CHECKERS:
            with tempfile.NamedTemporaryFile("w", suffix=suffix) as source:
                source.write(fault)
                source.flush()
                self.assertTrue(complaints(program, [source.name]), program)
