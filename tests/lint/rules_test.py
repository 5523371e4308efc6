"""Each rule finds what breaks it in a small tree made for that, and nothing in one that is good."""

import json
import shutil
import sys
import tempfile
import unittest
from pathlib import Path

sys.dont_write_bytecode = True
sys.path.insert(0, str(Path(__file__).resolve().parent))

from rules import LONGEST_SOURCE, RULES, UNFINISHED, Tree  # noqa: E402

GOOD = {
    "src/platform/Failure.h": "#pragma once\n",
    "src/platform/Failure.cpp": '#include "platform/Failure.h"\n',
    "src/platform/Window.h": '#pragma once\n#include "platform/Failure.h"\n',
    "src/platform/Window.cpp": '#include "platform/Window.h"\n\n#include <QWidget>\n',
    "src/lists/Tokens.h": '#pragma once\n#include "platform/Failure.h"\n',
    "src/lists/Tokens.cpp": '#include "lists/Tokens.h"\n',
    "src/browse/Viewer.h": '#pragma once\n#include "lists/Tokens.h"\n',
    "src/browse/Viewer.cpp": '#include "browse/Viewer.h"\n\n#include "app/frmMain.h"\n',
    "src/app/frmMain.h": '#pragma once\n#include "browse/Viewer.h"\n',
    "tests/core/TokensTest.cpp": '#include "lists/Tokens.h"\n',
    "larder": "#!/usr/bin/env bash\necho \"$1\"\n",
    ".clang-format": "BasedOnStyle: Google\n",
}
COMPILED = {
    "src/platform/Failure.cpp": "larder_core",
    "src/lists/Tokens.cpp": "larder_core",
    "src/platform/Window.cpp": "larder_platform",
    "src/browse/Viewer.cpp": "larder_app",
    "tests/core/TokensTest.cpp": "core_tests",
}

# Rules that ask another program, which a machine for development need not have.
TOOLS = {"code_is_formatted": "clang-format", "scripts_are_sound": "shellcheck"}


class Rules(unittest.TestCase):
    def findings(self, rule, changes=None, compiled=None):
        root = Path(tempfile.mkdtemp())
        self.addCleanup(shutil.rmtree, root)
        for name, text in {**GOOD, **(changes or {})}.items():
            path = root / name
            path.parent.mkdir(parents=True, exist_ok=True)
            path.write_text(text)
        build = root / "build"
        build.mkdir()
        commands = [{"directory": str(build), "file": str(root / name),
                     "command": f"c++ -o CMakeFiles/{target}.dir/x.o -c {root / name}"}
                    for name, target in {**COMPILED, **(compiled or {})}.items()]
        (build / "compile_commands.json").write_text(json.dumps(commands))
        return list(RULES[rule](Tree(root, build)))

    def assert_finds(self, rule, name, text, compiled=None):
        findings = self.findings(rule, {name: text}, compiled)
        self.assertEqual(len(findings), 1, findings)
        self.assertIn(name, findings[0])

    def test_a_good_tree_keeps_every_rule(self):
        for rule in RULES:
            if not shutil.which(TOOLS.get(rule, "python3")):
                continue
            with self.subTest(rule):
                self.assertEqual(self.findings(rule), [])

    def test_qt_above_the_platform_is_found(self):
        self.assert_finds("qt_stays_in_the_platform", "src/browse/Viewer.cpp",
                          "#include <QString>\n")

    def test_qt_in_a_header_of_the_platform_is_found(self):
        self.assert_finds("qt_stays_in_the_platform", "src/platform/Window.h",
                          '#pragma once\n#  include "QtWidgets/QWidget"\n')

    def test_an_include_of_a_higher_layer_is_found(self):
        self.assert_finds("layers_look_down", "src/lists/Tokens.cpp",
                          '#include "browse/Viewer.h"\n')

    def test_a_header_that_includes_the_hub_is_found(self):
        self.assert_finds("layers_look_down", "src/browse/Viewer.h",
                          '#pragma once\n#include "app/frmMain.h"\n')

    def test_a_folder_without_a_layer_is_found(self):
        self.assert_finds("layers_look_down", "src/misc/Helper.cpp",
                          '#include "platform/Failure.h"\n')

    def test_a_control_reached_from_the_core_is_found(self):
        self.assert_finds("core_knows_no_control", "src/lists/Tokens.h",
                          '#pragma once\n#include "platform/Window.h"\n')

    def test_the_hub_reached_from_the_core_is_found(self):
        self.assert_finds("core_knows_no_control", "src/lists/Tokens.cpp",
                          '#include "app/frmMain.h"\n')

    def test_headers_in_a_ring_are_found(self):
        findings = self.findings("headers_include_in_one_direction", {
            "src/platform/Failure.h": '#pragma once\n#include "platform/Window.h"\n'})
        self.assertTrue(any("Window.h" in finding for finding in findings), findings)

    def test_a_test_that_no_target_compiles_is_found(self):
        self.assert_finds("every_test_is_compiled", "tests/core/ForgottenTest.cpp", "\n")

    def test_a_tree_without_tests_is_found(self):
        root = Path(tempfile.mkdtemp())
        self.addCleanup(shutil.rmtree, root)
        self.assertTrue(list(RULES["every_test_is_compiled"](Tree(root, root))))

    def test_a_source_that_is_too_long_is_found(self):
        self.assertEqual(self.findings("sources_are_short", {
            "src/lists/Tokens.cpp": "\n" * LONGEST_SOURCE}), [])
        self.assert_finds("sources_are_short", "src/lists/Tokens.cpp",
                          "\n" * (LONGEST_SOURCE + 1))

    def test_a_reminder_of_work_undone_is_found(self):
        for word in UNFINISHED:
            with self.subTest(word):
                self.assert_finds("nothing_is_left_for_later", "tests/core/TokensTest.cpp",
                                  f"// {word}: later\n")

    def test_the_pattern_of_a_temporary_name_is_no_reminder(self):
        self.assertEqual(self.findings("nothing_is_left_for_later", {
            "scripts/x.sh": "mktemp /tmp/" + "X" * 6 + "\n"}), [])

    @unittest.skipUnless(shutil.which("clang-format"), "clang-format is not installed")
    def test_a_file_in_another_format_is_found(self):
        self.assert_finds("code_is_formatted", "src/lists/Tokens.cpp", "int  a ;\n")

    @unittest.skipUnless(shutil.which("shellcheck"), "shellcheck is not installed")
    def test_a_doubtful_script_is_found(self):
        self.assert_finds("scripts_are_sound", "larder", "#!/usr/bin/env bash\necho $1\n")

    def test_every_rule_is_proved_to_find_something(self):
        source = Path(__file__).read_text()
        for rule in RULES:
            self.assertRegex(source, rf'(assert_finds\(|findings\(|RULES\[)"{rule}"')


if __name__ == "__main__":
    unittest.main()
