"""Finds facts that are defined twice: constants of one name or one value in two files; prints each with its places.

What counts is a single value (no array of rows, no shader text) that a file defines for itself: `constexpr`, or `const`
outside of functions. Names must differ between files in what namespaces hold; values wherever they stand.
"""

import collections
import pathlib
import re
import sys

ROOT = pathlib.Path(__file__).resolve().parents[2]
ROOMS = ("platform", "reference", "modules", "binding")
DEFINITION = re.compile(
    r"^(?P<indent> *)(?:static |inline )*"
    r"(?:constexpr (?:[\w:<>]+ )?(?:const\*? |\* ?)*|[\w:<>]+\*? const\*? (?:const )?)"
    r"(?P<name>\w+)(?:\[\])? ?(?:= ?|\{)(?P<value>[^;]+?)\}?;",
    re.MULTILINE,
)
NUMBER = re.compile(r"[-+]?(?:0[xX][\dA-Fa-f']+|[\d.][\d.']*(?:[eE][-+]?\d+)?)[uUlLfF]*")
STRING = re.compile(r'"(?:[^"\\]|\\.)*"')


def distinctive(value: str) -> str | None:
    """The value in one form when two files do not have it by chance: a text, or a number that is neither round nor a
    small power of two."""
    if STRING.fullmatch(value):
        return value if len(value) > 8 else None
    if not NUMBER.fullmatch(value):
        return None
    text = value.replace("'", "").lower()
    number = float(int(text.rstrip("ul"), 16)) if "0x" in text else float(text.rstrip("ulf"))
    significant = f"{abs(number):.12e}".split("e")[0].replace(".", "").rstrip("0")
    small_power = number < 10000 and number == int(number) and int(number) & (int(number) - 1) == 0
    return repr(abs(number)) if len(significant) >= 4 and not small_power else None


def definitions(text: str):
    """(place in the text, in a namespace, name, value) of each constant."""
    for match in DEFINITION.finditer(text):
        value = " ".join(match["value"].split())
        if not value.startswith(('R"', "{", "[")) and "operator" not in value:
            indented = bool(match["indent"])
            if not indented or "constexpr" in match[0]:
                yield match.start(), not indented, match["name"], value


def faults(root: pathlib.Path) -> list[str]:
    by_name, by_value = collections.defaultdict(dict), collections.defaultdict(dict)
    for room in ROOMS:
        for path in sorted((root / room).rglob("*")):
            if path.suffix not in (".h", ".cpp"):
                continue
            text = path.read_text()
            for start, shared, name, value in definitions(text):
                where = f"{path.relative_to(root).as_posix()}:{text.count(chr(10), 0, start) + 1}"
                if shared:
                    by_name[name].setdefault(path, where)
                if known := distinctive(value):
                    by_value[known].setdefault(path, f"{where} ({name})")
    twice = [(f"the constant {name}", places) for name, places in by_name.items() if len(places) > 1]
    twice += [(f"the value {value}", places) for value, places in by_value.items() if len(places) > 1]
    return [f"{what} is defined in {len(places)} files: {', '.join(places.values())}" for what, places in twice]


def main() -> int:
    found = faults(pathlib.Path(sys.argv[1]) if len(sys.argv) > 1 else ROOT)
    print("\n".join(found))
    return 1 if found else 0


if __name__ == "__main__":
    sys.exit(main())
