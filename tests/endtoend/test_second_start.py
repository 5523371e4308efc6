"""A second start on the same recipes shows the cook-book that is open, and ends."""

import os
import shutil
import signal
import subprocess
import sys
import tempfile
from pathlib import Path

sys.path.insert(0, str(Path(__file__).resolve().parent))

from browsing import CATEGORIES, FAVORITES, WithData, run  # noqa: E402
from harness import TITLE, wait_for  # noqa: E402


class SecondStart(WithData):
    def setUp(self):
        super().setUp()
        self.screen = self.desktop()
        self.first = self.start_one()
        self.first.wait_for_selected(CATEGORIES, FAVORITES)

    def start_one(self, folder=None):
        """It may end without a window."""
        return self.launch(self.screen, folder=folder)

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
        other_folder = self.copy_of_data()
        other = self.start_one(other_folder)
        self.wait_until_active(other.window())
        other.click_line(CATEGORIES, "ALL RECIPES")  # what the user has last done is there
        other.wait_for_selected(CATEGORIES, "ALL RECIPES")
        before = self.files()
        second = self.start_one()
        self.assertEqual(second.wait_for_end(), 0, second.output())
        self.wait_until_active(window)
        self.assertEqual(self.files(), before)

    def test_it_brings_a_minimised_window_back(self):
        window = self.first.window()
        self.screen.xdotool("windowminimize", "--sync", window)
        second = self.start_one()
        self.assertEqual(second.wait_for_end(), 0, second.output())
        self.assertEqual(self.first.window(), window, "on the screen again")
        self.wait_until_active(window)

    def test_another_path_leads_to_the_same_recipes(self):
        link = Path(tempfile.mkdtemp()) / "link"
        self.addCleanup(shutil.rmtree, link.parent)
        link.symlink_to(self.folder)
        second = self.start_one(link)
        self.assertEqual(second.wait_for_end(), 0, second.output())

    def test_an_open_dialog_of_the_first_stays_before_it(self):
        self.first.click_control("Add")
        self.first.control("Create New Recipe")
        self.assertEqual(self.start_one().wait_for_end(), 0)
        wait_for("the dialog in front", lambda: self.active() != self.first.window()
                 and self.first.is_showing("Create New Recipe"))
        self.first.answer("Create New Recipe", "Escape")
        wait_for("the dialog gone", lambda: not self.first.is_showing("Create New Recipe"))

    def test_a_first_that_was_killed_leaves_the_recipes_free(self):
        os.kill(self.first._process.pid, signal.SIGKILL)
        self.first.wait_for_end()
        second = self.start_one()
        second.wait_for_selected(CATEGORIES, FAVORITES)
        self.assertEqual(second.close(), 0, second.output())

    def test_a_first_that_hangs_is_told(self):
        os.kill(self.first._process.pid, signal.SIGSTOP)
        self.addCleanup(os.kill, self.first._process.pid, signal.SIGCONT)
        before = self.files()
        second = self.start_one()
        second.answer("does not answer", "Return")
        self.assertEqual(second.wait_for_end(), 1, second.output())
        self.assertEqual(self.files(), before)

    def test_after_the_first_has_closed_the_next_is_the_first(self):
        self.assertEqual(self.first.close(), 0)
        second = self.start_one()
        second.wait_for_selected(CATEGORIES, FAVORITES)
        second.window()
        self.assertEqual(second.close(), 0, second.output())

    def test_of_many_starts_at_once_one_stays(self):
        self.assertEqual(self.first.close(), 0)
        books = [self.start_one() for _ in range(5)]

        def running():
            return [book for book in books if book._process.poll() is None]

        wait_for("all but one to end", lambda: len(running()) == 1)
        (stays,) = running()
        for book in books:
            if book is not stays:
                self.assertEqual(book.wait_for_end(), 0, book.output())
        stays.wait_for_selected(CATEGORIES, FAVORITES)
        self.assertTrue(stays.window(TITLE))


if __name__ == "__main__":
    run(__doc__)
