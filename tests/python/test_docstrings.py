"""Every public thing tells what it does, in which unit, and by which names it takes what."""

import importlib
import inspect
import re
import sys

import pytest
from subprocesses import ROOT

sys.path[:0] = [str(ROOT), str(ROOT / "python")]

from generator.interface import PACKAGES

SIGNATURE = re.compile(r"[\w.]+\(.*\)( *->.*)?")
# Names that stand for a parameter which nobody has named.
PLACEHOLDER = re.compile(
    r"\b(s?WIG\w*|\w+_type|(object|number|value|flag|text|offset)\d|arg\d+|a\d\d)\b", re.IGNORECASE
)
UNIT = re.compile(
    r"metre|meter|m/s|rad\b|radian|degree|newton|\bN\b|Nm|second|pixel|kg|kilogram|pascal|\bPa\b|joule|hertz|Hz|m2|m3"
    r"|share|factor|frames|per |times|texels|0 to 1|character|see `|as .*(above|set)|position|coordinates",
    re.IGNORECASE,
)
MEASURE = re.compile(r"(get|set)\w*(Radius|Length|Distance|Angle|Force|Torque|Velocity|Speed|TimeStep|Mass|Gravity)")


def public_things():
    """Classes, functions and properties with their names, each once."""
    seen = set()
    for package in PACKAGES:
        module = importlib.import_module(package)
        for name, thing in vars(module).items():
            inner = vars(thing).items() if inspect.isclass(thing) and thing.__module__ == package else ()
            members = [(f"{name}.{key}", getattr(value, "__func__", value)) for key, value in inner]
            for path, value in [(name, thing), *members]:
                if path.rpartition(".")[2].startswith("_") or isinstance(value, int) or id(value) in seen:
                    continue
                if inspect.isclass(value) and value.__module__ != package:
                    continue
                if callable(value) or inspect.isdatadescriptor(value):
                    seen.add(id(value))
                    yield f"{package}.{path}", value


THINGS = dict(public_things())


def text_of(thing):
    lines = (inspect.getdoc(thing) or "").splitlines()
    return " ".join(line.strip() for line in lines if line.strip() and not SIGNATURE.fullmatch(line.strip()))


def test_there_is_much_to_read():
    assert len(THINGS) > 1500


@pytest.mark.parametrize("package", PACKAGES)
def test_no_text_is_a_bare_signature(package):
    assert [name for name, thing in THINGS.items() if name.startswith(f"{package}.") and not text_of(thing)] == []


def test_errors_are_raised_as_in_python():
    assert [
        name
        for name, thing in THINGS.items()
        if re.search(r"\b[Tt]hrows\b|std\W+\w+_(error|argument|range)", text_of(thing))
    ] == []


@pytest.mark.parametrize("package", PACKAGES)
def test_parameters_have_names_of_their_own(package):
    signatures = {
        name: " ".join(re.findall(r"(\w+):", line))
        for name, thing in THINGS.items()
        if name.startswith(f"{package}.")
        for line in (inspect.getdoc(thing) or "").splitlines()
        if SIGNATURE.fullmatch(line.strip())
    }
    assert {name: text for name, text in signatures.items() if PLACEHOLDER.search(text)} == {}


def test_measures_have_units():
    measured = [name for name in THINGS if MEASURE.fullmatch(name.rpartition(".")[2]) and "Render" not in name]
    assert len(measured) > 50
    assert [name for name in measured if not UNIT.search(text_of(THINGS[name]))] == []
