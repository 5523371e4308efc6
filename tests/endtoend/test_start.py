"""A start that cannot be made says why, in a box and by the exit status; what the command line does,
and how the program ends."""

import argparse
import shutil
import sys
import unittest
from pathlib import Path

sys.path.insert(0, str(Path(__file__).resolve().parent))

from harness import CookBook, Desktop, copy_of_data, wait_for  # noqa: E402

SETTINGS = argparse.Namespace()


class WithData(unittest.TestCase):
    def setUp(self):
        self.folder = copy_of_data(SETTINGS.stock)
        self.addCleanup(shutil.rmtree, self.folder)
        self.data = Path(self.folder) / "Data"

    def start(self, *arguments):
        desktop = Desktop()
        self.addCleanup(desktop.__exit__)
        book = CookBook(desktop.__enter__(), SETTINGS.program, self.folder, arguments)
        self.addCleanup(book.__exit__)
        book.window()
        return book


class Start(WithData):
    def test_a_missing_file_is_named(self):
        (self.data / "CategyD.ydb").unlink()
        book = self.start()
        self.assertIn("CategyD.ydb", book.wait_for_message("can't start"))
        book.answer("Return")
        self.assertEqual(book.wait_for_end(), 1, book.output())

    def test_without_recipes_the_disc_is_asked_for(self):
        (self.data / "Recipes.ydb").unlink()
        book = self.start()
        book.wait_for_message("Please put Tidewell Larder CD in the drive")
        book.answer("Escape")
        book.wait_for_message("The Program needs Tidewell Larder CD to run.")
        book.answer("Return")
        book.wait_for_end()

    def test_a_folder_with_blanks_and_foreign_letters_is_no_obstacle(self):
        odd = Path(self.folder) / "Küche \u9b5a & C"
        odd.mkdir()
        self.data.rename(odd / "Data")
        self.folder, parent = str(odd), self.folder
        self.addCleanup(setattr, self, "folder", parent)
        book = self.start()
        book.wait_for_selected("Categories", "MY FAVORITES")
        self.assertEqual(book.close(), 0, book.output())


class Switches(WithData):
    """Any argument that holds a switch counts, in whatever case."""

    def open_a_recipe(self, book):
        book.wait_for_selected("Categories", "MY FAVORITES")
        book.click_line("Categories", "ALL RECIPES")
        title = wait_for("recipes", lambda: book.lines("Recipes"))[0].title
        book.click_line("Recipes", title)
        book.wait_for_selected("Recipes", title)

        def shown():
            if not book.is_showing("Recipe text"):
                book.click_control("Recipe")  # the photograph came first
                return False
            return book.first_line("Recipe text") == title

        wait_for(f'the recipe "{title}"', shown)
        return title

    def type_into_the_page(self, book):
        """Types a letter in front of the title. The key behind it tells when it has arrived."""
        book.click_control("Recipe text")
        book.desktop.press("ctrl+Home", "q", "ctrl+f")
        book.window("Find Recipes")

    def test_the_page_is_open_to_typing_with_the_switch_e(self):
        book = self.start("first", "x/edit")
        title = self.open_a_recipe(book)
        self.type_into_the_page(book)
        self.assertEqual(book.first_line("Recipe text"), "q" + title)
        self.assertEqual(book.close(), 0, book.output())

    def test_the_page_is_closed_to_typing_without_it(self):
        book = self.start("-E", "E")
        title = self.open_a_recipe(book)
        self.type_into_the_page(book)
        self.assertEqual(book.first_line("Recipe text"), title)
        self.assertEqual(book.close(), 0, book.output())

    def test_the_disc_is_asked_for_with_the_switch_cd_although_the_recipes_are_there(self):
        book = self.start("/cd")
        book.wait_for_message("Please put Tidewell Larder CD in the drive")
        book.answer("Escape")
        book.wait_for_message("The Program needs Tidewell Larder CD to run.")
        book.answer("Return")
        self.assertEqual(book.wait_for_end(), 0, book.output())


class End(WithData):
    def test_the_find_dialog_goes_with_the_main_window(self):
        book = self.start()
        book.wait_for_selected("Categories", "MY FAVORITES")
        book.desktop.press("ctrl+f")
        book.window("Find Recipes")
        self.assertEqual(book.close(), 0, book.output())


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("--program", required=True, help="the built tidewell-larder")
    parser.add_argument("--stock", required=True, help="a folder with the stock Data in it")
    _, rest = parser.parse_known_args(namespace=SETTINGS)
    unittest.main(argv=[sys.argv[0], *rest], verbosity=2)


if __name__ == "__main__":
    main()
