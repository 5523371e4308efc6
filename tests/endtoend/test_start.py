"""A start that cannot be made says why, in a box and by the exit status; what the command line does,
and how the program ends."""

import sys
from pathlib import Path

sys.path.insert(0, str(Path(__file__).resolve().parent))

from browsing import PAGE, OneBook, OpenBook, run  # noqa: E402


class Start(OneBook):
    def test_a_missing_file_is_named(self):
        (self.data / "CategyD.ydb").unlink()
        book = self.start(self.screen)
        self.assertIn("CategyD.ydb", book.answer("can't start", "Return"))
        self.assertEqual(book.wait_for_end(), 1, book.output())

    def test_without_recipes_the_disc_is_asked_for(self):
        (self.data / "Recipes.ydb").unlink()
        book = self.start(self.screen)
        book.answer("Please put Tidewell Larder CD in the drive", "Escape")
        book.answer("The Program needs Tidewell Larder CD to run.", "Return")
        book.wait_for_end()

    def test_a_folder_with_blanks_and_foreign_letters_is_no_obstacle(self):
        odd = Path(self.folder) / "Küche \u9b5a & C"
        odd.mkdir()
        self.data.rename(odd / "Data")
        self.folder, parent = str(odd), self.folder
        self.addCleanup(setattr, self, "folder", parent)
        self.open()
        self.close()


class Switches(OneBook):
    """Any argument that holds a switch counts, in whatever case."""

    def open_a_recipe(self, *arguments):
        """Returns the title."""
        self.open(*arguments)
        title = self.open_category("ALL RECIPES")[0]
        self.open_recipe(title)
        return title

    def type_into_the_page(self):
        """Types a letter in front of the title. The key behind it tells when it has arrived."""
        self.book.click_control(PAGE)
        self.screen.press("ctrl+Home", "q", "ctrl+f")
        self.book.window("Find Recipes")

    def test_the_page_is_open_to_typing_with_the_switch_e(self):
        title = self.open_a_recipe("first", "x/edit")
        self.type_into_the_page()
        self.assertEqual(self.book.first_line(PAGE), "q" + title)
        self.close()

    def test_the_page_is_closed_to_typing_without_it(self):
        title = self.open_a_recipe("-E", "E")
        self.type_into_the_page()
        self.assertEqual(self.book.first_line(PAGE), title)
        self.close()

    def test_the_disc_is_asked_for_with_the_switch_cd_although_the_recipes_are_there(self):
        book = self.start(self.screen, "/cd")
        book.answer("Please put Tidewell Larder CD in the drive", "Escape")
        book.answer("The Program needs Tidewell Larder CD to run.", "Return")
        self.assertEqual(book.wait_for_end(), 0, book.output())


class End(OpenBook):
    def test_the_find_dialog_goes_with_the_main_window(self):
        self.screen.press("ctrl+f")
        self.book.window("Find Recipes")
        self.close()


if __name__ == "__main__":
    run(__doc__)
