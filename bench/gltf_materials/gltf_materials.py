"""Balls of five glTF materials under three skies, beside PyVista's: how much their colours differ.

    tools/bench gltf_materials [--output output/gltf_materials]

The first run installs the peers into build/peers. Prints the mean difference of a channel over a ball, of 255, for each
material and sky, and saves all balls on one sheet: of each sky a row of ours over one of theirs.
"""

import argparse
import os
import subprocess
import sys
from pathlib import Path

import balls
import numpy
from PIL import Image

HERE = Path(__file__).resolve().parent
sys.path.insert(0, str(HERE.parent / "peers"))
from peers import peers_python  # noqa: E402

PROGRAMS = ("here", "pyvista")


def draw(program, folder):
    own = program == "here"
    environment = os.environ | {"HYX_DISPLAY": "offscreen"}
    if not own:
        environment.pop("PYTHONPATH", None)
    command = [sys.executable if own else peers_python(), HERE / f"{program}_balls.py", folder]
    subprocess.run(command, check=True, env=environment, stdout=subprocess.DEVNULL)


def difference(folder, sky, material):
    row, column = numpy.mgrid[0 : balls.SIZE, 0 : balls.SIZE] - balls.SIZE / 2 + 0.5
    inside = numpy.hypot(row, column) < balls.radius_in_picture() - 2
    ours, theirs = (
        numpy.asarray(Image.open(balls.picture(folder, program, sky, material)).convert("RGB")).astype(int)
        for program in PROGRAMS
    )
    return numpy.abs(ours - theirs)[inside].mean()


def sheet(folder):
    rows = [(sky, program) for sky in balls.SKIES for program in PROGRAMS]
    made = Image.new("RGB", (balls.SIZE * len(balls.MATERIALS), balls.SIZE * len(rows)))
    for y, (sky, program) in enumerate(rows):
        for x, material in enumerate(balls.MATERIALS):
            made.paste(Image.open(balls.picture(folder, program, sky, material)), (x * balls.SIZE, y * balls.SIZE))
    made.save(folder / "balls.png")


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("--output", type=Path, default=Path("output/gltf_materials"))
    folder = parser.parse_args().output.resolve()
    folder.mkdir(parents=True, exist_ok=True)
    for program in PROGRAMS:
        draw(program, folder)
    sheet(folder)
    print(f"{'':12}" + "".join(f"{sky:>10}" for sky in balls.SKIES))
    for material in balls.MATERIALS:
        print(f"{material:12}" + "".join(f"{difference(folder, sky, material):10.1f}" for sky in balls.SKIES))


if __name__ == "__main__":
    main()
