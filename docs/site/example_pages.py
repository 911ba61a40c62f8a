"""Runs the tasks of the examples and writes the page that shows them with their pictures."""

from __future__ import annotations

import ast
import os
import shutil
import subprocess
import sys
from pathlib import Path

# What each leaves to be shown; a film shows its last frame.
PICTURES = {
    "first_picture": "first_picture.png",
    "tower_and_ball": "tower_and_ball.mp4",
    "arm_with_camera": "arm_0.png",
    "scalars_on_mesh": "scalars_on_mesh.png",
}


def write_page(root: Path, folder: Path) -> None:
    lines = ["# Examples", "", "What newcomers ask for first; `examples/` in the sources has more.", ""]
    for script in sorted((root / "examples" / "tasks").glob("*.py")):
        title = (ast.get_docstring(ast.parse(script.read_text())) or script.stem).splitlines()[0].rstrip(".")
        lines += [f"## {title}", ""]
        if script.stem in PICTURES:
            lines += [f"![{title}]({_picture(root, script, folder)})", ""]
        lines += ["```python", script.read_text().rstrip(), "```", ""]
    for picture, script in (
        ("visuals_gallery", "visuals"),
        ("decoration_gallery", "decoration"),
        ("text_gallery", "text"),
        ("dug_terrain", "terrain"),
        ("lidar_colors", "lidar"),
        ("force_arrows", "forces"),
        ("wire_under_tension", "wires"),
    ):
        lines += [f"## Gallery: {script}", "", f"![{script}]({picture}.png)", ""]
    (folder / "examples.md").write_text("\n".join(lines))


def _picture(root: Path, script: Path, folder: Path) -> str:
    work = folder / "runs" / script.stem
    shutil.rmtree(work, ignore_errors=True)
    work.mkdir(parents=True)
    environment = {**os.environ, "PYTHONPATH": str(root / "build" / "python"), "HYX_DISPLAY": "offscreen"}
    subprocess.run([sys.executable, script], cwd=work, env=environment, check=True)
    made = work / PICTURES[script.stem]
    target = folder / f"task_{script.stem}.png"
    if made.suffix == ".mp4":
        subprocess.run(
            ["ffmpeg", "-v", "error", "-y", "-sseof", "-0.5", "-i", made, "-frames:v", "1", target], check=True
        )
    else:
        shutil.copy(made, target)
    return target.name
