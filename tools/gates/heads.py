"""Checks that each source starts with a sentence that says what it is for."""

import ast
import pathlib
import re
from collections.abc import Iterator

from sources import NATIVE, files, is_script, place, report

SCRIPTS = (".cmake", ".sh")
FEWEST_WORDS = 3


def comment(lines: list[str], mark: str) -> str:
    """The words of the comment that the lines start with."""
    words = []
    for line in lines:
        if not line.startswith(mark):
            break
        words.append(line.removeprefix(mark).strip())
    return " ".join(words)


def head(path: pathlib.Path) -> str:
    source = path.read_text()
    if path.suffix in (".py", ".pyi"):
        return " ".join((ast.get_docstring(ast.parse(source)) or "").split())
    lines = source.splitlines()
    if path.suffix in NATIVE:
        if lines and lines[0].startswith("/*"):
            return " ".join(source[2 : source.index("*/")].replace("\n *", " ").split())
        return "" if lines and lines[0].startswith("///") else comment(lines, "//")
    return comment(lines[1:] if lines and lines[0].startswith("#!") else lines, "#")


def is_sentence(head: str) -> bool:
    begins = bool(head) and not head[0].islower()
    return begins and len(head.split()) >= FEWEST_WORDS and bool(re.search(r"[.:](\s|$)", head))


def faults(root: pathlib.Path) -> Iterator[str]:
    for path in files(root):
        wanted = path.suffix in (*NATIVE, *SCRIPTS, ".py", ".pyi") or path.name == "CMakeLists.txt" or is_script(path)
        if wanted and not is_sentence(head(path)):
            yield f"{place(path, root, 1)}: starts with no sentence that says what the file is for"


if __name__ == "__main__":
    report(faults)
