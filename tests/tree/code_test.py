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


def badly_laid_out(paths):
    """The places that clang-format would change, one line for each."""
    answer = subprocess.run(
        ["clang-format", f"--style=file:{tree.ROOT / '.clang-format'}", "--dry-run", *paths],
        cwd=tree.ROOT,
        capture_output=True,
        text=True,
    )
    return re.findall(r"^(.+:\d+):\d+: warning: code should be clang-formatted", answer.stderr, re.MULTILINE)


BLACK = ("black", "--quiet", "--diff", "--line-length=120")
PYFLAKES = ("pyflakes3",)

# Left out: the case of names (C0103, C0113: not ours), blanks around parentheses and continued lines (C0307), and two
# (E1122, E1126) that do not know every command of CMake.
LEFT_OUT = ("C0103", "C0113", "C0307", "E1122", "E1126")
CMAKE_LINT = ("cmake-lint", "--suppress-decorations", "--line-width=120", "--disabled-codes", *LEFT_OUT, "--")


def complaints(program, paths):
    """What a linter says about files, or what a formatter would change."""
    answer = subprocess.run([*program, *paths], cwd=tree.ROOT, capture_output=True, text=True)
    return [line for line in (answer.stdout + answer.stderr).splitlines() if line]


class TheCode(unittest.TestCase):
    def test_has_no_if_for_the_system_outside_platform(self):
        self.assertEqual([], tree.every(asks_for_the_system, tree.files(*cpp.SUFFIXES)))

    def test_is_formatted(self):
        self.assertEqual([], badly_laid_out(tree.files(*cpp.SUFFIXES)))

    def test_in_python_is_formatted_and_has_no_faults(self):
        for program in (BLACK, PYFLAKES):
            self.assertEqual([], complaints(program, tree.python()))

    def test_in_cmake_has_no_faults(self):
        files = [path for path in tree.files(".txt", ".cmake") if path.suffix == ".cmake" or path.stem == "CMakeLists"]
        self.assertEqual([], complaints(CMAKE_LINT, files))

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

    def test_find_an_unformatted_line(self):
        with tempfile.NamedTemporaryFile("w", suffix=".cpp") as source:
            source.write("int main() {\n  return 0;\n}\n")
            source.flush()
            self.assertTrue(badly_laid_out([source.name]))

    def test_find_faults_in_python_and_in_cmake(self):
        for program, text in ((BLACK, "a = 'b'\n"), (PYFLAKES, "import re\n"), (CMAKE_LINT, "set(a b) \n")):
            with tempfile.NamedTemporaryFile("w", suffix=".cmake" if program is CMAKE_LINT else ".py") as source:
                source.write(text)
                source.flush()
                self.assertTrue(complaints(program, [source.name]), program)
