"""Checks the include direction between the rooms; prints every violation and exits with 1 if there is one."""

import pathlib
import re
import sys

ROOT = pathlib.Path(__file__).resolve().parent.parent

# What a room may include of the others (besides itself).
ALLOWED = {
    "runtime": set(),
    "containers": {"runtime"},
    "directors": {"runtime", "platform"},
    "wrappers": {"runtime", "containers", "directors", "platform"},
    "module": {"runtime", "containers", "wrappers", "platform"},
    "siblings": {"runtime", "containers", "directors", "wrappers", "platform"},
    "platform": set(),
    "reference": {"platform"},
    "python": {"runtime", "wrappers"},
}
INCLUDE = re.compile(r'^\s*#\s*include\s*[<"]([^">]+)[">]')


def violations(room: str, path: pathlib.Path) -> list[str]:
    found = []
    for number, line in enumerate(path.read_text().splitlines(), 1):
        match = INCLUDE.match(line)
        if not match:
            continue
        target = match[1].split("/")[0]
        where = f"{path.relative_to(ROOT)}:{number}"
        if target in ALLOWED and target != room and target not in ALLOWED[room]:
            found.append(f"{where}: {room} must not include {match[1]}")
        if match[1] == "Python.h" and room == "platform":
            found.append(f"{where}: platform declares for any host, so it must not include Python.h")
    return found


def main() -> int:
    found = [
        message
        for room in ALLOWED
        for path in sorted((ROOT / room).rglob("*"))
        if path.suffix in (".h", ".cpp", ".c")
        for message in violations(room, path)
    ]
    print("\n".join(found))
    return 1 if found else 0


if __name__ == "__main__":
    sys.exit(main())
