"""A start that cannot be made says why, in a box and by the exit status."""

import argparse
import shutil
import sys
import unittest
from pathlib import Path

sys.path.insert(0, str(Path(__file__).resolve().parent))

from harness import CookBook, Desktop, copy_of_data  # noqa: E402

SETTINGS = argparse.Namespace()


class Start(unittest.TestCase):
    def setUp(self):
        self.folder = copy_of_data(SETTINGS.stock)
        self.addCleanup(shutil.rmtree, self.folder)
        self.data = Path(self.folder) / "Data"

    def start(self):
        desktop = Desktop()
        self.addCleanup(desktop.__exit__)
        book = CookBook(desktop.__enter__(), SETTINGS.program, self.folder)
        self.addCleanup(book.__exit__)
        book.window()
        return book

    def test_a_missing_file_is_named(self):
        (self.data / "CategyD.ydb").unlink()
        book = self.start()
        self.assertIn("CategyD.ydb", book.wait_for_message("can't start"))
        book.desktop.press("Return")
        self.assertEqual(book.wait_for_end(), 1, book.output())

    def test_without_recipes_the_disc_is_asked_for(self):
        (self.data / "Recipes.ydb").unlink()
        book = self.start()
        book.wait_for_message("Please put Tidewell Larder CD in the drive")
        book.desktop.press("Escape")
        book.wait_for_message("The Program needs Tidewell Larder CD to run.")
        book.desktop.press("Return")
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


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("--program", required=True, help="the built tidewell-larder")
    parser.add_argument("--stock", required=True, help="a folder with the stock Data in it")
    _, rest = parser.parse_known_args(namespace=SETTINGS)
    unittest.main(argv=[sys.argv[0], *rest], verbosity=2)


if __name__ == "__main__":
    main()
