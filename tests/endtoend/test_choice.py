"""The dialog behind the button Add, with mouse and keys."""

import argparse
import shutil
import sys
import unittest
from pathlib import Path

sys.path.insert(0, str(Path(__file__).resolve().parent))

from harness import CookBook, Desktop, copy_of_data, wait_for  # noqa: E402

SETTINGS = argparse.Namespace()


class Choice(unittest.TestCase):
    def setUp(self):
        self.folder = copy_of_data(SETTINGS.stock)
        self.addCleanup(shutil.rmtree, self.folder)
        desktop = Desktop(1280, 800)
        self.addCleanup(desktop.__exit__)
        self.screen = desktop.__enter__()
        self.start()

    def start(self):
        self.book = CookBook(self.screen, SETTINGS.program, self.folder)
        self.addCleanup(self.book.__exit__)
        self.book.wait_for_selected("Categories", "MY FAVORITES")

    def open_recipe(self):
        """Opens the first recipe of the book; returns its title."""
        self.book.click_line("Categories", "ALL RECIPES")
        self.book.wait_for_selected("Categories", "ALL RECIPES")
        lines = wait_for("recipes", lambda: self.book.lines("Recipes"))
        self.book.click_line("Recipes", lines[0].title)
        self.book.wait_for_selected("Recipes", lines[0].title)
        return lines[0].title

    def open_dialog(self):
        self.book.click_control("Add")
        self.book.control("Create New Recipe")

    def wait_until_gone(self):
        wait_for("the dialog gone", lambda: not self.book.is_showing("Create New Recipe"))

    def test_escape_closes_it(self):
        self.open_dialog()
        self.screen.press("Escape")
        self.wait_until_gone()
        self.assertEqual(self.book.close(), 0, self.book.output())

    def test_a_dimmed_button_leaves_it_open(self):
        self.open_recipe()
        self.open_dialog()
        self.book.click_control("Delete Recipe")
        self.book.click_control("Cancel")
        self.wait_until_gone()

    def test_a_favourite_added_there_is_still_one_after_a_restart(self):
        title = self.open_recipe()
        self.open_dialog()
        self.book.click_control("Add Recipe #1 To Favorites")
        self.wait_until_gone()
        self.open_dialog()
        self.book.control("Remove Recipe #1 From Favorites")
        self.screen.press("Escape")
        self.wait_until_gone()
        self.assertEqual(self.book.close(), 0, self.book.output())
        self.start()
        self.book.line("Recipes", title)


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("--program", required=True, help="the built tidewell-larder")
    parser.add_argument("--stock", required=True, help="a folder with the stock Data in it")
    _, rest = parser.parse_known_args(namespace=SETTINGS)
    unittest.main(argv=[sys.argv[0], *rest], verbosity=2)


if __name__ == "__main__":
    main()
