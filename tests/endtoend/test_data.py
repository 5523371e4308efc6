"""The maintainer's tool makes the data of the cook-book from the sources in the tree."""

import argparse
import filecmp
import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

SETTINGS = argparse.Namespace()


class Data(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = Path(folder.name)

    def build(self, out):
        return subprocess.run(
            [SETTINGS.larder_data, "build", "--source", SETTINGS.source, "--out", out],
            capture_output=True, text=True, check=False)

    def files(self, folder):
        return sorted(path.relative_to(folder) for path in folder.rglob("*") if path.is_file())

    def test_the_same_sources_give_the_same_bytes(self):
        first, second = SETTINGS.stock, self.folder / "second"
        result = self.build(second)
        self.assertEqual(result.returncode, 0, result.stderr)
        names = self.files(first)
        self.assertEqual(names, self.files(second))
        self.assertIn(Path("Data/Recipes.ydb"), names)
        different = filecmp.cmpfiles(first, second, names, shallow=False)[1:]
        self.assertEqual(different, ([], []))

    def test_data_that_are_there_are_refused_and_left_alone(self):
        data = self.folder / "Data"
        data.mkdir()
        (data / "Recipes.ydb").write_text("mine")
        result = self.build(self.folder)
        self.assertEqual(result.returncode, 1)
        self.assertIn(str(data), result.stderr)
        self.assertEqual(self.files(self.folder), [Path("Data/Recipes.ydb")])
        self.assertEqual((data / "Recipes.ydb").read_text(), "mine")

    def test_the_list_of_categories_begins_as_the_program_expects(self):
        lines = (SETTINGS.stock / "Data/Categories.ctg").read_bytes().decode("cp1252").split("\r\n")
        self.assertEqual(lines[1:13:2], [
            "MY FAVORITES", "BUYING AND PREPARATION TIPS", "VIDEO", "KNOTS",
            "ALL RECIPES WITH PICTURES", "ALL RECIPES"])
        self.assertRegex(lines[10], r"^( \d+)+ $")
        names = [name for name in lines[13::2] if name]
        self.assertGreaterEqual(len(names), 12)
        for numbers in lines[14:14 + 2 * len(names):2]:
            self.assertRegex(numbers, r"^( \d+)+ $")


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("--larder-data", required=True, help="the built larder-data")
    parser.add_argument("--source", required=True, help="sources of the stock data")
    parser.add_argument("--stock", required=True, type=Path,
                        help="a folder with the stock Data in it, made before")
    _, rest = parser.parse_known_args(namespace=SETTINGS)
    unittest.main(argv=[sys.argv[0], *rest], verbosity=2)


if __name__ == "__main__":
    main()
