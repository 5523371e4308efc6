"""Recipes are found by their words and by number, and favourites are kept."""

import subprocess
import sys
from pathlib import Path

sys.path.insert(0, str(Path(__file__).resolve().parent))

from browsing import CATEGORIES, PAGE, RECIPES, OpenBook, run  # noqa: E402
from harness import Box, wait_for  # noqa: E402

from gi.repository import Atspi  # noqa: E402  (after the harness has chosen its version)

DIALOG = "Find Recipes"


def is_found_color(pixel):
    red, green, blue = pixel
    return blue > 200 and red < 110 and green < 110


class Finding(OpenBook):
    def open_dialog(self):
        self.screen.press("ctrl+f")
        self.book.window(DIALOG)
        words = self.book.control("Words")
        wait_for("the focus in the box of words",
                 lambda: words.get_state_set().contains(Atspi.StateType.FOCUSED))

    def find(self, words):
        self.open_dialog()
        self.screen.xdotool("type", words)
        wait_for("the words in their box", lambda: self.book.text("Words").strip() == words,
                 report=lambda: self.book.text("Words"))
        self.screen.press("Return")
        self.book.control("SEARCH")
        wait_for("the list of the search", lambda: self.titles_at_rest() != self.before)
        self.screen.press("Escape")
        wait_for("the dialog to go", lambda: not self.book.is_showing(DIALOG))

    def pixels(self, box):
        """Rows of (red, green, blue) of a part of the screen."""
        raw = subprocess.run(
            ["import", "-silent", "-window", "root", "-crop",
             f"{box.width}x{box.height}+{box.x}+{box.y}", "-depth", "8", "rgb:-"],
            env=self.screen.env, capture_output=True, check=True).stdout
        pixels = list(zip(raw[0::3], raw[1::3], raw[2::3]))
        return [pixels[y * box.width:(y + 1) * box.width] for y in range(box.height)]

    def count_of_found_color(self, box):
        return sum(is_found_color(pixel) for row in self.pixels(box) for pixel in row)

    def places_of(self, word):
        """Where each occurrence of a word stands on the screen, from the second line on."""
        page = self.book.control(PAGE)
        text = self.book.text(PAGE)
        places = []
        start = text.lower().find(word, text.index("\n"))
        while start >= 0:
            extents = Atspi.Text.get_range_extents(page, start, start + len(word),
                                                   Atspi.CoordType.SCREEN)
            places.append(Box(extents.x, extents.y, extents.width, extents.height))
            start = text.lower().find(word, start + 1)
        return places

    def test_two_words_are_found_and_coloured(self):
        self.before = self.open_category(self.first_ordinary_category())
        self.open_recipe(self.before[0])
        page = self.book.box(self.book.control(PAGE))
        self.book.wait_until_painted()
        self.assertEqual(self.count_of_found_color(page), 0)

        self.find("salmon dill")
        titles = self.titles_at_rest()
        self.assertIn("Salmon Baked with Dill and Lemon", titles)
        self.assertNotIn(self.before[0], titles)
        self.book.wait_for_selected(RECIPES, titles[0])
        # The first hit has a photograph, and its text is one click away.
        self.book.control("Picture")
        self.book.screenshot(self.picture("found-picture"))
        self.wait_for_recipe(titles[0])
        self.book.screenshot(self.picture("found-words"))
        for word in ("salmon", "dill"):
            first, *others = self.places_of(word)
            self.assertGreater(self.count_of_found_color(first), 8, word)
            for place in others:
                if place.within(page):
                    self.assertEqual(self.count_of_found_color(place), 0, f"{word} at {place}")
        self.close()

    def test_a_number_shows_its_recipe_and_leaves_the_list(self):
        before = self.open_category(self.first_ordinary_category())
        self.open_dialog()
        self.screen.press("alt+n")
        self.screen.xdotool("type", "30")
        wait_for("the number in its box", lambda: self.book.text("Number").strip() == "30")
        self.screen.press("Return")
        self.wait_for_recipe("Trout Amandine")
        self.assertEqual(self.titles_at_rest(), before)
        self.close()


class Favourites(OpenBook):
    def choose_only_entry_for(self, title):
        """The menu of a stock recipe offers to add it or to remove it, and nothing else."""
        self.book.click_line(RECIPES, title, button=3)
        menu = wait_for("the pop-up menu", self.book.pop_up_menu)
        self.screen.click(*menu.middle)
        wait_for("the menu to go", lambda: self.book.pop_up_menu() is None)

    def wait_for_favourites(self, titles):
        self.book.wait_for_selected(CATEGORIES, "MY FAVORITES")
        wait_for(f"the favourites {titles}", lambda: self.titles() == titles, report=self.titles)

    def titles(self):
        return [line.title for line in self.book.lines(RECIPES)]

    def test_a_recipe_added_through_the_menu_is_there_at_the_next_start(self):
        kept = self.titles()
        titles = self.open_category(self.first_ordinary_category())
        added = next(title for title in titles if title not in kept)
        self.choose_only_entry_for(added)
        self.book.click_line(CATEGORIES, "MY FAVORITES")
        self.wait_for_favourites([*kept, added])
        self.restart()
        self.wait_for_favourites([*kept, added])

        self.choose_only_entry_for(added)
        self.wait_for_favourites(kept)
        self.restart()
        self.wait_for_favourites(kept)
        self.close()


if __name__ == "__main__":
    run(__doc__)
