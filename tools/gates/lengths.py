"""Checks that files have at most 400 lines and functions at most 60."""

import ast
import pathlib
from collections.abc import Iterator

from sources import NATIVE, files, is_script, native_files, parse, place, report, text

LONGEST_FILE = 400
LONGEST_FUNCTION = 60
SOURCES = (*NATIVE, ".py", ".pyi", ".cmake", ".sh", ".in")


def file_length(path: pathlib.Path, root: pathlib.Path) -> int:
    """In platform/ without comments and blank lines: a class has one declaration, however much it can do."""
    lines = path.read_text().splitlines()
    if path.relative_to(root).parts[0] == "platform":
        lines = [line for line in lines if line.strip() and not line.lstrip().startswith("//")]
    return len(lines)


def native_functions(path: pathlib.Path) -> Iterator[tuple[int, int, str]]:
    """First line, length and name of each function."""
    waiting = [parse(path)]
    while waiting:
        node = waiting.pop()
        waiting += node.children
        if node.type in ("function_definition", "lambda_expression"):
            first, last = node.start_point[0], node.end_point[0]
            yield first + 1, last - first + 1, text(node).partition("(")[0].split()[-1]


def python_functions(path: pathlib.Path) -> Iterator[tuple[int, int, str]]:
    for node in ast.walk(ast.parse(path.read_text())):
        if isinstance(node, ast.FunctionDef | ast.AsyncFunctionDef):
            yield node.lineno, (node.end_lineno or node.lineno) - node.lineno + 1, node.name


def faults(root: pathlib.Path) -> Iterator[str]:
    for path in files(root):
        if path.suffix in SOURCES or path.name == "CMakeLists.txt" or is_script(path):
            if (length := file_length(path, root)) > LONGEST_FILE:
                yield f"{place(path, root, LONGEST_FILE)}: {length} lines, more than {LONGEST_FILE}"
    measured = [(path, native_functions(path)) for path in native_files(root)]
    measured += [(path, python_functions(path)) for path in files(root) if path.suffix == ".py"]
    for path, functions in measured:
        for line, length, name in functions:
            if length > LONGEST_FUNCTION:
                yield f"{place(path, root, line)}: {name} has {length} lines, more than {LONGEST_FUNCTION}"


if __name__ == "__main__":
    report(faults)
