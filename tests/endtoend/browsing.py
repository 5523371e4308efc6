"""What the tests of the open cook-book share: a data folder, a screen, and ways to go about.

A test program is called with the built program, the stock data and a folder for screenshots; `run`
reads these and runs the cases that are named behind them.
"""

import argparse
import shutil
import sys
import unittest
from pathlib import Path

from harness import CookBook, Desktop, copy_of_data, wait_for

SETTINGS = argparse.Namespace()

CATEGORIES, RECIPES, PAGE = "Categories", "Recipes", "Recipe text"
FAVORITES = "MY FAVORITES"
TOP_LINES = [FAVORITES, "BUYING AND PREPARATION TIPS", "VIDEO", "KNOTS",
             "ALL RECIPES WITH PICTURES", "ALL RECIPES"]


class WithData(unittest.TestCase):
    """Each test works on a data folder of its own, so that none sees what another has left."""

    def setUp(self):
        self.folder = self.copy_of_data()
        self.data = Path(self.folder) / "Data"

    def copy_of_data(self):
        folder = copy_of_data(SETTINGS.stock)
        self.addCleanup(shutil.rmtree, folder)
        return folder

    def start(self, desktop, *arguments, folder=None, **options):
        """Returns when there is a window, be it only a message."""
        book = self.launch(desktop, *arguments, folder=folder, **options)
        book.window()
        return book

    def launch(self, desktop, *arguments, folder=None, **options):
        book = CookBook(desktop, SETTINGS.program, folder or self.folder, arguments, **options)
        self.addCleanup(book.__exit__)
        return book

    def desktop(self, width=1920, height=1080):
        desktop = Desktop(width, height)
        self.addCleanup(desktop.__exit__)
        return desktop.__enter__()

    def picture(self, name):
        return SETTINGS.artifacts / f"{name}.png"


class OneBook(WithData):
    """One cook-book at a time, and ways to go about in it."""

    def setUp(self):
        super().setUp()
        self.screen = self.desktop()

    def open(self, *arguments):
        self.book = self.start(self.screen, *arguments)
        self.book.wait_for_focus(CATEGORIES)
        self.book.wait_for_selected(CATEGORIES, FAVORITES)

    def restart(self):
        self.close()
        self.open()

    def open_category(self, title):
        """Clicks a category and returns the titles of the first screenful when it is complete."""
        self.book.click_line(CATEGORIES, title)
        self.book.wait_for_selected(CATEGORIES, title)
        return self.titles_at_rest()

    def titles_at_rest(self):
        before = [None]

        def steady():
            titles = [line.title for line in self.book.lines(RECIPES)]
            same = titles and titles == before[0]
            before[0] = titles
            return same and titles

        return wait_for("a list of recipes", steady)

    def first_ordinary_category(self):
        return next(line.title for line in self.book.lines(CATEGORIES)
                    if line.title not in TOP_LINES)

    def open_recipe(self, title):
        self.book.click_line(RECIPES, title)
        self.book.wait_for_selected(RECIPES, title)
        self.wait_for_recipe(title)

    def wait_for_recipe(self, title):
        """A recipe with a photograph opens on that; its text is then one click away."""

        def shown():
            if not self.book.is_showing(PAGE):
                self.book.click_control("Recipe")
                return False
            return self.book.first_line(PAGE) == title

        wait_for(f'the recipe "{title}"', shown, report=lambda: self.book.first_line(PAGE))

    def close(self):
        self.assertEqual(self.book.close(), 0, self.book.output())


class OpenBook(OneBook):
    """The cook-book stands open on its favourites."""

    def setUp(self):
        super().setUp()
        self.open()


def run(description):
    parser = argparse.ArgumentParser(description=description)
    parser.add_argument("--program", required=True, help="the built tidewell-larder")
    parser.add_argument("--stock", required=True, help="a folder with the stock Data in it")
    parser.add_argument("--artifacts", type=Path, help="where screenshots go")
    _, rest = parser.parse_known_args(namespace=SETTINGS)
    unittest.main(argv=[sys.argv[0], *rest], verbosity=2)
