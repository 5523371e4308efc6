"""What the commands promise about the user's folder, about arguments, and about their counts."""

import argparse
import os
import shutil
import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

SETTINGS = argparse.Namespace()


class Scripts(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.home = Path(folder.name)
        self.folder = self.home / "share/tidewell-larder"

    def bash(self, script, **env):
        """Runs a script that has the functions of scripts/ at hand."""
        sources = "".join(f'source "$root/scripts/{name}.sh"\n'
                          for name in ("common", "data-folder", "stages"))
        return subprocess.run(
            ["bash", "-c", f"set -euo pipefail\n{sources}{script}"], capture_output=True,
            text=True, check=False, stdin=subprocess.DEVNULL,
            env={"PATH": os.environ["PATH"], "HOME": str(self.home),
                 "root": str(SETTINGS.source), "folder": str(self.folder), **env})

    def make_data(self, fill):
        return self.bash(f'fill() {{ {fill}; }}\nmake_data "$folder" fill')


class TheUsersFolder(Scripts):
    FILL = 'mkdir "$1/Data"; echo new >"$1/Data/Recipes"; echo new >"$1/Click.wav"'

    def test_it_is_below_the_data_home(self):
        self.assertEqual(self.bash("user_folder", XDG_DATA_HOME="/x/y").stdout,
                         "/x/y/tidewell-larder\n")

    def test_it_is_below_home_without_a_data_home(self):
        place = f"{self.home}/.local/share/tidewell-larder\n"
        self.assertEqual(self.bash("user_folder").stdout, place)
        self.assertEqual(self.bash("user_folder", XDG_DATA_HOME="relative").stdout, place)

    def test_a_new_folder_gets_the_data(self):
        result = self.make_data(self.FILL)
        self.assertEqual(result.returncode, 0, result.stderr)
        self.assertEqual((self.folder / "Data/Recipes").read_text(), "new\n")
        self.assertEqual(sorted(os.listdir(self.folder)), ["Click.wav", "Data"])

    def test_what_is_there_is_not_touched(self):
        for name in ("Data", "DATA", "data"):
            with self.subTest(name):
                folder = self.home / name / "tidewell-larder"
                (folder / name).mkdir(parents=True)
                (folder / name / "Recipes").write_text("mine")
                self.folder = folder
                self.assertEqual(self.make_data(self.FILL).returncode, 0)
                self.assertEqual(os.listdir(folder), [name])
                self.assertEqual((folder / name / "Recipes").read_text(), "mine")

    def test_a_file_of_the_users_beside_the_data_stays(self):
        self.folder.mkdir(parents=True)
        (self.folder / "Click.wav").write_text("mine")
        self.assertEqual(self.make_data(self.FILL).returncode, 0)
        self.assertEqual((self.folder / "Click.wav").read_text(), "mine")
        self.assertEqual((self.folder / "Data/Recipes").read_text(), "new\n")

    def test_a_failure_on_the_way_leaves_no_data(self):
        result = self.make_data(self.FILL + "; return 3")
        self.assertEqual(result.returncode, 3)
        self.assertEqual(os.listdir(self.folder), [])

    def test_what_a_start_that_was_cut_off_has_left_is_cleared_away(self):
        (self.folder / ".making-data.x/Data").mkdir(parents=True)
        self.assertEqual(self.make_data(self.FILL).returncode, 0)
        self.assertEqual(sorted(os.listdir(self.folder)), ["Click.wav", "Data"])

    def test_two_starts_at_once_make_the_data_once(self):
        counting = f'echo filled >>"{self.home}/count"; {self.FILL}'
        result = self.bash(f'fill() {{ {counting}; }}\n'
                           'make_data "$folder" fill & make_data "$folder" fill\nwait $!')
        self.assertEqual(result.returncode, 0, result.stderr)
        self.assertEqual((self.home / "count").read_text(), "filled\n")


class Arguments(Scripts):
    def larder(self, *arguments):
        return subprocess.run([SETTINGS.source / "larder", *arguments], capture_output=True,
                              text=True, check=False, env={"PATH": os.environ["PATH"]})

    def test_a_name_of_a_file_is_refused_before_anything_is_done(self):
        for argument in ("/Extra/recipes", "recipes.rtf", "--unknown"):
            with self.subTest(argument):
                result = self.larder(argument)
                self.assertEqual((result.returncode, result.stdout), (2, ""))
                self.assertIn("Usage:", result.stderr)

    def test_help_is_given(self):
        result = self.larder("--help")
        self.assertEqual((result.returncode, result.stderr), (0, ""))
        self.assertIn("Usage:", result.stdout)


class Packages(Scripts):
    def test_nothing_is_missing_where_all_is_there(self):
        self.assertEqual(self.bash("missing_packages bash coreutils").stdout, "")

    def test_what_is_missing_is_named(self):
        self.assertEqual(self.bash("missing_packages bash no-such-package coreutils").stdout,
                         "no-such-package\n")


class Counting(Scripts):
    """The closing line of ./check tells the truth."""

    def stages(self, *stages):
        script = "".join(f"stage {name} {command} || true\n" for name, command in stages)
        return self.bash(f"{script}sum_up")

    def last_line(self, result):
        return result.stdout.splitlines()[-1]

    def test_the_tests_of_all_runs_are_added_up(self):
        log = self.home / "log"
        log.write_text("100% tests passed, 0 tests failed out of 7\n")
        other = self.home / "other"
        other.write_text("98% tests passed, 1 tests failed out of 50\n")
        result = self.stages(("A", f'count_tests "{log}"'), ("B", f'count_tests "{other}"'))
        self.assertEqual(self.last_line(result), "56 passed, 1 failed")
        self.assertNotEqual(result.returncode, 0)

    def test_all_passed_is_success(self):
        log = self.home / "log"
        log.write_text("100% tests passed, 0 tests failed out of 7\n")
        result = self.stages(("A", f'count_tests "{log}"'))
        self.assertEqual((self.last_line(result), result.returncode), ("7 passed, 0 failed", 0))

    def test_a_stage_that_fails_otherwise_counts_as_a_failure(self):
        log = self.home / "log"
        log.write_text("100% tests passed, 0 tests failed out of 7\n")
        result = self.stages(("A", f'count_tests "{log}"'), ("Build", "false"))
        self.assertEqual(self.last_line(result), "7 passed, 1 failed")
        self.assertNotEqual(result.returncode, 0)

    def test_a_run_without_a_closing_line_counts_as_a_failure(self):
        log = self.home / "log"
        log.write_text("Segmentation fault\n")
        result = self.stages(("A", f'count_tests "{log}"'))
        self.assertEqual(self.last_line(result), "0 passed, 1 failed")
        self.assertNotEqual(result.returncode, 0)

    def test_no_test_at_all_is_no_success(self):
        result = self.bash("sum_up")
        self.assertEqual((self.last_line(result), result.returncode), ("0 passed, 0 failed", 1))


class Checking(Scripts):
    """./check as a whole, on a small tree in which nothing has to be compiled."""

    FOLDERS = ("core", "behaviour", "tools")

    def check(self, *options, tests):
        root = self.home / "tree"
        shutil.copytree(SETTINGS.source / "scripts", root / "scripts")
        for name in ("check", "CMakePresets.json"):
            shutil.copy(SETTINGS.source / name, root)
        (root / "scripts/packages.sh").write_text(
            "build_packages=() run_packages=() virtual_screen_packages=() test_packages=()\n"
            "need_packages() { :; }\n")
        (root / "CMakeLists.txt").write_text(
            "cmake_minimum_required(VERSION 3.25)\nproject(Tree NONE)\nenable_testing()\n"
            + "".join(f"add_subdirectory(tests/{name})\n" for name in self.FOLDERS))
        for folder in self.FOLDERS:
            (root / "tests" / folder).mkdir(parents=True)
            (root / "tests" / folder / "CMakeLists.txt").write_text("")
        (root / "tests/core/CMakeLists.txt").write_text("".join(
            f"add_test(NAME {name} COMMAND {command})\n" for name, command in tests.items()))
        return subprocess.run([root / "check", *options], capture_output=True, text=True,
                              check=False, stdin=subprocess.DEVNULL,
                              env={**os.environ, "LC_ALL": "C"})

    def test_a_failing_test_fails_the_run_and_is_shown(self):
        result = self.check("--quick", tests={"good": "true", "bad": "ls /no-such-file"})
        self.assertEqual(result.stdout.splitlines()[-1], "1 passed, 1 failed", result.stderr)
        self.assertEqual(result.returncode, 1)
        self.assertIn("No such file", result.stdout)

    def test_a_good_run_succeeds(self):
        result = self.check("--quick", tests={"good": "true", "better": "true"})
        self.assertEqual(result.stdout.splitlines()[-1], "2 passed, 0 failed", result.stderr)
        self.assertEqual(result.returncode, 0)

    def test_a_tree_without_tests_fails(self):
        result = self.check("--quick", tests={})
        self.assertEqual(result.stdout.splitlines()[-1], "0 passed, 1 failed", result.stderr)
        self.assertEqual(result.returncode, 1)

    def test_missing_fuzz_targets_fail_a_whole_run_and_the_rest_is_done(self):
        result = self.check(tests={"good": "true"})
        self.assertIn("There are no fuzz targets", result.stdout)
        self.assertEqual(result.stdout.splitlines()[-1], "2 passed, 1 failed", result.stderr)
        self.assertEqual(result.returncode, 1)


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("--source", required=True, type=Path, help="the folder of the sources")
    _, rest = parser.parse_known_args(namespace=SETTINGS)
    unittest.main(argv=[sys.argv[0], *rest], verbosity=2)


if __name__ == "__main__":
    main()
