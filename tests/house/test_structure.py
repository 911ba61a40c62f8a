"""Rules of the source tree that no compiler checks."""

import pathlib
import subprocess
import sys

import pytest
from subprocesses import BUILD

ROOT = pathlib.Path(__file__).resolve().parents[2]


WRONG_ROWS = {
    "a parameter type that no overload has": (
        "FUNCTION(take_int, FREE(sample::take_int, (double)))",
        "no matching function",
    ),
    "a type outside the catalogue": ("FUNCTION(unlisted, FREE(unlisted, (Unlisted *)))", "not in the type catalogue"),
    "a default of another type": (
        "FUNCTION(string_size, FREE(sample::string_size, (std::string const &), 5))",
        "a default value must have the type of its parameter",
    ),
    "more defaults than parameters": (
        "FUNCTION(take_int, FREE(sample::take_int, (int), 1, 2))",
        "more default values than parameters",
    ),
}


@pytest.mark.parametrize("row, complaint", WRONG_ROWS.values(), ids=WRONG_ROWS.keys())
def test_a_wrong_row_does_not_compile(tmp_path, row, complaint):
    source = tmp_path / "rows.cpp"
    source.write_text(f"""#include "tests/binding/sample/sample.h"
#include "binding/vocabulary/rows.h"
struct Unlisted {{}};
void unlisted(Unlisted *) {{}}
namespace {{
constexpr Declared functions[] = {{ {row} }};
}}
ROWS(functions);
""")
    import sysconfig

    command = [
        "g++",
        "-std=c++20",
        "-fsyntax-only",
        f"-I{ROOT}",
        f"-I{BUILD / 'rooms/tests/sample_types'}",
        f"-I{sysconfig.get_paths()['include']}",
        source,
    ]
    result = subprocess.run(command, capture_output=True, text=True)
    assert result.returncode != 0 and complaint in result.stderr
