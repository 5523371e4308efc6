"""An installed cook-book opens for a user who has never had one."""

import argparse
import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

sys.path.insert(0, str(Path(__file__).resolve().parent))

from harness import CookBook, Desktop  # noqa: E402

SETTINGS = argparse.Namespace()


class Installed(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.home = Path(folder.name) / "home"
        self.home.mkdir()
        self.prefix = Path(folder.name) / "usr"
        subprocess.run(["cmake", "--install", SETTINGS.build, "--prefix", self.prefix],
                       check=True, capture_output=True)
        # The first start brings its data to the disk, and may not have to do the same for all that
        # a build has left to be written before it.
        subprocess.run(["sync", "-f", self.home], check=True)

    def start_and_close(self):
        env = {"HOME": str(self.home), "XDG_DATA_HOME": ""}
        program = self.prefix / "bin/tidewell-larder"
        with Desktop() as desktop, CookBook(desktop, program, self.home, env=env) as book:
            book.wait_for_selected("Categories", "MY FAVORITES")
            self.assertEqual(book.close(), 0, book.output())

    def test_the_first_start_makes_the_data_and_the_next_leaves_it(self):
        self.start_and_close()
        data = self.home / ".local/share/tidewell-larder/Data"
        recipes = data / "Recipes.ydb"
        self.assertGreater(recipes.stat().st_size, 0)

        (data / "mine.txt").write_text("mine")
        made = recipes.stat().st_ino
        self.start_and_close()
        self.assertEqual((data / "mine.txt").read_text(), "mine")
        self.assertEqual(recipes.stat().st_ino, made)


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("--build", required=True, help="the build folder to install from")
    _, rest = parser.parse_known_args(namespace=SETTINGS)
    unittest.main(argv=[sys.argv[0], *rest], verbosity=2)


if __name__ == "__main__":
    main()
