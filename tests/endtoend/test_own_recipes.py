"""A recipe of the user's own: written, found, changed, kept, deleted."""

import struct
import sys
from pathlib import Path

sys.path.insert(0, str(Path(__file__).resolve().parent))

from browsing import CATEGORIES, FAVORITES, PAGE, RECIPES, OpenBook, run  # noqa: E402
from harness import Atspi, wait_for  # noqa: E402


def bitmap(width=48, height=32):
    """A picture of the simplest kind: every pixel another blue."""
    rows = b"".join(bytes((x * 5 % 256, y * 7 % 256, 64)) for y in range(height)
                    for x in range(width))
    header = struct.pack("<2sIHHI", b"BM", 54 + len(rows), 0, 0, 54)
    return header + struct.pack("<IiiHHIIiiII", 40, width, height, 1, 24, 0, len(rows),
                                2835, 2835, 0, 0) + rows


class OwnRecipes(OpenBook):
    TITLE, FIRST, SECOND = "Pea Soup for Two", "Fold the peas in.", "Simmer gently."

    def setUp(self):
        super().setUp()
        self.number = (self.data / "Recipes Index.ind").stat().st_size // 4 + 1

    # The editor

    def click_in(self, editor, name):
        """The main window has controls of the same names."""
        self.book.click_control(name, window=editor)

    def type(self, text):
        self.screen.xdotool("type", "--clearmodifiers", text)

    def box_of(self, editor, name):
        """The title box or the recipe box; a menu has the name of the latter."""
        return self.book.control(name, Atspi.Role.TEXT, editor)

    def wait_until_focused(self, editor, name):
        control = self.box_of(editor, name)
        wait_for(f'the focus in "{name}"',
                 lambda: control.get_state_set().contains(Atspi.StateType.FOCUSED))

    def click_box(self, editor, name):
        self.screen.click(*self.book.box(self.box_of(editor, name)).middle)
        self.wait_until_focused(editor, name)

    def wait_for_text(self, editor, box, text):
        control = self.box_of(editor, box)
        wait_for(f'"{text}" in "{box}"', lambda: text in Atspi.Text.get_text(control, 0, -1),
                 report=lambda: Atspi.Text.get_text(control, 0, -1))

    def write(self, editor, box, *lines):
        """Types lines over all that a box holds."""
        self.click_box(editor, box)
        self.screen.press("ctrl+a")
        for place, line in enumerate(lines):
            if place > 0:
                self.screen.press("Return")
            self.type(line)
        self.wait_for_text(editor, box, lines[-1])

    def wait_until_pressed(self, editor, name):
        control = self.book.control(name, window=editor)
        wait_for(f'"{name}" to look pressed',
                 lambda: control.get_state_set().contains(Atspi.StateType.PRESSED))

    def choose(self, name):
        self.book.click_control("Add")
        self.book.control("Create New Recipe")
        self.book.click_control(name)
        wait_for("the dialog gone", lambda: not self.book.is_showing("Create New Recipe"))

    def choose_picture(self, path):
        editor = "Add Recipe"
        self.click_in(editor, "Assign Picture")
        self.book.wait_for_focus("File name", Atspi.Role.TEXT)
        self.type(str(path))
        self.screen.press("Return")
        self.book.control("Change Picture", window=editor)

    def create(self, title, picture=None):
        editor = "Add Recipe"
        self.choose("Create New Recipe")
        self.book.window(editor)
        self.write(editor, "Title", title)
        self.write(editor, "Recipe", self.FIRST, self.SECOND)
        self.screen.press("ctrl+Home", "shift+End")
        for tool in ("Bold", "Center"):
            self.click_in(editor, tool)
            self.wait_until_pressed(editor, tool)
        if picture:
            self.choose_picture(picture)
        self.click_in(editor, "Add")
        self.book.wait_for_selected(CATEGORIES, FAVORITES)
        self.book.wait_for_selected(RECIPES, title)
        self.assertFalse(self.book.is_showing(editor))

    # The cook-book

    def open_favourite(self, title):
        self.book.wait_for_selected(CATEGORIES, FAVORITES)
        self.book.click_line(RECIPES, title)
        self.book.wait_for_selected(RECIPES, title)

    def page(self):
        """The text on view. A recipe with a photograph opens on that; its text is one click on."""

        def shown():
            if not self.book.is_showing(PAGE):
                self.book.click_control("Recipe")
                return False
            return self.book.text(PAGE).strip()

        return wait_for("the recipe's text", shown)

    def looks(self):
        """Each line of the page with its weight and alignment."""
        self.page()
        control = self.book.control(PAGE)
        looks = []
        start = 0
        for line in self.book.text(PAGE).split("\n"):
            if line.strip():
                attributes = Atspi.Text.get_attribute_run(control, start, True)[0]
                looks.append((line.strip(), attributes.get("weight") in ("bold", "700"),
                              attributes.get("justification", "left")))
            start += len(line) + 1
        return looks

    def look_of(self, line):
        return next((look[1:] for look in self.looks() if look[0] == line), None)

    def test_a_recipe_is_kept_as_it_was_written(self):
        picture = Path(self.folder) / "my soup.bmp"
        picture.write_bytes(bitmap())
        self.create(self.TITLE, picture)
        photo = self.data / "Food Photos" / f"{self.number}.bmp"
        self.assertEqual(photo.read_bytes(), bitmap())
        self.assertEqual(self.book.first_line(PAGE) if self.page() else "", self.TITLE)
        self.assertEqual(self.look_of(self.FIRST), (True, "center"))
        self.assertEqual(self.look_of(self.SECOND)[0], False)
        written = self.looks()

        editor = f"Edit Recipe #{self.number}"
        self.choose(editor)
        self.book.window(editor)
        self.click_box(editor, "Recipe")
        self.screen.press("ctrl+End", "Return")
        self.type("Serve warm.")
        self.wait_for_text(editor, "Recipe", "Serve warm.")
        self.click_in(editor, "Update")
        wait_for("the change on the page", lambda: "Serve warm." in self.page())
        changed = self.looks()
        self.assertEqual(changed[:len(written)], written)

        self.restart()
        self.open_favourite(self.TITLE)
        self.assertEqual(self.looks(), changed)
        self.assertEqual(photo.read_bytes(), bitmap())
        self.close()

    def test_the_number_of_a_deleted_recipe_stays_used(self):
        self.create(self.TITLE)
        self.choose(f"Delete Recipe #{self.number}")
        self.book.answer(f"Permanently delete recipe #{self.number}?", "Return")
        wait_for("an empty list", lambda: not self.book.lines(RECIPES))

        self.restart()
        self.assertEqual(self.book.lines(RECIPES), [])
        self.create("Another Soup")
        self.choose(f"Remove Recipe #{self.number + 1} From Favorites")
        wait_for("an empty list", lambda: not self.book.lines(RECIPES))
        self.assertEqual((self.data / "Custom Recipes Index.ind").stat().st_size, 8)
        self.close()

    def put_favourite(self, title, rtf):
        """A recipe that is in the book when the program starts."""
        (self.data / "Custom Recipes.ydb").write_bytes(f"{title}\r\n{rtf}\r\n".encode())
        (self.data / "Custom Recipes Index.ind").write_bytes(struct.pack("<i", 1))
        categories = self.data / "Categories.ctg"
        lines = categories.read_bytes().split(b"\r\n")
        lines[lines.index(FAVORITES.encode()) + 1] = f" {self.number} ".encode()
        categories.write_bytes(b"\r\n".join(lines))

    def drag_word(self, control, word, to):
        """A word that is selected, with the mouse, into the middle of another one."""

        def middle(of):
            start = Atspi.Text.get_text(control, 0, -1).index(of) + len(of) // 2
            box = Atspi.Text.get_character_extents(control, start, Atspi.CoordType.SCREEN)
            return box.x, box.y + box.height // 2

        (x, y), (end_x, end_y) = middle(word), middle(to)
        self.screen.xdotool("mousemove", "--sync", str(x), str(y), "mousedown", "1")
        for step in range(1, 11):
            self.screen.xdotool("mousemove", "--sync", str(x + (end_x - x) * step // 10),
                                str(y + (end_y - y) * step // 10))
        self.screen.xdotool("mouseup", "1")

    def test_a_word_that_is_dragged_down_leaves_each_line_where_it_was(self):
        self.close()
        sides = {"left": "\\ql", "center": "\\qc", "right": "\\qr"}
        lines = [(f"line{i:04}", list(sides)[i % 3]) for i in range(12)]
        rtf = "".join(f"\\pard{sides[side]} {text}\\par " for text, side in lines)
        self.put_favourite(self.TITLE,
                           f"{{\\rtf1\\ansi {self.TITLE} ConsiderablyLongWord\\par {rtf}}}")
        self.open()
        self.open_favourite(self.TITLE)
        editor = f"Edit Recipe #{self.number}"
        self.choose(editor)
        self.book.window(editor)
        control = self.box_of(editor, "Recipe")
        self.wait_until_focused(editor, "Recipe")
        self.screen.press("ctrl+Home", "End", "ctrl+shift+Left")
        wait_for("a word selected", lambda: Atspi.Text.get_n_selections(control) == 1)
        self.drag_word(control, "ConsiderablyLongWord", "line0008")
        self.wait_for_text(editor, "Recipe", "lineConsiderablyLongWord0008")
        self.click_in(editor, "Update")
        wait_for("the change on the page", lambda: "lineConsiderably" in self.page())
        sides_now = [look[2] for look in self.looks() if look[0].startswith("line")]
        self.assertEqual(sides_now, [side for _, side in lines])
        self.close()

    def test_a_question_that_is_cancelled_deletes_nothing(self):
        self.create(self.TITLE)
        text = self.page()
        self.choose(f"Delete Recipe #{self.number}")
        question = self.book.answer(f"Permanently delete recipe #{self.number}?", "Escape")
        wait_for("the question gone", lambda: not self.book.is_showing(question))
        self.restart()
        self.open_favourite(self.TITLE)
        self.assertEqual(self.page(), text)


if __name__ == "__main__":
    run(__doc__)
