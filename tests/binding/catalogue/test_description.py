"""Headers are described as they are written, and a class list that they do not back stops the build."""

import json
import subprocess
import sys

import pytest
from subprocesses import BUILD, ROOT

HEADER = """
/// What this file is about.
#pragma once
#include <functional>
#include <map>
#include <vector>

namespace lib {
template <class T, int N> class Base {};
class Hidden {};
class Middle : public Hidden {};

/// A thing.
/// It has two lines.
class Thing final : public Base<int, 3>, public virtual Middle, protected Hidden {
public:
    enum class Kind : int {
        FIRST = 1, ///< the first, with a comma
        SECOND,
        /// before the third
        THIRD = FIRST + 2, FOURTH,
    };
    explicit Thing(Thing const * other = nullptr) : m_value{1}, m_map{{1, 2}} { if (other) { m_value = 2; } }

    /// Sets the map.
    void setMap(std::map<int, std::vector<double>> const & map, bool keep = true, char const * separator = ",;{");
    /** A block comment,
     * on two lines. */
    std::vector<int> getList(int first, unsigned int, double const values[3]) const;
    template <class T>
    T cast(T value) { return value; }
    double operator()(double x) const noexcept;
    int plain = 3;   ///< metres
    std::function<void(int)> callback{};
private:
    int m_value{0}, m_other = 1;
    std::map<int, int> m_map;
};
////////////////////////////////////
/// Free, with a default that has commas.
Thing make(std::vector<int> const & at = std::vector<int>(3,
           1), Thing::Kind kind = Thing::Kind::FIRST);
}
"""


def describe(folder, lists, headers=HEADER):
    """Describes a header with a list of types; returns the process and the place of the description."""
    (folder / "lib.h").write_text(headers)
    (folder / "lib.txt").write_text(lists)
    command = [sys.executable, "-B", "-m", "binding.catalogue.describe_headers", "--out", folder / "lib.json"]
    command += ["--headers", folder / "lib.h", "--lists", folder / "lib.txt"]
    return subprocess.run(command, capture_output=True, text=True, cwd=ROOT), folder / "lib.json"


def generate(folder, lists):
    done, description = describe(folder, lists)
    if done.returncode:
        return done
    command = [sys.executable, "-B", "-m", "binding.catalogue.generate_tables", "--out", folder]
    command += ["--lists", folder / "lib.txt", "--descriptions", description]
    return subprocess.run(command, capture_output=True, text=True, cwd=ROOT)


@pytest.fixture(scope="module")
def described(tmp_path_factory):
    done, place = describe(tmp_path_factory.mktemp("description"), "lib::Thing\n")
    assert done.returncode == 0, done.stderr
    return json.loads(place.read_text())


@pytest.fixture(scope="module")
def declarations(described):
    return {(d["kind"], d["name"].removeprefix("lib::")): d for d in described["declarations"]}


def test_a_class_has_its_comment_and_its_public_bases(described, declarations):
    assert declarations["class", "Thing"]["doc"] == "A thing.\nIt has two lines."
    assert described["types"]["lib::Thing"]["bases"] == ["lib::Base<int, 3>", "lib::Middle"]
    assert described["types"]["lib::Middle"]["bases"] == ["lib::Hidden"]


def test_parameters_keep_names_and_defaults(declarations):
    named = {
        name: [(p["name"], p["default"]) for p in declarations["function", name]["parameters"]]
        for name in ("Thing::Thing", "Thing::setMap", "Thing::getList", "make")
    }
    assert named == {
        "Thing::Thing": [("other", "nullptr")],
        "Thing::setMap": [("map", None), ("keep", "true"), ("separator", '",;{"')],
        "Thing::getList": [("first", None), ("", None), ("values", None)],
        "make": [("at", "std::vector<int>(3, 1)"), ("kind", "Thing::Kind::FIRST")],
    }


def test_comments_belong_to_one_declaration(declarations):
    texts = {name: declarations["function", name]["doc"] for name in ("Thing::setMap", "Thing::getList", "make")}
    assert texts == {
        "Thing::setMap": "Sets the map.",
        "Thing::getList": "A block comment,\non two lines.",
        "make": "Free, with a default that has commas.",
    }
    assert declarations["function", "Thing::cast"]["doc"] == ""
    assert declarations["variable", "Thing::plain"]["doc"] == "metres"
    assert ("variable", "Thing::m_value") not in declarations


def test_enumerators_have_values_and_their_own_comments(declarations):
    told = [declarations["enumerator", f"Thing::Kind::{name}"] for name in ("FIRST", "SECOND", "THIRD", "FOURTH")]
    assert [(d["value"], d["doc"]) for d in told] == [
        (1, "the first, with a comma"),
        (2, ""),
        (3, "before the third"),
        (4, ""),
    ]


@pytest.mark.parametrize(
    "text, complaint",
    [
        ("lib::Thing\nlib::Ting\n", "lib.txt:2: no header backs 'lib::Ting': no type named 'Ting'"),
        ("lib::Hidden = lib::Middle\n", "'lib::Middle' is no other spelling of 'lib::Hidden'"),
        ("lib::Declared\n", "lib.txt:1: no header backs 'lib::Declared': its definition is in none of the headers"),
        ("type _p_m | lib::Base<int> * | lib::Base<int, 3>\n", "lib.txt:1: no header backs 'lib::Base<int, 3>'"),
        ("lib::Thing @ lib/nowhere.h\n", "lib.txt:1: no header backs 'lib::Thing': 'lib/nowhere.h' file not found"),
        ("lib::Thing\nlib::Thing\n", "lib.txt:2: lib::Thing is listed twice (first in lib.txt:1)"),
    ],
)
def test_a_wrong_class_list_stops_the_build(tmp_path, text, complaint):
    header = HEADER + "namespace lib { class Declared; }"
    (tmp_path / "lib.h").write_text(header)
    done, _ = describe(tmp_path, text, header)
    done = generate(tmp_path, text) if done.returncode == 0 else done
    assert done.returncode != 0 and complaint in done.stderr


def test_unlisted_classes_between_listed_ones_are_passed_through(tmp_path):
    assert generate(tmp_path, "lib::Thing\nlib::Hidden\n").returncode == 0
    casts = (tmp_path / "catalogue_casts.cpp").read_text()
    assert "upcast<lib::Thing, lib::Hidden>" in casts and "Middle" not in casts


def test_most_public_declarations_are_documented():
    """Documentation reaches Python through the description: a header that gives nothing shows here."""
    declarations = json.loads((BUILD / "interface.json").read_text())["declarations"]
    functions = [
        d
        for d in declarations
        if d["kind"] == "function" and d["name"].startswith("hyxOSG::") and "::operator" not in d["name"]
    ]
    assert len(functions) > 600
    assert sum(bool(d["doc"]) for d in functions) / len(functions) > 0.85
    assert all(p["name"] for d in functions if d["doc"] for p in d["parameters"])
