"""Every area has one name in all trees, and documents name only what is there."""

import pathlib
import re
import subprocess

import pytest

ROOT = pathlib.Path(__file__).resolve().parents[2]
# Folders that are no area of the libraries.
OTHERS = {"reference": {"machinery"}, "tests": {"binding", "fuzz", "python", "examples", "house", "physics"}}


def versioned(*patterns):
    command = ["git", "ls-files", "--cached", "--others", "--exclude-standard", *patterns]
    listing = subprocess.run(command, cwd=ROOT, capture_output=True, text=True, check=True).stdout
    return [pathlib.PurePath(name) for name in listing.splitlines() if (ROOT / name).exists()]


def areas(tree):
    """The folders of the libraries and of their areas."""
    folders = {path.parent.relative_to(tree) for path in versioned(f"{tree}/*")} - {pathlib.PurePath(".")}
    found = {pathlib.PurePath(*folder.parts[:depth]) for folder in folders for depth in (1, 2)}
    return {str(folder) for folder in found if folder.parts[0] not in OTHERS.get(tree, ())}


@pytest.mark.parametrize("tree", ["reference", "modules", "tests"])
def test_each_area_has_one_name(tree):
    assert areas(tree) == areas("platform")


ROOMS = {"platform", "reference", "reference/machinery", "modules", "tests", "binding", "bench", "examples", "docs"}
ROOMS |= {"tools", "python", *(f"binding/{room.name}" for room in (ROOT / "binding").iterdir() if room.is_dir())}


@pytest.mark.parametrize("room", sorted(ROOMS))
def test_each_room_says_what_it_is_for(room):
    assert (ROOT / room / "README.md").read_text().startswith("# ")


QUOTED = re.compile(r"`([\w./{},*-]+)`")
LINKED = re.compile(r"\]\(([^)#\s]+)(?:#[^)]*)?\)")
# What the build, a run or a script makes, and names of other things that look like files.
MADE = re.compile(r"build/|output/|catalogue_\w+\.(cpp|h)|\w+\.(h5|csv|mtl)")
FILE = re.compile(r".*\.(h|cpp|c|py|pyi|txt|cmake|in|map|md|png|toml)|(\.\./|\./)?[\w./-]+/[\w./-]*")


def named_paths(document):
    text = re.sub(r"^ {4}[^\n]*$|```[\s\S]*?```", "", document.read_text(), flags=re.MULTILINE)
    linked = [name for name in LINKED.findall(text) if "://" not in name]
    quoted = [name for name in QUOTED.findall(text) if FILE.fullmatch(name) and not MADE.match(name)]
    return linked, quoted


def is_there(document, name, quoted):
    places = [document.parent, ROOT] if quoted else [document.parent]
    return any(list(place.glob(name)) if "*" in name else (place / name).exists() for place in places)


@pytest.mark.parametrize("document", versioned("*.md"), ids=str)
def test_documents_name_only_what_is_there(document):
    linked, quoted = named_paths(ROOT / document)
    missing = [name for name in linked if not is_there(ROOT / document, name, False)]
    missing += [name for name in quoted if not is_there(ROOT / document, name, True)]
    assert missing == []


def test_a_missing_file_is_noticed(tmp_path):
    document = tmp_path / "a.md"
    document.write_text("`wrappers/visuals/` and [this](gone.md), but `build/python/` is made.\n")
    linked, quoted = named_paths(document)
    assert (linked, quoted) == (["gone.md"], ["wrappers/visuals/"])
    assert not is_there(document, "gone.md", False) and not is_there(document, "wrappers/visuals/", True)
