"""The house rules that a machine can check.

Each rule is a function that is given a `Tree` and yields findings, one line of text each. A tree
that keeps the rule yields none.
"""

import json
import re
import subprocess
from functools import cached_property
from pathlib import Path

# Which folders the files of a folder may include from: the layers of docs/architecture.md, from
# the bottom to the top. The three in the middle stand side by side, and so do those above them,
# except that these know nothing of each other but through the hub.
CORE = {"platform", "lists", "store", "search"}
LAYERS = {
    "platform": {"platform"},
    "lists": CORE,
    "store": CORE,
    "search": CORE,
    "layout": CORE | {"layout"},
    "browse": CORE | {"layout", "browse"},
    "edit": CORE | {"layout", "edit"},
    "encyclopedia": CORE | {"encyclopedia"},
    "media": CORE | {"media"},
    "tools": CORE | {"tools"},
    "app": CORE | {"layout", "browse", "edit", "encyclopedia", "media", "app"},
}

# The servants of the main window speak to each other through it. They include it, and the window's
# controls, where they are written, never where they are declared: the only way up.
HUB = {"app/frmMain.h", "app/MainControls.h"}
SERVANTS = {"lists", "store", "search", "layout", "browse", "edit", "encyclopedia", "media"}

LONGEST_SOURCE = 500  # lines

# In two parts, so that this file keeps the rule itself.
UNFINISHED = ("TO" "DO", "FIX" "ME", "XX" "X", "GTEST_" "SKIP", "DISABLED" "_", "Q" "SKIP")

SOURCE_SUFFIXES = {".h", ".cpp"}
TEXT_SUFFIXES = SOURCE_SUFFIXES | {".py", ".sh", ".cmake", ".txt", ".md", ""}

INCLUDE = re.compile(r'^\s*#\s*include\s*([<"])([^>"]+)[>"]')


class Tree:
    """The project's files below `root`, and what the build in `build` compiles of them."""

    def __init__(self, root, build):
        self.root = Path(root).resolve()
        self.build = Path(build).resolve()

    def files(self, *folders, suffixes=SOURCE_SUFFIXES):
        for folder in folders:
            for path in sorted((self.root / folder).rglob("*")):
                hidden = any(part.startswith((".", "__")) for part in path.parts)
                if path.is_file() and path.suffix in suffixes and not hidden:
                    yield path

    def name(self, path):
        return path.relative_to(self.root).as_posix()

    def lines(self, path):
        return path.read_text(encoding="utf-8", errors="replace").splitlines()

    def includes(self, path):
        """Line number, bracket and name of each include of a file."""
        for number, line in enumerate(self.lines(path), 1):
            match = INCLUDE.match(line)
            if match:
                yield number, match[1], match[2]

    def included_source(self, name):
        """The file below src that is meant by an include; None for a library's."""
        path = self.root / "src" / name
        return path if path.is_file() else None

    @cached_property
    def compiled(self):
        """Each compiled source file with the set of the targets that compile it."""
        targets = {}
        for entry in json.loads((self.build / "compile_commands.json").read_text()):
            path = (Path(entry["directory"]) / entry["file"]).resolve()
            match = re.search(r"CMakeFiles/([^/ ]+)\.dir/", entry["command"])
            targets.setdefault(path, set()).add(match[1] if match else "")
        return targets


def qt_stays_in_the_platform(tree):
    """Qt is known to the .cpp files of src/platform alone."""
    for path in tree.files("src"):
        in_platform = path.is_relative_to(tree.root / "src/platform")
        if in_platform and path.suffix == ".cpp":
            continue
        for number, _, name in tree.includes(path):
            if re.match(r"Q[A-Za-z]|Qt|q[a-z]+\.h", name):
                yield f"{tree.name(path)}:{number}: includes {name}"


def layers_look_down(tree):
    """A file includes files of its own layer and of those below it."""
    for path in tree.files("src"):
        folder = path.relative_to(tree.root / "src").parts[0]
        for number, _, name in tree.includes(path):
            if not tree.included_source(name):
                continue
            if folder in SERVANTS and path.suffix == ".cpp" and name in HUB:
                continue
            if folder not in LAYERS:
                yield f"{tree.name(path)}:{number}: the folder {folder} belongs to no layer"
            elif name.split("/")[0] not in LAYERS[folder]:
                yield f"{tree.name(path)}:{number}: {folder} may not include {name}"


def core_knows_no_control(tree):
    """What larder_core includes, however indirectly, is implemented in larder_core."""
    for source, targets in sorted(tree.compiled.items()):
        if "larder_core" not in targets:
            continue
        for header, chain in reached_headers(tree, source):
            implementation = header.with_suffix(".cpp")
            owners = tree.compiled.get(implementation, set())
            if owners and "larder_core" not in owners:
                yield f"{' -> '.join(chain)}: implemented in {', '.join(sorted(owners))}"


def reached_headers(tree, source):
    """Every header below src that a source file includes, with the chain of names to it."""
    seen, waiting = set(), [(source, (tree.name(source),))]
    while waiting:
        path, chain = waiting.pop()
        for _, _, name in tree.includes(path):
            header = tree.included_source(name)
            if header and header not in seen:
                seen.add(header)
                waiting.append((header, (*chain, tree.name(header))))
                yield header, waiting[-1][1]


def headers_include_in_one_direction(tree):
    """No header includes itself by way of others."""
    for header in tree.files("src", suffixes={".h"}):
        for reached, chain in reached_headers(tree, header):
            if reached == header:
                yield " -> ".join(chain)


def every_test_is_compiled(tree):
    """Every test source belongs to a target of the build."""
    tests = [path for path in tree.files("tests", suffixes={".cpp"})
             if path.stem.endswith("Test")]
    if not tests:
        yield "tests: there is not one *Test.cpp"
    for path in tests:
        if path.resolve() not in tree.compiled:
            yield f"{tree.name(path)}: no target compiles it"


def sources_are_short(tree):
    """A source file is about one subject."""
    for path in tree.files("src"):
        length = len(tree.lines(path))
        if length > LONGEST_SOURCE:
            yield f"{tree.name(path)}: {length} lines, {LONGEST_SOURCE} at most"


def nothing_is_left_for_later(tree):
    """No reminder of work undone, and no test switched off."""
    words = re.compile(rf"\b({'|'.join(UNFINISHED)})")
    for path in tree.files("src", "tests", "scripts", "bench", "cmake", "packaging",
                           suffixes=TEXT_SUFFIXES):
        for number, line in enumerate(tree.lines(path), 1):
            match = words.search(line)
            if match and not line[match.end():].startswith("X"):
                yield f"{tree.name(path)}:{number}: {match[0]}"


def code_is_formatted(tree):
    """clang-format would change nothing."""
    paths = [str(path) for path in tree.files("src", "tests", "bench")]
    if not paths:
        return
    result = subprocess.run(["clang-format", "--dry-run", *paths], cwd=tree.root,
                            capture_output=True, text=True, check=True)
    found = re.findall(r"^(.+?):\d+:\d+: warning:", result.stderr, re.MULTILINE)
    for path in dict.fromkeys(found):
        yield f"{tree.name(Path(path))}: clang-format -i {tree.name(Path(path))}"


def scripts_are_sound(tree):
    """shellcheck has nothing to say about the shell scripts."""
    scripts = [path for path in (tree.root / name for name in ("larder", "check", ".ci/run"))
               if path.is_file()]
    scripts += tree.files("scripts", "packaging", "tests", suffixes={".sh"})
    for path in scripts:
        result = subprocess.run(["shellcheck", "-x", "-f", "gcc", str(path)], cwd=tree.root,
                                capture_output=True, text=True, check=False)
        yield from result.stdout.splitlines()


RULES = {
    rule.__name__: rule for rule in (
        qt_stays_in_the_platform,
        layers_look_down,
        core_knows_no_control,
        headers_include_in_one_direction,
        every_test_is_compiled,
        sources_are_short,
        nothing_is_left_for_later,
        code_is_formatted,
        scripts_are_sound,
    )
}
