"""The cook-book opens on the favourites, and recipes can be listed, read and stepped through."""

import sys
from pathlib import Path

sys.path.insert(0, str(Path(__file__).resolve().parent))

from browsing import CATEGORIES, PAGE, RECIPES, TOP_LINES, OpenBook, WithData, run  # noqa: E402
from harness import Box, wait_for  # noqa: E402


class Browsing(OpenBook):
    def test_it_opens_on_the_favourites(self):
        titles = [line.title for line in self.book.lines(CATEGORIES)]
        self.assertEqual(titles[:len(TOP_LINES)], TOP_LINES)
        self.assertGreaterEqual(len(titles), len(TOP_LINES) + 12)
        self.book.screenshot(self.picture("favourites"))
        self.close()

    def test_a_click_on_a_category_and_on_a_recipe_shows_its_text(self):
        titles = self.open_category(self.first_ordinary_category())
        for title in titles[:3]:
            self.open_recipe(title)
        self.assertGreater(len(self.book.text(PAGE).strip().splitlines()), 3)
        self.book.screenshot(self.picture("recipe"))
        self.close()

    def test_alt_n_and_alt_b_step_through_the_list(self):
        titles = self.open_category(self.first_ordinary_category())
        self.assertGreaterEqual(len(titles), 2, titles)
        self.open_recipe(titles[0])
        self.screen.press("alt+n")
        self.book.wait_for_selected(RECIPES, titles[1])
        self.wait_for_recipe(titles[1])
        self.screen.press("alt+b")
        self.book.wait_for_selected(RECIPES, titles[0])
        self.wait_for_recipe(titles[0])
        self.close()

    def test_page_down_home_and_end_move_in_a_long_list(self):
        top = self.open_category("ALL RECIPES")
        self.book.click_line(RECIPES, top[0])
        self.book.wait_for_selected(RECIPES, top[0])

        self.screen.press("End")
        wait_for("the list to scroll to its end",
                 lambda: self.titles_at_rest()[0] != top[0])
        bottom = self.titles_at_rest()
        self.assertEqual(len(bottom), len(top))
        self.book.wait_for_selected(RECIPES, bottom[-1])

        self.screen.press("Home")
        self.book.wait_for_selected(RECIPES, top[0])
        self.assertEqual(self.titles_at_rest(), top)

        self.screen.press("Next")
        wait_for("the list to scroll by a page",
                 lambda: self.titles_at_rest()[0] != top[0])
        self.assertIn(self.book.selected(RECIPES), self.titles_at_rest())

        # Page after page comes to the same end that the End key jumps to.
        for _ in range(200):
            if self.titles_at_rest() == bottom:
                break
            self.screen.press("Next")
        self.assertEqual(self.titles_at_rest(), bottom)

        # Enter opens the selected recipe.
        title = self.book.selected(RECIPES)
        self.screen.press("Return")
        self.wait_for_recipe(title)
        self.close()


class Screens(WithData):
    """The window fits the screen, and everything in it fits the window."""

    def look(self, name, width, height, **options):
        book = self.start(self.desktop(width, height), **options)
        book.wait_for_selected(CATEGORIES, "MY FAVORITES")
        book.screenshot(self.picture(name))
        screen = Box(0, 0, width, height)
        window = book.window_box()
        self.assertTrue(window.within(screen), f"{window} on {screen}")
        for control in (CATEGORIES, RECIPES, "Exit"):
            place = book.box(book.control(control))
            self.assertTrue(place.within(window), f"{control} at {place} in {window}")
        book.click_control("Exit")
        self.assertEqual(book.wait_for_end(), 0, book.output())

    def test_a_small_screen(self):
        self.look("screen-1024x768", 1024, 768)

    def test_a_wide_screen(self):
        self.look("screen-1920x1080", 1920, 1080)

    def test_a_dense_screen_at_twice_the_size(self):
        self.look("screen-2048x1536-twice", 2048, 1536, env={"QT_SCALE_FACTOR": "2"})


if __name__ == "__main__":
    run(__doc__)
