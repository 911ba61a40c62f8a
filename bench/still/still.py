"""One scene drawn by five programs, each as it comes and at its best, on one sheet.

    tools/bench still [--output output/still]

The first run installs the peers into build/peers. The scene is a tower of boxes, balls of matt, plastic and metal, a
box of glass, a loaded model and a label, in `stage.py`.
"""

import argparse
import os
import subprocess
import sys
from pathlib import Path

from PIL import Image, ImageDraw

HERE = Path(__file__).resolve().parent
sys.path.insert(0, str(HERE.parent / "peers"))
from peers import peers_python  # noqa: E402

PROGRAMS = {"hyxOSG": "here", "MuJoCo": "mujoco", "PyVista": "pyvista", "Panda3D": "panda", "PyBullet": "pybullet"}
EFFORTS = {"default": "as it comes", "best": "at its best"}


def draw(program, effort, path):
    own = program == "here"
    environment = os.environ | {"HYX_DISPLAY": "offscreen"}
    if not own:
        environment.pop("PYTHONPATH", None)
    command = [sys.executable if own else peers_python(), HERE / f"{program}_still.py", path, effort]
    subprocess.run(command, check=True, env=environment, stdout=subprocess.DEVNULL)


def sheet(pictures, path):
    width, height = next(iter(pictures.values())).size
    made = Image.new("RGB", (width * len(PROGRAMS), (height + 40) * len(EFFORTS)), "white")
    pen = ImageDraw.Draw(made)
    for (column, row), picture in pictures.items():
        place = (column * width, row * (height + 40))
        made.paste(picture, (place[0], place[1] + 40))
        text = f"{list(PROGRAMS)[column]}, {list(EFFORTS.values())[row]}"
        pen.text((place[0] + 10, place[1] + 8), text, "black", font_size=22)
    made.resize((made.width // 2, made.height // 2), Image.Resampling.LANCZOS).save(path)


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--output", type=Path, default=Path("output/still"))
    folder = parser.parse_args().output.resolve()
    folder.mkdir(parents=True, exist_ok=True)
    pictures = {}
    for column, program in enumerate(PROGRAMS.values()):
        for row, effort in enumerate(EFFORTS):
            path = folder / f"{program}-{effort}.png"
            draw(program, effort, path)
            pictures[column, row] = Image.open(path).convert("RGB")
    sheet(pictures, folder / "still.png")
    print(folder / "still.png")


if __name__ == "__main__":
    main()
