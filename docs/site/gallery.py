"""Prepares the short examples for the gallery, and gives it the pictures that they write."""

from __future__ import annotations

import ast
import shutil
from pathlib import Path
from typing import Any

# In the order of the gallery, with the headings of its parts.
PARTS = {
    "bodies": "Bodies",
    "contacts": "Contacts",
    "joints": "Joints",
    "wires": "Wires and cables",
    "grains_and_soil": "Grains and soil",
    "looks": "Looks",
    "colors": "Colours",
    "cameras": "Cameras",
    "sensors": "Sensors",
    "robots": "Robots",
    "data": "Data",
    "application": "In the window",
}


def prepare(root: Path, folder: Path) -> None:
    """Copies the examples, with their first sentences as titles."""
    shutil.rmtree(folder, ignore_errors=True)
    _write_heading(folder, "Gallery", "=", "One thing each, in at most 30 lines.")
    for part, heading in PARTS.items():
        _write_heading(folder / part, heading, "-")
        for script in sorted((root / "examples" / "short" / part).glob("*.py")):
            (folder / part / script.name).write_text(_titled(script.read_text()))


def scrape(block: Any, variables: dict[str, Any], configuration: dict[str, Any]) -> str:
    """The picture that an example wrote beside itself, which has its name."""
    from sphinx_gallery.scrapers import figure_rst

    written = Path(variables["src_file"]).with_suffix(".png")
    if not written.exists():
        return ""
    target = next(variables["image_path_iterator"])
    shutil.move(written, target)
    return str(figure_rst([target], configuration["src_dir"]))


def _write_heading(folder: Path, heading: str, underline: str, text: str = "") -> None:
    folder.mkdir(parents=True, exist_ok=True)
    (folder / "GALLERY_HEADER.rst").write_text(f"{heading}\n{underline * len(heading)}\n\n{text}\n")


def _titled(source: str) -> str:
    """The gallery wants the first line of a text underlined, and keeps the title short."""
    module = ast.parse(source)
    head, _, rest = (ast.get_docstring(module) or "").partition("\n")
    title = head.rstrip(".")
    code = "\n".join(source.splitlines()[module.body[0].end_lineno :])
    return f'"""\n{title}\n{"=" * len(title)}\n\n{rest.strip()}\n"""\n{code}\n'
