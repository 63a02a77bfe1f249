import ast
import re
import unittest
from pathlib import PurePath

import cpp
import tree

MOST_LINES_OF_A_FILE = 500
MOST_LINES_OF_A_FUNCTION = 40

SYSTEM = re.compile(
    r"^[ \t]*#[ \t]*(?:el)?if(?:n?def)?\b.*(?:__APPLE__|__linux__|__linux|__unix__|_WIN32|_WIN64|__MACH__|TARGET_OS_|Q_OS_)",
    re.MULTILINE,
)


def sources():
    return [(path, (tree.ROOT / path).read_text()) for path in tree.files(*cpp.SUFFIXES)]


def asks_for_the_system(path, text):
    if path.parts[0] == "platform":
        return []
    return [f"{path}:{cpp.line_at(text, found.start())}" for found in SYSTEM.finditer(cpp.without_comments(text))]


def long_functions(path, text):
    return [
        f"{path}:{function.line}: {function.length} lines: {function.head}"
        for function in cpp.functions(text)
        if function.length > MOST_LINES_OF_A_FUNCTION
    ]


def long_python_functions(path, text):
    return [
        f"{path}:{node.lineno}: {node.end_lineno - node.lineno + 1} lines: {node.name}"
        for node in ast.walk(ast.parse(text))
        if isinstance(node, ast.FunctionDef) and node.end_lineno - node.lineno + 1 > MOST_LINES_OF_A_FUNCTION
    ]


def long_shell_functions(path, text):
    return [
        f"{path}: {found[0].count(chr(10)) + 1} lines: {found[1]}"
        for found in re.finditer(r"^(\w+)\(\) \{$.*?^\}$", text, re.MULTILINE | re.DOTALL)
        if found[0].count("\n") + 1 > MOST_LINES_OF_A_FUNCTION
    ]


def every(check, found):
    return [line for path, text in found for line in check(path, text)]


class TheCode(unittest.TestCase):
    def test_does_not_ask_for_the_system_outside_platform(self):
        self.assertEqual([], every(asks_for_the_system, sources()))

    def test_has_no_long_file(self):
        kept = tree.files(*cpp.SUFFIXES, ".py", ".cmake", ".txt", ".xml") + tree.scripts()
        long = {str(path): lines for path in kept if (lines := number_of_lines(path)) > MOST_LINES_OF_A_FILE}
        self.assertEqual({}, long)

    def test_has_no_long_function(self):
        self.assertEqual([], every(long_functions, sources()))

    def test_has_no_long_function_in_python(self):
        scripts = [(path, (tree.ROOT / path).read_text()) for path in tree.python()]
        self.assertEqual([], every(long_python_functions, scripts))

    def test_has_no_long_function_in_a_shell_script(self):
        scripts = [(path, (tree.ROOT / path).read_text()) for path in tree.scripts()]
        self.assertEqual([], every(long_shell_functions, scripts))


def number_of_lines(path):
    return (tree.ROOT / path).read_text().count("\n")


class TheSearchForTheSystem(unittest.TestCase):
    def found(self, path, text):
        return bool(asks_for_the_system(PurePath(path), text))

    def test_finds_every_form(self):
        for line in ("#ifdef __APPLE__", "#if defined(__linux__)", "# if !TARGET_OS_MAC", "#elif defined(_WIN32)"):
            self.assertTrue(self.found("app/main.cpp", f"int x;\n{line}\n#endif\n"), line)

    def test_lets_platform_ask(self):
        self.assertFalse(self.found("platform/posix/Output.cpp", "#ifdef __APPLE__\n#endif\n"))

    def test_lets_other_questions_be(self):
        self.assertFalse(self.found("app/main.cpp", "#ifdef NDEBUG\n#endif\n// #ifdef __APPLE__\n"))


class TheMeasureOfFunctions(unittest.TestCase):
    def lengths(self, text):
        return [function.length for function in cpp.functions(text)]

    def test_finds_each_form(self):
        heads = (
            "void f()",
            "int Thing::f(int x) const noexcept",
            "auto f() -> std::vector<int>",
            "Thing::Thing(int x) : x_(x), y_{x}",
            "TEST(AThing, Does)",
            "template <typename T> bool f(T x)",
            "- (void)applicationDidFinishLaunching:(NSNotification*)notification",
            "bool operator==(const Thing& other) const",
        )
        for head in heads:
            self.assertEqual([3], self.lengths(f"{head} {{\n    body();\n}}\n"), head)

    def test_looks_inside_namespaces_and_types(self):
        text = "namespace a {\nclass B : public C<int> {\npublic:\n    void f() {\n        g();\n    }\n};\n}\n"
        self.assertEqual([3], self.lengths(text))

    def test_counts_what_is_inside_a_function_as_its_own(self):
        self.assertEqual([5], self.lengths("void f() {\n    auto g = [] {\n        h();\n    };\n}\n"))

    def test_takes_no_type_or_value_for_a_function(self):
        text = "struct A {\n    int x;\n};\nenum class B {\n    c,\n};\nconstexpr int table[] = {\n    1,\n};\n"
        self.assertEqual([], self.lengths(text))

    def test_finds_one_that_is_too_long(self):
        text = "void f() {\n" + "    g();\n" * MOST_LINES_OF_A_FUNCTION + "}\n"
        self.assertEqual(1, len(long_functions(PurePath("app/main.cpp"), text)))

    def test_is_not_fooled_by_braces_in_texts(self):
        self.assertEqual([3], self.lengths('void f() {\n    g("}", \'}\', 1\'000, R"(})"); // }\n}\n'))

    def test_finds_one_that_is_too_long_in_other_languages(self):
        body = "    pass\n" * MOST_LINES_OF_A_FUNCTION
        self.assertTrue(long_python_functions(PurePath("a.py"), "def f():\n" + body))
        self.assertTrue(long_shell_functions(PurePath("a"), "f() {\n" + body + "}\n"))


if __name__ == "__main__":
    unittest.main()
