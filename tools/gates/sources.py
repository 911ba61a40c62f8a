"""What the gates share: the files that they look at, the parsed C++, and how they report."""

import functools
import pathlib
import subprocess
import sys
from collections.abc import Callable, Iterator

import tree_sitter
import tree_sitter_cpp

ROOT = pathlib.Path(__file__).resolve().parents[2]
NATIVE = (".h", ".cpp", ".c")
PARSER = tree_sitter.Parser(tree_sitter.Language(tree_sitter_cpp.language()))

Gate = Callable[[pathlib.Path], Iterator[str]]


@functools.cache
def files(root: pathlib.Path) -> list[pathlib.Path]:
    """What is under version control or about to be; all there is where there is none."""
    if not (root / ".git").exists():
        return sorted(path for path in root.rglob("*") if path.is_file())
    listing = subprocess.run(
        ["git", "ls-files", "--cached", "--others", "--exclude-standard"],
        cwd=root,
        capture_output=True,
        text=True,
        check=True,
    )
    return sorted(path for name in set(listing.stdout.splitlines()) if (path := root / name).is_file())


def native_files(root: pathlib.Path) -> list[pathlib.Path]:
    return [path for path in files(root) if path.suffix in NATIVE]


def is_script(path: pathlib.Path) -> bool:
    """Whether a file without an ending is run by an interpreter."""
    return not path.suffix and path.read_bytes()[:2] == b"#!"


@functools.cache
def parse(path: pathlib.Path) -> tree_sitter.Node:
    return PARSER.parse(path.read_bytes()).root_node


def text(node: tree_sitter.Node | None) -> str:
    return node.text.decode() if node and node.text else ""


def place(path: pathlib.Path, root: pathlib.Path, line: int) -> str:
    return f"{path.relative_to(root)}:{line}"


def report(gate: Gate) -> None:
    """Prints each fault of the tree that the command line names, or of this one; ends with 1 where there is one."""
    root = pathlib.Path(sys.argv[1]).resolve() if len(sys.argv) > 1 else ROOT
    faults = list(gate(root))
    print("\n".join(faults), end="\n" if faults else "")
    sys.exit(1 if faults else 0)
