"""Reads headers with a C++ parser, checks the class lists against them, and writes the description of the interface.

What it depends on besides its arguments, it writes to a dependency file.
"""

from __future__ import annotations

import argparse
import re
import subprocess
import sys
import sysconfig
from pathlib import Path

import clang.cindex as clang

from .class_lists import ROOT, Type, read_lists
from .declarations import write_description
from .header_reader import HeaderReader

# Complete types only: a forward declaration tells nothing of bases.
PREAMBLE = """#include <type_traits>
template <class T> inline constexpr bool defined = std::is_function_v<T> || requires { sizeof(T); };
"""


def check_text(listed: Type, name: str) -> str:
    """One line of C++ that compiles only if the headers declare the type and all its spellings."""
    pointer = "*" if listed.kind == "type" else ""
    checks = [
        f"static_assert(std::is_same_v<type{pointer}, {spelling}>, "
        f"\"'{spelling}' is no other spelling of '{listed.native}'\");"
        for spelling in listed.spellings
        if spelling != listed.native
    ]
    complete = 'static_assert(defined<type>, "its definition is in none of the headers");'
    return f"namespace {name} {{ using type = {listed.native}; {complete} {' '.join(checks)} }}"


class Source:
    """The one translation unit: all headers, then a line for each line of the lists."""

    def __init__(self, headers: list[Path], types: list[Type]) -> None:
        self.text = "".join(f'#include "{path.resolve()}"\n' for path in headers)
        self.types: dict[str, Type] = {}  # by the name of the namespace that checks it
        self.by_line: dict[int, Type] = {}
        for listed in {listed.header: listed for listed in types if listed.header}.values():
            self.by_line[self.text.count("\n") + 1] = listed
            self.text += f"#include <{listed.header}>\n"
        self.text += PREAMBLE
        for number, listed in enumerate(types):
            name = f"listed_{number}"
            self.types[name] = listed
            self.by_line[self.text.count("\n") + 1] = listed
            self.text += check_text(listed, name) + "\n"


def include_folders(compiler: str) -> list[str]:
    """Where the compiler of the build finds its own and the system's headers."""
    told = subprocess.run([compiler, "-E", "-v", "-x", "c++", "/dev/null"], capture_output=True, text=True, check=True)
    listing = told.stderr.partition("#include <...> search starts here:")[2].partition("End of search list")[0]
    return [line.strip() for line in listing.splitlines() if line.strip()]


def parse(source: Source, compiler: str, includes: list[str]) -> clang.TranslationUnit:
    options = ["-x", "c++", "-std=c++20", "-nostdinc", "-nostdinc++", "-ferror-limit=0", f"-I{ROOT}"]
    options.append("-fretain-comments-from-system-headers")  # as which libraries' headers count
    # The system's folders last, and only once: their order matters.
    system = include_folders(compiler)
    for folder in [*(set(includes) - set(system)), sysconfig.get_paths()["include"], *system]:
        options += ["-isystem", folder]
    return clang.Index.create().parse(
        "interface.cpp",
        args=options,
        unsaved_files=[("interface.cpp", source.text)],
        options=clang.TranslationUnit.PARSE_SKIP_FUNCTION_BODIES,
    )


def complaints(unit: clang.TranslationUnit, source: Source) -> list[str]:
    """What is wrong with the lists, the first fault of each line, and with the project's headers."""
    found: dict[object, str] = {}
    for told in unit.diagnostics:
        line, file = told.location.line, told.location.file.name if told.location.file else ""
        if told.severity < clang.Diagnostic.Error:
            continue
        if file == unit.spelling and line in source.by_line:
            listed = source.by_line[line]
            text = re.sub(r"^static assertion failed[^:]*(?:::[^:]*)*: ", "", told.spelling)
            found.setdefault(line, f"{listed.place}: no header backs '{listed.native}': {text}")
        elif file == unit.spelling or Path(file).is_relative_to(ROOT) or told.severity == clang.Diagnostic.Fatal:
            found[file, line] = f"{file}:{line}: {told.spelling}"
    return list(found.values())


def write_dependencies(unit: clang.TranslationUnit, out: Path, depfile: Path) -> None:
    files = sorted({include.include.name for include in unit.get_includes()})
    depfile.write_text(f"{out}: " + " \\\n  ".join(name.replace(" ", "\\ ") for name in files) + "\n")


def main() -> None:
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("--headers", nargs="*", type=Path, default=[], help="headers to describe, or their folders")
    parser.add_argument("--lists", nargs="+", type=Path, required=True, help="class lists to check")
    parser.add_argument("--include", action="append", default=[], help="where libraries' headers are")
    parser.add_argument("--compiler", default="g++", help="whose headers to use")
    parser.add_argument("--out", type=Path, required=True, help="the description")
    parser.add_argument("--depfile", type=Path, help="what it depends on")
    arguments = parser.parse_args()
    headers = sorted(file for path in arguments.headers for file in (path.rglob("*.h") if path.is_dir() else [path]))
    source = Source(headers, read_lists(arguments.lists))
    unit = parse(source, arguments.compiler, arguments.include)
    if found := complaints(unit, source):
        sys.exit("\n".join(f"type catalogue: {text}" for text in found))
    arguments.out.parent.mkdir(parents=True, exist_ok=True)
    write_description(HeaderReader(headers, source.types).read(unit), arguments.out)
    if arguments.depfile:
        write_dependencies(unit, arguments.out, arguments.depfile)


if __name__ == "__main__":
    main()
