"""The reader of C++ headers finds names, parameters, defaults and comments."""

import sys
from pathlib import Path

import pytest

ROOT = Path(__file__).resolve().parents[2]
sys.path.insert(0, str(ROOT / "python"))

from generator.header import plain_type, read_header  # noqa: E402

HEADER = """
/// What this file is about.
#pragma once
#include <vector>

namespace lib {
class Other;

/// A thing.
/// It has two lines.
class EXPORTED_EXPORT Thing final : public Base<Thing, 3>, virtual protected Other {
public:
    /// The kinds.
    enum class Kind : int {
        FIRST = 1, ///< the first, with a comma
        SECOND,
        /// before the third
        THIRD = FIRST + 2,
    };
    META_Thing(lib, Thing)
    explicit Thing(Other const * other = nullptr) : m_value{1}, m_map{{1, 2}} { if (other) { m_value = 2; } }

    /// Sets the map.
    void setMap(std::map<int, std::vector<double>> const & map, bool keep = true, char const * separator = ",;{");
    /** A block comment,
     * on two lines. */
    std::vector<int> getList(int first, unsigned int, double const values[3]) const;
    template <class T>
    T cast(T value) { return value; }
    bool operator==(Thing const & other) const;
    double operator()(double x) const noexcept;

    /// not this one, a blank line follows

    int plain = 3;   ///< metres
    std::function<void(int)> callback{};
private:
    int m_value{0}, m_other = 1;
};
/// Free, with a default that has commas.
Thing make(Vec3 const & at = Vec3(0, 0, 1), Thing::Kind kind = Thing::Kind::FIRST);
}
"""


@pytest.fixture(scope="module")
def declarations():
    return {(d.kind, d.qualified): d for d in read_header(HEADER)}


def function(declarations, name):
    return declarations["function", f"lib::{name}"]


def test_a_class_has_its_comment_and_bases(declarations):
    thing = declarations["class", "lib::Thing"]
    assert thing.doc == "A thing.\nIt has two lines."
    assert thing.bases == ["Base", "Other"]


def test_parameters_keep_types_names_and_defaults(declarations):
    parameters = function(declarations, "Thing::setMap").parameters
    assert [(p.type, p.name, p.default) for p in parameters] == [
        ("std::map<int, std::vector<double>> const &", "map", None),
        ("bool", "keep", "true"),
        ("char const *", "separator", '",;{"'),
    ]


def test_a_parameter_without_a_name_stays_nameless(declarations):
    parameters = function(declarations, "Thing::getList").parameters
    assert [p.name for p in parameters] == ["first", "", "values"]


def test_defaults_with_commas_stay_whole(declarations):
    assert [p.default for p in function(declarations, "make").parameters] == ["Vec3(0, 0, 1)", "Thing::Kind::FIRST"]


def test_comments_belong_to_the_next_declaration_only(declarations):
    assert function(declarations, "Thing::setMap").doc == "Sets the map."
    assert function(declarations, "Thing::getList").doc == "A block comment,\non two lines."
    assert function(declarations, "Thing::cast").doc == ""
    assert function(declarations, "make").doc == "Free, with a default that has commas."


def test_trailing_comments_document_members_and_enumerators(declarations):
    assert declarations["variable", "lib::Thing::plain"].doc == "metres"
    texts = [declarations["enumerator", f"lib::Thing::{name}"].doc for name in ("FIRST", "SECOND", "THIRD")]
    assert texts == ["the first, with a comma", "", "before the third"]


def test_bodies_and_initialisers_hide_nothing_that_follows(declarations):
    assert [p.name for p in function(declarations, "Thing::Thing").parameters] == ["other"]
    assert ("function", "lib::Thing::operator==") in declarations
    assert ("function", "lib::Thing::operator()") in declarations


@pytest.mark.parametrize(
    "written, meant",
    [
        ("const hyx::Vec3&", "hyx::Vec3 const &"),
        ("Vec3 const &", "hyx::Vec3 const &"),
        ("unsigned", "unsigned int"),
        ("std::vector< std::string >const&", "std::vector<std::string> const &"),
        ("class osg::Node*", "Node *"),
    ],
)
def test_spellings_of_one_type_compare_equal(written, meant):
    assert plain_type(written) == plain_type(meant)


def test_pointers_and_references_compare_different():
    assert plain_type("osg::Node *") != plain_type("osg::Node &")


def test_most_public_declarations_are_documented():
    """Documentation reaches Python through this reader: a header that it cannot read shows here."""
    declarations = [d for path in (ROOT / "platform").rglob("*.h") for d in read_header(path.read_text())]
    functions = [
        d
        for d in declarations
        if d.kind == "function" and d.scope[:1] == ("hyxOSG",) and not d.name.startswith(("~", "operator"))
    ]
    assert len(functions) > 600
    assert sum(bool(d.doc) for d in functions) / len(functions) > 0.85
    assert all(p.name for d in functions if d.doc for p in d.parameters)
