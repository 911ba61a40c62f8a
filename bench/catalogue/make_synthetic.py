"""Writes a synthetic class list with as many types and casts as the largest module of the family, and its header.

    make_synthetic.py STD_LIST OUT: OUT/synthetic.txt and OUT/synthetic.h

Together with STD_LIST it makes 3657 descriptors with 3883 conversions, that is 7540 cast entries.
"""

import pathlib
import sys

DESCRIPTORS, CONVERSIONS = 3657, 3883
SHARED = 700  # classes behind shared pointers; each makes two descriptors


def shared_lines():
    """A tree in which every class has up to three levels above it: lines, declarations, number of conversions."""
    lines, declarations, conversions = [], ["namespace lang {"], 0
    depth = {}
    for i in range(SHARED):
        parent = None if i < 40 else (i - 40) // 4
        depth[i] = 0 if parent is None else depth[parent] + 1
        conversions += 2 * depth[i]
        lines.append(f"shared lang::Part{i:04}")
        declarations.append(f"struct Part{i:04}" + ("" if parent is None else f" : Part{parent:04}") + " {};")
    return lines, [*declarations, "}"], conversions


def plain_lines(count, conversions):
    """Plain classes: most bases at the start of the object, some at an offset, some virtual."""
    lines, declarations = [], ["namespace lib {"]
    roots = max(2, count - conversions)
    for i in range(count):
        name = f"Class{i:04}"
        if i < roots or conversions == 0:
            declarations.append(f"struct {name} {{ virtual ~{name}() = default; long value{i}; }};")
            lines.append(f"lib::{name}")
            continue
        base = f"Class{i % roots:04}"
        conversions -= 1
        if i % 11 == 0:
            declarations.append(f"struct {name} : virtual {base} {{}};")
        elif i % 6 == 0:
            declarations.append(f"struct Pad{i} {{ virtual ~Pad{i}() = default; long pad; }};")
            declarations.append(f"struct {name} : Pad{i}, {base} {{}};")
        else:
            declarations.append(f"struct {name} : {base} {{}};")
        lines.append(f"lib::{name}")
    assert conversions == 0, conversions
    return lines, declarations + ["}"]


def main():
    standard, out = pathlib.Path(sys.argv[1]), pathlib.Path(sys.argv[2])
    known = sum(line.startswith("type ") for line in standard.read_text().splitlines())
    shared, parts, shared_conversions = shared_lines()
    plain, classes = plain_lines(DESCRIPTORS - known - 2 * SHARED, CONVERSIONS - shared_conversions)
    out.mkdir(parents=True, exist_ok=True)
    (out / "synthetic.txt").write_text("\n".join(shared + plain) + "\n")
    (out / "synthetic.h").write_text("\n".join(["#pragma once", *parts, *classes]) + "\n")


if __name__ == "__main__":
    main()
