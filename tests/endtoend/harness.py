"""Runs the built cook-book as a user would: on a screen of its own, with mouse and keys.

A `Desktop` is a virtual screen with a window manager on it. A `CookBook` is the program running
there on a freshly made data folder. What is on the screen is read through the accessibility
interface, as a screen reader would; input goes through the X server, as from real devices.

The session bus has to exist before this module is used: the test programs are started by
session.sh.

Nothing here sleeps for a guessed time. Whatever has to happen is waited for with `wait_for`,
which fails with a sentence when it does not come about before the deadline.
"""

import os
import re
import shutil
import signal
import subprocess
import tempfile
import time
from dataclasses import dataclass, field
from pathlib import Path

import gi

gi.require_version("Atspi", "2.0")
from gi.repository import Atspi, GLib  # noqa: E402

DEADLINE = float(os.environ.get("LARDER_ENDTOEND_DEADLINE", "30"))
PROGRAM = "tidewell-larder"
TITLE = "Tidewell Larder"


class Unmet(AssertionError):
    """Something that was waited for did not come about."""


def wait_for(what, condition, deadline=None, report=None):
    """Returns the first true value of `condition()`; raises Unmet naming `what` otherwise.

    Failures of the accessibility interface and of the tools of the X server count as "not yet":
    objects and windows come and go while the program works. `report`, when given, is called for a
    last word on what there was instead.
    """
    end = time.monotonic() + (deadline or DEADLINE)
    while True:
        _let_accessibility_events_in()
        failure = None
        try:
            value = condition()
        except (GLib.Error, subprocess.CalledProcessError) as error:
            value, failure = None, error
        if value:
            return value
        if time.monotonic() > end:
            instead = f"; there was: {report()}" if report else ""
            raise Unmet(f"waited in vain for {what}{instead}") from failure
        time.sleep(0.02)


def _let_accessibility_events_in():
    context = GLib.MainContext.default()
    while context.pending():
        context.iteration(False)


def _run(*command, env=None):
    return subprocess.run(command, env=env, check=True, capture_output=True, text=True).stdout


class Desktop:
    """A virtual screen of the given size with a window manager, gone at the end of the block."""

    def __init__(self, width=1920, height=1080):
        self.width, self.height = width, height
        self.env = dict(os.environ)
        self.env.pop("WAYLAND_DISPLAY", None)
        self._processes = []

    def __enter__(self):
        try:
            self._start_screen()
            self._start_window_manager()
        except BaseException:
            self.__exit__()
            raise
        return self

    def __exit__(self, *_):
        for process in reversed(self._processes):
            process.terminate()
        for process in reversed(self._processes):
            try:
                process.wait(5)
            except subprocess.TimeoutExpired:
                process.kill()
                process.wait()

    def _start_screen(self):
        # No key repeats (-r), however late the release of a key comes.
        read_end, write_end = os.pipe()
        self._processes.append(subprocess.Popen(
            ["Xvfb", "-displayfd", str(write_end), "-screen", "0",
             f"{self.width}x{self.height}x24", "-nolisten", "tcp", "-noreset", "-r"],
            pass_fds=[write_end], stderr=subprocess.DEVNULL))
        os.close(write_end)
        with os.fdopen(read_end) as pipe:
            number = pipe.readline().strip()
        if not number:
            raise Unmet("Xvfb did not start")
        self.env["DISPLAY"] = f":{number}"

    def _start_window_manager(self):
        # Its own home keeps the manager from reading what the user has set up for his.
        env = dict(self.env, XDG_CONFIG_HOME="/nonexistent")
        self._processes.append(subprocess.Popen(
            ["openbox"], env=env, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL))
        wait_for("the window manager", lambda: "window id" in _run(
            "xprop", "-root", "_NET_SUPPORTING_WM_CHECK", env=self.env))

    def xdotool(self, *arguments):
        return _run("xdotool", *map(str, arguments), env=self.env)

    def click(self, x, y, button=1):
        self.xdotool("mousemove", "--sync", round(x), round(y), "click", button)

    def press(self, *keys):
        """Each key in xdotool's words: "alt+n", "Next", "Home"."""
        for key in keys:
            self.xdotool("key", "--clearmodifiers", key)

    def screenshot(self, path):
        path = Path(path)
        path.parent.mkdir(parents=True, exist_ok=True)
        _run("import", "-silent", "-window", "root", path.as_posix(), env=self.env)
        return path


@dataclass
class Box:
    """A place on the screen, in pixels."""

    x: int
    y: int
    width: int
    height: int

    @property
    def middle(self):
        return self.x + self.width / 2, self.y + self.height / 2

    def within(self, other):
        return (self.x >= other.x and self.y >= other.y
                and self.x + self.width <= other.x + other.width
                and self.y + self.height <= other.y + other.height)


@dataclass
class Line:
    """A line of a list: the texts of its cells from left to right."""

    box: Box
    cells: list = field(default_factory=list)
    selected: bool = False

    @property
    def title(self):
        """The text that names the line: that of the last column."""
        return self.cells[-1] if self.cells else ""


class CookBook:
    """The program, running on `desktop` with `folder` as the folder that it is started in."""

    def __init__(self, desktop, program, folder, arguments=(), env=None):
        self.desktop = desktop
        self._log = tempfile.TemporaryFile("w+")
        self._process = subprocess.Popen(
            [program, *arguments], cwd=folder, stdout=self._log, stderr=subprocess.STDOUT,
            env={**desktop.env, "QT_LINUX_ACCESSIBILITY_ALWAYS_ON": "1",
                 "QT_QPA_PLATFORM": "xcb", **(env or {})})
        self.scale = float((env or {}).get("QT_SCALE_FACTOR", 1))

    def __enter__(self):
        return self

    def __exit__(self, *_):
        if self._process.poll() is None:
            self._process.kill()
            self._process.wait()
        self._log.close()

    # Windows

    def output(self):
        self._log.seek(0)
        return self._log.read()

    def window(self, title=TITLE):
        """The X window with this title, once it is on the screen."""

        def find():
            self.assert_running()
            found = subprocess.run(
                ["xdotool", "search", "--onlyvisible", "--name", f"^{re.escape(title)}$"],
                env=self.desktop.env, capture_output=True, text=True, check=False).stdout.split()
            return next((w for w in found if self._owns(w)), None)

        return wait_for(f'a window "{title}"', find, report=self.output)

    def _owns(self, window):
        found = subprocess.run(["xprop", "-id", window, "_NET_WM_PID"], env=self.desktop.env,
                               capture_output=True, text=True, check=False).stdout
        return found.strip().endswith(f"= {self._process.pid}")

    def pop_up_menu(self):
        """The place of the menu that has popped up; None when there is none. A menu has no title,
        and is no part of the accessible tree."""
        found = subprocess.run(
            ["xdotool", "search", "--onlyvisible", "--pid", str(self._process.pid)],
            env=self.desktop.env, capture_output=True, text=True, check=False).stdout.split()
        for window in found:
            info = subprocess.run(["xwininfo", "-id", window], env=self.desktop.env,
                                  capture_output=True, text=True, check=False).stdout
            if "Override Redirect State: yes" in info:  # no affair of the window manager's
                return self._place_of(window)
        return None

    def window_box(self, title=TITLE):
        """The window's place with the frame that the window manager draws round it."""
        return self._place_of(self.window(title))

    def _place_of(self, window):
        info = _run("xwininfo", "-frame", "-id", window, env=self.desktop.env)
        number = {name: int(re.search(rf"{name}:\s+(-?\d+)", info).group(1)) for name in
                  ("Absolute upper-left X", "Absolute upper-left Y", "Width", "Height")}
        return Box(*number.values())

    def assert_running(self):
        if self._process.poll() is not None:
            raise AssertionError(
                f"the program ended with status {self._process.returncode}: {self.output()}")

    def wait_until_painted(self):
        """Waits until two looks at the window, a moment apart, show the same picture."""
        looks = [None]

        def steady():
            window = self.window()
            look = subprocess.run(["import", "-silent", "-window", window, "rgb:-"],
                                  env=self.desktop.env, capture_output=True, check=True).stdout
            same = look == looks[0] and len(set(look[::997])) > 8
            looks[0] = look
            return same

        wait_for("the window's picture to come to rest", steady)

    def screenshot(self, path):
        self.wait_until_painted()
        return self.desktop.screenshot(path)

    def close(self):
        """Asks the window manager to close the window, and returns the exit status."""
        _run("wmctrl", "-i", "-c", self.window(), env=self.desktop.env)
        return self.wait_for_end()

    def wait_for_end(self):
        wait_for("the program's end", lambda: self._process.poll() is not None)
        return self._process.returncode

    def terminate(self):
        self._process.send_signal(signal.SIGTERM)

    # What is on the screen

    def application(self):
        def find():
            self.assert_running()
            desktop = Atspi.get_desktop(0)
            # Always the program's own answer, never one remembered from before.
            desktop.set_cache_mask(Atspi.Cache.NONE)
            for i in range(desktop.get_child_count()):
                child = desktop.get_child_at_index(i)
                if child and child.get_process_id() == self._process.pid:
                    return child
            return None

        return wait_for("the program in the accessible tree", find)

    def control(self, name, role=None, window=None):
        """The control with this accessible name, and role when given, that is on the screen.

        With `window`, the title of a window, only controls of that one count.
        """

        def find():
            root = self.application() if window is None else self._accessible_window(window)
            return root and next(
                (node for node in _descendants(root)
                 if node.get_name() == name and (role is None or node.get_role() == role)
                 and node.get_state_set().contains(Atspi.StateType.SHOWING)), None)

        return wait_for(f'a control named "{name}"', find)

    def _accessible_window(self, title):
        windows = (Atspi.Role.FRAME, Atspi.Role.DIALOG, Atspi.Role.WINDOW, Atspi.Role.FILLER)
        return next((node for node in _descendants(self.application())
                     if node.get_name() == title and node.get_role() in windows), None)

    def wait_for_focus(self, part, role=None):
        """Waits until keys go to the window that has this part of a text on it, and in it to a
        control of this role when given; returns the text.

        What the program has opened has the focus only when the window manager gives it.
        """

        def find():
            for window in _children(self.application()):
                nodes = list(_descendants(window))
                if any(node.get_state_set().contains(Atspi.StateType.FOCUSED)
                       and (role is None or node.get_role() == role) for node in nodes):
                    return next((name for node in nodes if part in (name := node.get_name())),
                                None)
            return None

        return wait_for(f'the focus in the window with "{part}"', find)

    def answer(self, part, key):
        """Presses a key in the message with this part of a text; returns the text."""
        text = self.wait_for_focus(part)
        self.desktop.press(key)
        return text

    def is_showing(self, name):
        return any(node.get_name() == name
                   and node.get_state_set().contains(Atspi.StateType.SHOWING)
                   for node in _descendants(self.application()))

    def box(self, control):
        """Qt tells places in its own units from the window's corner on; the screen has pixels."""
        extents = control.get_extents(Atspi.CoordType.SCREEN)
        return Box(*(round(v * self.scale)
                     for v in (extents.x, extents.y, extents.width, extents.height)))

    def lines(self, list_name):
        """The lines on show in a list, from top to bottom."""
        rows = {}
        control = self.control(list_name)
        frame = self.box(control)
        for cell in _children(control):
            if cell.get_role() not in (Atspi.Role.TREE_ITEM, Atspi.Role.TABLE_CELL,
                                       Atspi.Role.LIST_ITEM):
                continue
            box = self.box(cell)
            if box.height <= 0 or box.y < frame.y or box.y + box.height > frame.y + frame.height:
                continue
            row = rows.setdefault(box.y, Line(box))
            row.cells.append((box.x, cell.get_name().strip()))
            row.box.x = min(row.box.x, box.x)
            row.selected |= cell.get_state_set().contains(Atspi.StateType.SELECTED)
        lines = [rows[y] for y in sorted(rows)]
        for line in lines:
            line.cells = [text for _, text in sorted(line.cells)]
        return lines

    def line(self, list_name, title):
        """The line with this title, once the list shows it."""
        return wait_for(
            f'"{title}" among {list_name}',
            lambda: next((x for x in self.lines(list_name) if x.title == title), None),
            report=lambda: [x.title for x in self.lines(list_name)])

    def selected(self, list_name):
        """Title of the selected line; "" when there is none."""
        return next((x.title for x in self.lines(list_name) if x.selected), "")

    def wait_for_selected(self, list_name, title):
        wait_for(f'"{title}" selected among {list_name}',
                 lambda: self.selected(list_name) == title,
                 report=lambda: self.selected(list_name))

    def click_line(self, list_name, title, button=1):
        x, y = self.line(list_name, title).box.middle
        self.desktop.click(x, y, button)

    def click_control(self, name, button=1, window=None):
        x, y = self.box(self.control(name, window=window)).middle
        self.desktop.click(x, y, button)

    def text(self, name):
        control = self.control(name)
        return Atspi.Text.get_text(control, 0, -1)

    def first_line(self, name):
        """The title of a page: its first line."""
        return self.text(name).lstrip().split("\n", 1)[0].strip()


def _children(node):
    for i in range(node.get_child_count()):
        child = node.get_child_at_index(i)
        if child:
            yield child


def _descendants(node):
    # The lines of lists and the words of texts are no controls: no need to go below these.
    leaves = (Atspi.Role.TREE, Atspi.Role.TREE_TABLE, Atspi.Role.TABLE, Atspi.Role.LIST,
              Atspi.Role.TEXT)
    for child in _children(node):
        yield child
        if child.get_role() not in leaves:
            yield from _descendants(child)


def copy_of_data(stock):
    """A new folder with a copy of what is in `stock`; the caller removes it."""
    folder = tempfile.mkdtemp(prefix="larder-endtoend-")
    shutil.copytree(stock, folder, dirs_exist_ok=True)
    return folder
