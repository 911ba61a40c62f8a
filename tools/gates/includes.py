"""Checks which room includes which, and that the folders of the implementation form no cycle; prints every fault."""

import collections
import pathlib
import re
import sys

ROOT = pathlib.Path(__file__).resolve().parents[2]

RUNTIME, VOCABULARY, ENTRY = "binding/runtime", "binding/vocabulary", "binding/entry"
DIRECTORS, CONTAINERS, CATALOGUE = "binding/directors", "binding/containers", "binding/catalogue"
# What a room may include of the others, besides itself.
ALLOWED = {
    "platform": set(),
    "reference": {"platform"},
    RUNTIME: set(),
    CATALOGUE: set(),
    CONTAINERS: {RUNTIME},
    DIRECTORS: {RUNTIME, "platform"},
    VOCABULARY: {RUNTIME, CATALOGUE, CONTAINERS, DIRECTORS, "platform"},
    ENTRY: {RUNTIME, DIRECTORS, VOCABULARY},
    "modules": {RUNTIME, CONTAINERS, DIRECTORS, VOCABULARY, ENTRY, "platform"},
    "python/support": {RUNTIME, VOCABULARY},
    "tests": {RUNTIME, VOCABULARY, ENTRY, "platform"},
    "bench": {RUNTIME, ENTRY, "platform"},
}
TREES = {room.split("/")[0] for room in ALLOWED}
# The library that is implemented is none of Python's; its script parts call the interpreter that has loaded it.
WITHOUT_PYTHON = re.compile(r"platform/|reference/(?!hyxPython/)")
PYTHON_HEADERS = {"Python.h", "structmember.h"}
INCLUDE = re.compile(r'^\s*#\s*include\s*[<"]([^">]+)[">]', re.MULTILINE)


def room_of(path: str) -> str | None:
    """The room of a file or of an included header; None for headers of no room of ours."""
    first, _, rest = path.partition("/")
    if not rest or first not in TREES:
        return None
    return next((room for room in ALLOWED if path.startswith(room + "/")), first)


def sources(root: pathlib.Path) -> list[pathlib.Path]:
    found = (path for tree in sorted(TREES) for path in (root / tree).rglob("*"))
    return sorted(path for path in found if path.suffix in (".h", ".cpp", ".c"))


def cycle(graph: dict[str, set[str]]) -> list[str]:
    """The folders of one cycle, the first again at the end; empty when there is none."""
    done: set[str] = set()

    def walk(folder: str, way: list[str]) -> list[str]:
        if folder in way:
            return [*way[way.index(folder) :], folder]
        if folder in done:
            return []
        for target in sorted(graph.get(folder, ())):
            if found := walk(target, [*way, folder]):
                return found
        done.add(folder)
        return []

    return next((found for folder in sorted(graph) if (found := walk(folder, []))), [])


def faults(root: pathlib.Path) -> list[str]:
    found = []
    folders = collections.defaultdict(set)
    includers = {}
    for path in sources(root):
        name = path.relative_to(root).as_posix()
        room, folder = room_of(name), path.parent.relative_to(root).as_posix()
        text = path.read_text()
        for match in INCLUDE.finditer(text):
            header = match[1]
            where = f"{name}:{text.count(chr(10), 0, match.start()) + 1}"
            if header in PYTHON_HEADERS and WITHOUT_PYTHON.match(name):
                found.append(f"{where}: {room} serves any host, so it must not include {header}")
            if (path.parent / header).exists():
                found.append(f"{where}: name {header} from the root of the repository")
            target = room_of(header)
            if target and target != room and target not in ALLOWED.get(room, set()):
                found.append(f"{where}: {room} must not include {header}")
            included = str(pathlib.PurePosixPath(header).parent)
            if room == target == "reference" and included != folder:
                folders[folder].add(included)
                includers.setdefault((folder, included), where)
    if knot := cycle(folders):
        found.append("reference has a cycle of folders: " + " -> ".join(knot))
        found += [f"  {includers[link]} includes {link[1]}" for link in zip(knot, knot[1:])]
    return found


def main() -> int:
    found = faults(pathlib.Path(sys.argv[1]) if len(sys.argv) > 1 else ROOT)
    print("\n".join(found))
    return 1 if found else 0


if __name__ == "__main__":
    sys.exit(main())
