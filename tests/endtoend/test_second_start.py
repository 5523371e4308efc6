"""A second start on the same recipes shows the cook-book that is open, and ends."""

import argparse
import os
import shutil
import signal
import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

sys.path.insert(0, str(Path(__file__).resolve().parent))

from harness import TITLE, CookBook, Desktop, copy_of_data, wait_for  # noqa: E402

SETTINGS = argparse.Namespace()


class SecondStart(unittest.TestCase):
    def setUp(self):
        self.folder = copy_of_data(SETTINGS.stock)
        self.addCleanup(shutil.rmtree, self.folder)
        desktop = Desktop(1280, 800)
        self.addCleanup(desktop.__exit__)
        self.screen = desktop.__enter__()
        self.first = self.start()
        self.first.wait_for_selected("Categories", "MY FAVORITES")

    def start(self, folder=None):
        book = CookBook(self.screen, SETTINGS.program, folder or self.folder)
        self.addCleanup(book.__exit__)
        return book

    def files(self):
        """What tells whether a file was written to, by name."""
        data = Path(self.folder)
        return {path.relative_to(data).as_posix(): (path.stat().st_ino, path.stat().st_mtime_ns)
                for path in sorted(data.rglob("*"))}

    def active(self):
        return subprocess.run(["xdotool", "getactivewindow"], env=self.screen.env, text=True,
                              capture_output=True, check=False).stdout.strip()

    def wait_until_active(self, window):
        wait_for("the first window in front", lambda: self.active() == window,
                 report=lambda: f"window {self.active()} in place of {window}")

    def test_it_brings_the_first_to_the_front_and_ends_well(self):
        window = self.first.window()
        other_folder = copy_of_data(SETTINGS.stock)
        self.addCleanup(shutil.rmtree, other_folder)
        other = self.start(other_folder)
        self.wait_until_active(other.window())
        other.click_line("Categories", "ALL RECIPES")  # what the user has last done is there
        other.wait_for_selected("Categories", "ALL RECIPES")
        before = self.files()
        second = self.start()
        self.assertEqual(second.wait_for_end(), 0, second.output())
        self.wait_until_active(window)
        self.assertEqual(self.files(), before)

    def test_it_brings_a_minimised_window_back(self):
        window = self.first.window()
        self.screen.xdotool("windowminimize", "--sync", window)
        second = self.start()
        self.assertEqual(second.wait_for_end(), 0, second.output())
        self.assertEqual(self.first.window(), window, "on the screen again")
        self.wait_until_active(window)

    def test_another_path_leads_to_the_same_recipes(self):
        link = Path(tempfile.mkdtemp()) / "link"
        self.addCleanup(shutil.rmtree, link.parent)
        link.symlink_to(self.folder)
        second = self.start(link)
        self.assertEqual(second.wait_for_end(), 0, second.output())

    def test_an_open_dialog_of_the_first_stays_before_it(self):
        self.first.click_control("Add")
        self.first.control("Create New Recipe")
        self.assertEqual(self.start().wait_for_end(), 0)
        wait_for("the dialog in front", lambda: self.active() != self.first.window()
                 and self.first.is_showing("Create New Recipe"))
        self.screen.press("Escape")
        wait_for("the dialog gone", lambda: not self.first.is_showing("Create New Recipe"))

    def test_a_first_that_was_killed_leaves_the_recipes_free(self):
        os.kill(self.first._process.pid, signal.SIGKILL)
        self.first.wait_for_end()
        second = self.start()
        second.wait_for_selected("Categories", "MY FAVORITES")
        self.assertEqual(second.close(), 0, second.output())

    def test_a_first_that_hangs_is_told(self):
        os.kill(self.first._process.pid, signal.SIGSTOP)
        self.addCleanup(os.kill, self.first._process.pid, signal.SIGCONT)
        before = self.files()
        second = self.start()
        second.wait_for_message("does not answer")
        self.screen.press("Return")
        self.assertEqual(second.wait_for_end(), 1, second.output())
        self.assertEqual(self.files(), before)

    def test_after_the_first_has_closed_the_next_is_the_first(self):
        self.assertEqual(self.first.close(), 0)
        second = self.start()
        second.wait_for_selected("Categories", "MY FAVORITES")
        second.window()
        self.assertEqual(second.close(), 0, second.output())

    def test_of_many_starts_at_once_one_stays(self):
        self.assertEqual(self.first.close(), 0)
        books = [self.start() for _ in range(5)]

        def running():
            return [book for book in books if book._process.poll() is None]

        wait_for("all but one to end", lambda: len(running()) == 1)
        (stays,) = running()
        for book in books:
            if book is not stays:
                self.assertEqual(book.wait_for_end(), 0, book.output())
        stays.wait_for_selected("Categories", "MY FAVORITES")
        self.assertTrue(stays.window(TITLE))


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("--program", required=True, help="the built tidewell-larder")
    parser.add_argument("--stock", required=True, help="a folder with the stock Data in it")
    _, rest = parser.parse_known_args(namespace=SETTINGS)
    unittest.main(argv=[sys.argv[0], *rest], verbosity=2)


if __name__ == "__main__":
    main()
