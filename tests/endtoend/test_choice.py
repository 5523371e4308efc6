"""The dialog behind the button Add, with mouse and keys."""

import sys
from pathlib import Path

sys.path.insert(0, str(Path(__file__).resolve().parent))

from browsing import RECIPES, OpenBook, run  # noqa: E402
from harness import wait_for  # noqa: E402


class Choice(OpenBook):
    def open_first_recipe(self):
        """Returns its title."""
        title = self.open_category("ALL RECIPES")[0]
        self.open_recipe(title)
        return title

    def open_dialog(self):
        self.book.click_control("Add")
        self.book.wait_for_focus("Create New Recipe")

    def wait_until_gone(self):
        wait_for("the dialog gone", lambda: not self.book.is_showing("Create New Recipe"))

    def test_escape_closes_it(self):
        self.open_dialog()
        self.screen.press("Escape")
        self.wait_until_gone()
        self.close()

    def test_a_dimmed_button_leaves_it_open(self):
        self.open_first_recipe()
        self.open_dialog()
        self.book.click_control("Delete Recipe")
        self.book.click_control("Cancel")
        self.wait_until_gone()

    def test_a_favourite_added_there_is_still_one_after_a_restart(self):
        title = self.open_first_recipe()
        self.open_dialog()
        self.book.click_control("Add Recipe #1 To Favorites")
        self.wait_until_gone()
        self.open_dialog()
        self.book.control("Remove Recipe #1 From Favorites")
        self.screen.press("Escape")
        self.wait_until_gone()
        self.restart()
        self.book.line(RECIPES, title)


if __name__ == "__main__":
    run(__doc__)
